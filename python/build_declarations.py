#!/usr/bin/python3
"""Makes the files of the package that come from the public headers.

_declarations.py  what cffi knows of the library and of the stand-in; read by _cffi_backend, nothing is compiled
_operations.pyi   the operations for type checkers and editors, with the comments of the headers
_version.py       the version of the project
"""
import argparse
import contextlib
import importlib
import pathlib
import re
import subprocess
import tempfile
import textwrap
from typing import Any

cffi: Any = importlib.import_module("cffi")  # with or without type stubs, as installed

SOURCE = """
#include <swct/swct.h>
#include <platform/gt.h>
#include <platform/standin.h>
/* Shapes in which packed Moids travel by value, see _library.py. */
typedef struct { uint8_t ab[24]; } PassedInMemory;
typedef struct { uint8_t ab[10]; } Passed10;
"""


def preprocess(compiler: str, includes: list[pathlib.Path]) -> str:
    """The declarations of the headers as cffi reads them: without attributes, assertions and system headers."""
    with tempfile.TemporaryDirectory() as empty:
        for name in ("stddef.h", "stdint.h"):  # cffi knows what they declare
            pathlib.Path(empty, name).touch()
        command = [compiler, "-E", "-P", "-nostdinc", "-D__attribute__(x)=", "-x", "c", f"-I{empty}"]
        command += [f"-I{path}" for path in includes] + ["-"]
        text = subprocess.run(command, input=SOURCE, stdout=subprocess.PIPE, text=True, check=True).stdout
    return re.sub(r"_Static_assert\s*\(.*?\)\s*;", "", text, flags=re.S)


def comments(header: str) -> dict[str, str]:
    """The comment in front of each declaration; in a paragraph it holds for all that follow."""
    found = {}
    for paragraph in header.split("\n\n"):
        comment = ""
        for block, declaration in re.findall(r"/\*(.*?)\*/|(SWCT_API[^;]*;)", paragraph, flags=re.S):
            if declaration:
                found[re.findall(r"(\w+)\s*[(\[;]", declaration)[0]] = comment
            else:
                comment = " ".join(block.replace("\n *", " ").split())
    return found


def argument(text: str) -> str:
    """A parameter of a C declaration as one of Python: Any is a pointer or a record."""
    name = re.findall(r"\w+", text)[-1]
    is_number = re.fullmatch(r"\s*(const )?u?int\d+_t \w+\s*", text)
    return f"{name}: {'int' if is_number else 'Any'}"


def stub(declarations: str, texts: dict[str, str]) -> str:
    """A class with the operations as methods and the exported data as attributes."""
    lines = ['"""Made from the public headers."""', "from typing import Any", "", "", "class Operations:"]
    for result, name, parameters in re.findall(r"^extern\s+([^;(]*?)(\w+)\s*\(([^;]*)\)\s*;", declarations, re.M):
        listed = [] if parameters.strip() == "void" else [argument(text) for text in parameters.split(",")]
        kind = {"void": "None"}.get(result.strip(), "int" if re.fullmatch(r"u?int\d+_t", result.strip()) else "Any")
        lines.append(f"    def {name}({', '.join(['self', *listed])}) -> {kind}:")
        lines += textwrap.wrap(f'"""{texts.get(name, "")}"""', 110, initial_indent=" " * 8, subsequent_indent=" " * 8)
        lines += ["        ...", ""]
    lines += [f"    {name}: Any" for name in re.findall(r"^extern[^;(]*?(\w+)(?:\[[^]]*\])?\s*;", declarations, re.M)]
    lines += [f"    {name}: int" for name in re.findall(r"\b(SWCT_\w+) =", declarations)]
    return "\n".join(lines) + "\n"


def main() -> None:
    """Writes the three files."""
    parser = argparse.ArgumentParser()
    parser.add_argument("--compiler", required=True)
    parser.add_argument("--version", required=True)
    parser.add_argument("--output", required=True, type=pathlib.Path)
    parser.add_argument("includes", nargs="+", type=pathlib.Path)
    options = parser.parse_args()

    declarations = preprocess(options.compiler, options.includes)
    ffi = cffi.FFI()
    ffi.set_source("piovios._declarations", None)
    ffi.cdef(declarations, packed=True)
    with contextlib.redirect_stdout(None):
        ffi.emit_python_code(str(options.output / "_declarations.py"))

    library = re.sub(r"\s+", " ", declarations).replace("; ", ";\n")
    headers = [header for path in options.includes for header in sorted(path.glob("swct/*.h"))]
    texts = comments("\n\n".join(header.read_text() for header in headers))
    (options.output / "_operations.pyi").write_text(stub(library, texts))
    (options.output / "_version.py").write_text(f'__version__ = "{options.version}"\n')


if __name__ == "__main__":
    main()
