"""The library and the platform: loading them, and what cffi does not do by itself."""
from __future__ import annotations

import os
import sys
from typing import TYPE_CHECKING, Any, Optional, cast

from ._declarations import ffi
from ._errors import NotAttached, WrongUse

if TYPE_CHECKING:
    from ._operations import Operations

PLATFORM = "libpiovios-platform.so.1"
LIBRARY = "libpiovios.so.1"


class _Library:
    """The names of a shared library, looked up when they are first asked for."""

    def __init__(self) -> None:
        self._raw: Any = None

    def __getattr__(self, name: str) -> Any:
        if name.startswith("__"):
            raise AttributeError(name)
        if self._raw is None:
            raise WrongUse(f"{name}: nothing is loaded yet; call piovios.open() or piovios.load() first")
        try:
            value = _safe(getattr(self._raw, name))
        except ffi.error as error:  # of data; operations raise AttributeError by themselves
            raise AttributeError(str(error)) from None
        setattr(self, name, value)
        return value

    def is_loaded(self) -> bool:
        """Whether names can be asked for."""
        return self._raw is not None

    def __dir__(self) -> list[str]:
        return [name for name in dir(self._raw) if hasattr(self, name)]


#: Every exported operation, datum and constant, by the rules of the C headers: no argument is looked after, a bad key
#: gives the absent value, and the buffers of iterators last until their next call. A null result is None: reading a
#: field through a null pointer would end the interpreter.
lib = cast("Operations", _Library())
#: The platform's own names. Those of the stand-in (platform/standin.h) are declared.
platform: Any = _Library()
_loaded: dict[Any, str] = {}


def load(platform: str = PLATFORM, library: str = LIBRARY) -> None:
    """Loads the platform's library and then the library, which leaves the platform's names open; once in a process.

    Names without a slash are searched for as the dynamic loader does (LD_LIBRARY_PATH). NotAttached: one cannot be
    loaded. WrongUse: others are loaded already.
    """
    targets: tuple[Any, Any] = _platform, lib
    for target, name, flags in zip(targets, (os.fspath(platform), os.fspath(library)), (ffi.RTLD_GLOBAL, 0)):
        if _loaded.setdefault(target, name) != name:
            raise WrongUse(f"this process has loaded {_loaded[target]}; {name} needs a process of its own")
        if target._raw is None:
            try:
                target._raw = ffi.dlopen(name, flags | ffi.RTLD_NOW)
            except OSError as error:
                del _loaded[target]
                raise NotAttached(f"{error}; install it, or say with LD_LIBRARY_PATH where it is") from None


_platform = platform


def _without_null(function: Any) -> Any:
    def operation(*given: Any) -> Any:
        return function(*given) or None

    operation.__doc__ = str(ffi.typeof(function))
    return operation


def _stand_in(kind: Any) -> Optional[str]:
    """The plain record that goes by value as a packed one does, which cffi refuses; None for what cffi accepts."""
    if kind.kind != "struct":
        return None
    fields = [(field.offset, ffi.alignof(field.type)) for _, field in kind.fields]
    is_aligned = all(offset % alignment == 0 for offset, alignment in fields)
    if is_aligned and ffi.sizeof(kind) % max(alignment for _, alignment in fields) == 0:
        return None
    # The convention of x86-64 passes a record with a misaligned field in memory, like one of more than 16 bytes. Others
    # go by the size.
    in_memory = not is_aligned and os.uname().machine == "x86_64" and sys.maxsize > 2**32
    return "PassedInMemory" if in_memory else f"Passed{ffi.sizeof(kind)}"


def _safe(value: Any) -> Any:
    """An operation with None in place of null, and callable where it takes a packed record by value; other things as
    they are."""
    if not isinstance(value, ffi.CData) or ffi.typeof(value).kind != "function":
        return value
    kind = ffi.typeof(value)
    shapes = [_stand_in(argument) for argument in kind.args]
    if not any(shapes):
        return _without_null(value) if kind.result.kind == "pointer" else value
    arguments = ", ".join(shape or argument.cname for shape, argument in zip(shapes, kind.args))
    function = ffi.cast(f"{kind.result.cname}(*)({arguments})", value)

    def passed(shape: Optional[str], argument: Any, given: Any) -> Any:
        if shape is None:
            return given
        box, record = ffi.new(f"{shape} *"), ffi.new(f"{argument.cname} *", given)
        ffi.memmove(box, record, ffi.sizeof(argument))
        return box[0]

    def operation(*given: Any) -> Any:
        if len(given) != len(shapes):
            raise TypeError(f"{kind} takes {len(shapes)} arguments, {len(given)} were given")
        return function(*map(passed, shapes, kind.args, given))

    operation.__doc__ = str(kind)
    return operation
