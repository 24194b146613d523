"""Small changes of C++ source text, one at a time: what scripts/mutate tries."""
from __future__ import annotations

import re
from dataclasses import dataclass
from typing import Iterator

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)|(?P<directive>^[ \t]*\#(?:[^\n\\]|\\.|\\\n)*)
      |(?P<text>(?:u8|R)?"(?:\\.|[^"\\])*")|(?P<char>'(?:\\.|[^'\\])')
      |(?P<number>\b(?:0[xX][0-9a-fA-F']+|[0-9][0-9']*)[uUlLzZ]*\b)|(?P<word>[A-Za-z_]\w*)
      |(?P<sign><=>|<<=|>>=|->|::|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|\S)""",
    re.VERBOSE | re.MULTILINE | re.DOTALL)

SIGNS = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">",
         "+": "-", "-": "+", "*": "+", "/": "*", "%": "*", "++": "--", "--": "++", "+=": "-=", "-=": "+=",
         "|=": "&=", "&=": "|=", "|": "&", "&": "|", "^": "|", "<<": ">>", ">>": "<<", "!": ""}
WORDS = {"true": "false", "false": "true", "pSwctRead": "pSwctWrite", "pSwctWrite": "pSwctRead", "AnyView": "pSwctRead"}
NARROWER = {"uint16_t": "uint8_t", "uint32_t": "uint16_t", "uint64_t": "uint32_t", "size_t": "uint16_t"}
WIDER = {"uint8_t": "uint16_t", "uint16_t": "uint32_t", "uint32_t": "uint64_t"}
# Parts of names whose exchange names a neighbour; what does not compile is no change.
PARTS = (("Slot", "Port"), ("RPtr", "WPtr"), ("Read", "Write"), ("Stored", "Managed"), ("Stored", "Existing"),
         ("Existing", "Managed"), ("Existing", "Switch"), ("First", "Second"), ("First", "Last"), ("First", "Next"),
         ("Lowest", "SecondLowest"), ("Increment", "Decrement"), ("Cep", "Np"), ("Cep", "Cnp"), ("Pnp", "Cnp"),
         ("Relay", "Local"), ("Low", "High"), ("Set", "Clear"), ("Vlan", "Port"), ("CVid", "Svid"), ("CVid", "SVid"),
         ("Min", "Max"), ("Bridge", "L3"), ("Unicast", "Static"), ("Added", "Removed"), ("left", "right"),
         ("before", "after"), ("old", "new"), ("Error", "Warning"))
NAME_PART = re.compile(r"[A-Z]+(?![a-z])|[A-Z]?[a-z]+|\d+|_+")
TRACE = re.compile(r"SWCT_(ERROR|DEBUG)|Trace|^(Report|Complain)")
NOT_A_STATEMENT = frozenset(
    "return using const constexpr static struct class enum namespace template typedef if for while switch case default "
    "else do public private protected extern inline friend goto static_assert auto try catch explicit virtual".split())


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int

    @property
    def end(self) -> int:
        return self.start + len(self.text)


@dataclass(frozen=True)
class Mutation:
    path: str
    kind: str
    start: int
    end: int
    replacement: str

    def apply(self, source: str) -> str:
        return source[:self.start] + self.replacement + source[self.end:]

    def lines(self, source: str) -> tuple[str, str]:
        """The lines that it touches, before and after, in one line each."""
        first = source.rfind("\n", 0, self.start) + 1
        last = source.find("\n", self.end)
        last = len(source) if last < 0 else last
        before = source[first:last]
        after = before[:self.start - first] + self.replacement + before[self.end - first:]
        return " ".join(before.split()), " ".join(after.split())


def tokens_of(source: str) -> list[Token]:
    found = []
    for match in TOKEN.finditer(source):
        kind = match.lastgroup or ""
        if kind not in ("comment", "directive"):
            found.append(Token(kind, match.group(), match.start()))
    return found


class Finder:
    """All changes of one source.  'known': names that its headers declare, for calls of a neighbour."""

    def __init__(self, path: str, source: str, known: frozenset[str]) -> None:
        self.path, self.source, self.tokens = path, source, tokens_of(source)
        self.known = known | {token.text for token in self.tokens}
        self.in_trace = [False] * len(self.tokens)
        members = {token.text for before, token in zip(self.tokens, self.tokens[1:])
                   if before.text in (".", "->") and token.kind == "word"}
        self.members = sorted(members)

    def change(self, kind: str, first: int, last: int, text: str) -> Mutation:
        """Replaces the tokens from 'first' to 'last', both included."""
        return Mutation(self.path, kind, self.tokens[first].start, self.tokens[last].end, text)

    def text(self, first: int, last: int) -> str:
        return self.source[self.tokens[first].start:self.tokens[last].end]

    def is_at(self, i: int, *texts: str) -> bool:
        return 0 <= i < len(self.tokens) and self.tokens[i].text in texts

    def end_of_operand(self, i: int, step: int, stops: frozenset[str]) -> int:
        """The last token of what begins at 'i', going one way until a stop outside brackets."""
        opening, closing = ("([{", ")]}") if step > 0 else (")]}", "([{")
        depth = 0
        while 0 <= i < len(self.tokens):
            text = self.tokens[i].text
            if depth == 0 and (text in stops or text in closing):
                return i - step
            depth += (text in opening) - (text in closing)
            i += step
        return i - step

    def find(self) -> Iterator[Mutation]:
        yield from self.statements()
        end_of_assertion = 0
        for i, token in enumerate(self.tokens):
            if token.text == "static_assert":
                end_of_assertion = self.end_of_operand(i + 1, 1, frozenset((";",)))
            if i <= end_of_assertion:
                continue
            if token.kind == "sign":
                yield from self.signs(i)
            elif token.kind == "number":
                yield from self.numbers(i)
            elif token.kind == "text" and len(token.text) > 2:
                at = token.text.index('"') + 1
                changed = "X" if token.text[at] not in "\\%" else "X" + token.text[at]
                rest = token.text[at + 1:]
                yield self.change("trace text" if self.in_trace[i] else "text", i, i, token.text[:at] + changed + rest)
            elif token.kind == "word":
                yield from self.words(i)

    def signs(self, i: int) -> Iterator[Mutation]:
        token = self.tokens[i]
        # As the sources are formatted, what has no space around it is a declarator, an address or a template's bracket.
        is_spaced = self.source[token.start - 1] in " \n" and self.source[token.end] in " \n"
        if token.text in SIGNS and (is_spaced or token.text in ("++", "--", "!")) and not self.is_at(i - 1, "operator"):
            kind = "comparison" if token.text in ("==", "!=", "<", "<=", ">", ">=") else "operator"
            yield self.change(kind, i, i, SIGNS[token.text])
        if token.text in ("&&", "||"):
            stops = frozenset(("&&", "||", ";", ",", "?", ":", "=", "return", "requires"))
            left = self.end_of_operand(i - 1, -1, stops)
            right = self.end_of_operand(i + 1, 1, stops)
            yield self.change("condition", left, i, "")
            yield self.change("condition", i, right, "")
        if token.text == "?":
            stops = frozenset((";", ",", "?", ":", "=", "return", "{", "}"))
            left = self.end_of_operand(i - 1, -1, stops)
            yield self.change("condition", left, i - 1, "!(" + self.text(left, i - 1) + ")")

    def numbers(self, i: int) -> Iterator[Mutation]:
        digits = re.match(r"0[xX][0-9a-fA-F']+|[0-9']+", self.tokens[i].text)
        if digits is None:
            return
        suffix = self.tokens[i].text[digits.end():]
        value = int(digits.group().replace("'", ""), 0 if digits.group()[:2] in ("0x", "0X") else 10)
        kind = "trace level or code" if self.in_trace[i] else "number"
        yield self.change(kind, i, i, f"{value + 1}{suffix}")
        if value > 1:
            yield self.change(kind, i, i, f"{value - 1}{suffix}")

    def words(self, i: int) -> Iterator[Mutation]:
        word = self.tokens[i].text
        for text in WORDS.get(word, "").split():
            kind = "condition" if word in ("true", "false") else "view"
            yield self.change(kind, i, i + 2 if word == "AnyView" and self.is_at(i + 1, "(") else i, text)
        for widths in (NARROWER, WIDER):
            if word in widths and (self.is_at(i - 1, "<") or widths is NARROWER):
                yield self.change("width", i, i, widths[word])
        if re.search(r"_MAX$|^k[A-Z]\w*(Max|Last|Limit)\w*$", word) and not self.is_at(i - 1, "::"):
            yield self.change("boundary", i, i, f"({word} + 1)")
            yield self.change("boundary", i, i, f"({word} - 1)")
        if word in ("break", "continue") or word == "return" and self.is_at(i + 1, ";"):
            yield self.change("statement", i, i, "")
        if word in ("if", "while") and self.is_at(i + 1, "("):
            last = self.end_of_operand(i + 2, 1, frozenset())
            condition = self.text(i + 2, last)
            if ";" not in condition:
                yield self.change("condition", i + 2, last, "false && (" + condition + ")")
            if ";" not in condition and word == "if":
                yield self.change("condition", i + 2, last, "true || (" + condition + ")")
        if word == "else":
            return
        parts = NAME_PART.findall(word)
        called = self.is_at(i + 1, "(")
        for pair in PARTS:
            for old, new in (pair, pair[::-1]):
                if old in parts and word.replace(old, new, 1) in self.known and (called or not word.startswith("Swct")):
                    kind = "slot and port" if pair == ("Slot", "Port") else "neighbour"
                    yield self.change(kind, i, i, word.replace(old, new, 1))
        if word.startswith("kError"):
            yield self.change("trace level or code", i, i, "9")
        if self.is_at(i - 1, ".", "->"):
            kind_of = re.match(r"[a-z]*", word)
            prefix = kind_of.group() if kind_of else ""
            alike = [name for name in self.members if name != word and re.fullmatch(prefix + r"(?![a-z])\w*", name)]
            if alike:
                following = [name for name in alike if name > word]
                yield self.change("field", i, i, (following or alike)[0])

    def statements(self) -> Iterator[Mutation]:
        """Dropped statements, and which tokens belong to traces."""
        for i, token in enumerate(self.tokens):
            before = self.tokens[i - 1].text if i else "{"
            if before not in (";", "{", "}", ")", "else", ":"):
                continue
            if token.text in NOT_A_STATEMENT or token.kind not in ("word", "sign") or token.text in "{}();,.":
                continue
            last = self.end_of_operand(i, 1, frozenset((";",)))
            if not self.is_at(last + 1, ";") or any(self.is_at(k, "{") for k in range(i, min(last, i + 3))):
                continue
            kind = "statement"
            if TRACE.search(token.text):
                kind = "trace"
                self.in_trace[i:last + 1] = [True] * (last + 1 - i)
            if any(self.is_at(k, "(", "=", "++", "--", "+=", "-=", "|=", "&=") for k in range(i, last + 1)):
                yield self.change(kind, i, last, "")


def names_of(source: str) -> set[str]:
    return {token.text for token in tokens_of(source) if token.kind == "word"}


def mutations_of(path: str, source: str, known: frozenset[str]) -> list[Mutation]:
    seen: dict[tuple[int, int, str], Mutation] = {}
    for mutation in Finder(path, source, known).find():
        if source[mutation.start:mutation.end] != mutation.replacement:
            seen.setdefault((mutation.start, mutation.end, mutation.replacement), mutation)
    return sorted(seen.values(), key=lambda m: (m.start, m.end, m.replacement))
