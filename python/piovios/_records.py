"""Records of the library as named tuples, and the classes of the exchange with the CDBM."""
from __future__ import annotations

from collections import namedtuple
from typing import Any, Union

from ._declarations import ffi

_PORTS, _VIDS = 15, 4094
#: The record of each class, and how many objects it can have; None: always one, and it has no Moid.
CLASSES: dict[int, tuple[str, Any]] = {
    176: ("SwctSwitchAttributes", None),
    177: ("SwctSwitchPortRecord", _PORTS),
    205: ("SwctVlanRecord", 4095),
    206: ("SwctVlanPortRecord", 4095 * _PORTS),
    369: ("SwctCVidRegistrationRecord", _PORTS * _VIDS),
    427: ("SwctServicePriorityRegenerationRecord", _PORTS * 16 * 8),
    437: ("SwctVidTranslationRecord", _PORTS * _VIDS),
    469: ("SwctProviderEdgePortRecord", _PORTS * 16),
    514: ("SwctQinQPortRecord", _PORTS),
    538: ("SwctDefaultCVidRegistrationRecord", _PORTS),
    769: ("SwctVlanIfInnerTagRecord", 4095),
    867: ("uint32_t", None),
}
_EMPTY: dict[str, Any] = {"primitive": 0, "struct": ()}
_types: dict[Any, Any] = {}


def record(name: str) -> Any:
    """The named tuple of a record of the headers, "SwctVlanRecord". Fields that are left out are zero; bytes may be
    shorter than their field, the rest is zero."""
    try:
        kind = ffi.typeof(name)
    except ffi.error:
        kind = None
    if kind is None or kind.kind != "struct":
        raise ValueError(f"{name!r} is no record of the headers")
    if kind not in _types:
        defaults = [_EMPTY.get(field.type.kind, b"") for _, field in kind.fields]
        _types[kind] = namedtuple(kind.cname.split()[-1], [field for field, _ in kind.fields], defaults=defaults)
    return _types[kind]


def copied(value: Any) -> Any:
    """A number, bytes, list or named tuple that holds what 'value' holds now. Text ends before its trailing zeros."""
    if not isinstance(value, ffi.CData):
        return value
    kind = ffi.typeof(value)
    if kind.kind == "struct":
        made = _types.get(kind) or record(kind.cname)
        return made._make([copied(getattr(value, name)) for name in made._fields])
    if ffi.sizeof(kind.item) > 1:
        return [copied(item) for item in value]
    content = bytes(ffi.buffer(value))
    return content.rstrip(b"\0") if kind.item.cname == "char" else content


def class_of(number: int) -> tuple[str, Any]:
    """The row of a class, or ValueError."""
    if number not in CLASSES:
        raise ValueError(f"there is no class {number}; the classes are {', '.join(map(str, CLASSES))}")
    return CLASSES[number]


def request(number: int, records: Any) -> Any:
    """The array that Swct_SetConfig reads, with its end; ValueError for records that are not of the class."""
    name, capacity = class_of(number)
    size = ffi.sizeof(name)
    if isinstance(records, (bytes, bytearray, memoryview)):
        content = bytes(records)
        count = _count(number, content, size, 0 if capacity is None else ffi.sizeof(moid_of(name)))
        array = ffi.new(f"{name}[]", count + 1)
        ffi.memmove(array, content, count * size)
    else:
        listed = list(records)
        array = ffi.new(f"{name}[]", len(listed) + 1)
        for index, given in enumerate(listed):
            try:
                array[index] = given
            except (TypeError, ValueError, LookupError, OverflowError) as error:
                raise ValueError(f"class {number}, record {index}: {error}") from None
        count = len(listed)
    if capacity is None:
        if count != 1:
            raise ValueError(f"class {number}: one record, not {count}")
        return array
    for index in range(count):
        if array[index].sMoid.wClassId != number:
            raise ValueError(f"class {number}, record {index}: its class id is {array[index].sMoid.wClassId}")
    return array


def moid_of(name: str) -> Any:
    """The type of a record's Moid."""
    return ffi.typeof(name).fields[0][1].type


def _count(number: int, content: bytes, size: int, end: int) -> int:
    """How many records bytes hold: whole ones, with or without the zero Moid that ends them."""
    count, rest = divmod(len(content), size)
    if rest not in (0, end) or any(content[count * size:]):
        raise ValueError(f"class {number}: {len(content)} bytes are no records of {size} bytes and a zero end of {end}")
    return count


def reply(number: int, lib: Any, raw: bool) -> Union[list[Any], bytes]:
    """What Swct_GetConfig writes: named tuples, or the bytes with their end."""
    name, capacity = class_of(number)
    array = ffi.new(f"{name}[]", (capacity or 0) + 2)
    lib.Swct_GetConfig(number, array, (capacity or 0) + 1)
    count, end = 1, 0
    if capacity is not None:
        count = next((index for index, item in enumerate(array) if item.sMoid.wClassId == 0), capacity)
        end = ffi.sizeof(moid_of(name))
    if raw:
        return bytes(ffi.buffer(array, count * ffi.sizeof(name) + end))
    return [copied(array[index]) for index in range(count)]
