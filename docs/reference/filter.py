#!/usr/bin/env python3
"""Makes Doxygen comments of a public header's plain ones, and adds what the sources tell: view, bad key, traces.

Doxygen calls it with a header's path and reads the result.  In the headers a comment belongs to the declarations right
below it, up to the next comment or empty line; a comment behind a declaration adds to that.
"""
import functools
import pathlib
import re
import sys

LIBRARY = pathlib.Path(__file__).resolve().parents[2] / "data/swch"
ERROR_CODES = {"kErrorPlain": 0, "kErrorNoView": 2, "kErrorNoPep": 2, "kErrorBadMoid": 26, "kErrorTooMany": 55}
FIELDS = {"wClassId": "Class id.", "bSlot": "Slot.", "bPort": "Port.", "wVlanId": "VLAN id.", "wCVid": "C-VID.",
          "wLocalVid": "Local VID.", "wPepIndex": "PEP index.", "dwPriority": "Received priority.", "bQueue": "Queue.",
          "bIndex": "Index of the period.", "bSpare": "Not used.", "sMoid": "The object's name.",
          "sBody": "The object's record.", "dwLow": "Low word.", "dwHigh": "High word.", "abByte": "First byte first.",
          "sVlanData": "The VLAN record.", "sInnerTag": "Inner tag of its interface.", "bNbrOfPorts": "Entries in use.",
          "asPort": "The ports.", "wNbrOfVlanIds": "Entries in use.", "sAttributes": "Configuration.",
          "sStatistics": "Counts.", "dwRegeneratedPriority": "1 to 8."}
NO_VIEW = re.compile(r"Filter$|IndexWithinRange$|Element$|Structs$|StaySuspect\d|GetNextQueueStatistics$|"
                     r"PrintPortVlanList$|Swct_IsAttachedFor|Swct_Init$|Swct_\w*Open$|IsAllPortMembers")
WRITES = re.compile(r"WPtr$|WData$|Swct_SetConfig$|RestoreCDB$|Swct_(Write|Clear|Initialize)Queue|IncrementCurrentPeriod$")


def escape(text):
    return re.sub(r"([%#&<>@\\])", r"\\\1", text)


@functools.lru_cache
def operations():
    """Of each operation: the half that defines it, and its trace points."""
    half, traces = {}, {}
    for source in [*sorted(LIBRARY.glob("region/*.h")), *sorted(LIBRARY.glob("*/*.cpp"))]:
        current = None
        text = re.sub(r"\n[ \t]+", " ", source.read_text())  # a body becomes one line
        names = dict(re.findall(r'const auto& (k\w+) = kText<Ring, "(Swct_\w+)">', text))
        for line in text.split("\n"):
            head = re.match(r"\w.*?\b(Swct_\w+)\(", line)
            current = head[1] if head else current if line.startswith("{") else None
            if head:
                half[current] = source.parent.name
            if "AnyView()" in line:
                half[current] = "any"
            for kind, arguments in re.findall(r"SWCT_(ERROR|DEBUG)(?:_EHSL|_AS)?\((.*?)\);", line):
                arguments = re.sub(r'\(?kText<Ring, ("(?:[^"]|" ")*")>\)?', lambda m: m[1].replace('" "', ""), arguments)
                as_name = re.match(r'"(Swct_\w+)", |(kName), |(kAccessorName)<Ring>\[kAccessor\], ', arguments)
                owners = [current]
                if as_name:
                    accessors = [f"Swct_GetQueueStatisticsHistorical15m{part}" for part in ("RPtr", "WPtr", "WData")]
                    owners = [as_name[1]] if as_name[1] else [names["kName"]] if as_name[2] else accessors
                    arguments = arguments[as_name.end():]
                level = arguments.split(",")[0].strip()
                text_of = re.search(r'"(.*?)(?:\\n)?"', arguments)
                point = f"{'error' if kind == 'ERROR' else 'debug level'} {ERROR_CODES.get(level, level)}"
                point += f" <tt>{escape(text_of[1].strip())}</tt>" if text_of else " (no view)" if level == "kErrorNoView" else ""
                for owner in filter(None, owners):
                    for family in ("15m", "24h"):
                        name = re.sub(r"^(Swct_[SG]etConfig)_\w+", r"\1", owner.replace("15m", family))
                        traces.setdefault(name, []).append(point.replace("15m", family))
    return half, traces


@functools.lru_cache
def meanings():
    """Fields that the region's table describes."""
    rows = re.findall(r'SWCT_ROW\((\w+), ([\w.]+), "(.*?)"\)', (LIBRARY / "region/region_layout.h").read_text())
    return {field.split(".")[-1]: meaning for _, field, meaning in rows}


def facts(declaration, text):
    """View, outcome of a bad key and traces of an operation."""
    name = re.search(r"(\w+)\(", declaration)[1]
    half, traces = operations()
    result = re.sub(r"SWCT_API", "", declaration.split(name)[0]).strip()
    if NO_VIEW.search(name):
        view = "none"
    elif WRITES.search(name) or half.get(name) == "swct" and not name.endswith("Iterator"):
        view = "write"
    else:
        view = "write, or read without it" if half.get(name) == "any" else "read"
    stated = re.findall(r"(?:absent|bad key|none): (0x\w+|\d+)|(\d+) without a read view|Returns 0, or (1)", text, re.I)
    if stated:  # the operation's own words come behind those that it shares
        bad = "".join(stated[-1])
    elif "*" in result:
        bad = "null"
    elif "Historical" in name and "DoesQueue" not in name:
        bad = "reported, see above"
    elif "LocalVidTranslated" in name or "RelayVidOfLocal" in name:
        bad = "the caller's VID becomes 0"
    elif result != "void":
        bad = "see above" if "SWCT_OK" in text else 0
    elif view == "write":
        bad = "nothing changes"
    else:
        bad = "see above" if "lears " in text else "nothing is written"
    lines = [f"@par View\n{view}"]
    if "(void)" not in declaration and view != "none" or stated:
        lines.append(f"@par Bad key, no view\n{bad}")
    lines.append("@par Traces\n" + ("; ".join(dict.fromkeys(traces.get(name, []))) or "none"))
    return "\n\n".join(lines)


def plain(comment):
    return re.sub(r"\n \* ?", "\n", comment.strip()[2:-2]).strip()


def members(body):
    """Fields and enumerators: the comment behind one describes it."""
    def document(match):
        indent, code, comment = match[1], match[2], match[3]
        name = re.search(r"(\w+)\s*(?:\[[^;]*\])?\s*(?:= \w+)?[;,]?\s*$", code)
        text = plain(comment) if comment else meanings().get(name[1]) or FIELDS.get(name[1]) if name else ""
        value = re.search(r"= (\w+)", code)
        return f"{indent}{code.rstrip()} /**< {text or f'Value {value[1]}.' if text or value else ''} */"
    return re.sub(r"^( +)(\w[^/\n]*[;,\w\]])[ \t]*(/\*.*?\*/)?$", document, body, flags=re.M)


def convert(source, name):
    head, rest = re.match(r"(/\*.*?\*/)(.*)", source, re.S).groups()
    title, _, text = plain(head).partition(" - ")[2].partition("\n")
    group = name.replace(".h", "")
    title = title[0].upper() + title[1:]
    out = [f"/** @file\n * Declares the group @ref {group}. */\n/** @defgroup {group} {title.split(':')[0].rstrip('.')}\n"
           f" * {title}\n\n{text.strip()} */\n/** @addtogroup {group}\n * @{{ */\n"]
    shared = before = ""
    items = re.findall(r"/\*.*?\*/[ \t]*\n|(?:typedef )?(?:struct|union|enum)\b[^;]*\{.*?\n\}[^;]*;\n|SWCT_API[^;]*;[^\n]*\n"
                       r"|typedef [^;{]*;\n|\n|[^\n]*\n", rest, re.S)
    for item in items:
        if item.startswith("/*"):
            shared = plain(item)
        elif item == "\n":
            shared = ""
            out.append(item)
        elif item.startswith("SWCT_API"):
            code, _, trailing = item.rstrip("\n").partition(";")
            trailing = plain(trailing) if trailing.strip() else ""
            if trailing.startswith("the same"):
                trailing = f"{trailing}: {before}"
            before = trailing
            own = shared
            if "Filter(" in code:
                own = "Whether the Moid has the keys of the filter; a key of zero in the filter matches every value. A null pointer: 0."
            text = " ".join(t[0].upper() + t[1:].rstrip(".") + "." for t in (own, trailing) if t)
            if re.search(r"24h\w*\(", code):
                text += " See @ref " + re.search(r"(\w+)\(", code)[1].replace("24h", "15m") + "."
            if "(" in code:
                text += "\n\n" + facts(code, text)
            out.append(f"/** {text} */\n{code};\n")
        elif re.match(r"typedef|struct|union|enum", item):
            name = re.search(r"(\w+);\s*$", item)
            text = shared or (f"Record of {title[0].lower() + title[1:]}" if "typedef" in item else "Values.")
            out.append(f"/** {text} */\n{members(item)}")
        elif item.startswith("#endif") and item is items[-1]:
            out.append("/** @} */\n" + item)
        else:
            out.append(item)
    return "".join(out)


if __name__ == "__main__":
    header = pathlib.Path(sys.argv[1])
    content = header.read_text()
    sys.stdout.write(convert(content, header.name) if header.suffix == ".h" else content)
