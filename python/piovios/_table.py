"""Parts of the region as read-only memory."""
from __future__ import annotations

from typing import Any, Union

from ._declarations import ffi

#: One period of the rings: eight 64-bit counters, the stamp, the marks. The node's byte order is little-endian.
PERIOD = [("counters", "<u8", (8,)), ("stamp", "<u4", (2,)), ("is_current", "|u1"), ("suspect", "|u1")]


class Table:
    """Bytes of the region, seen and not copied: they change as the node goes on, and stay readable until the process
    ends. numpy.asarray(table) is an array of this shape, these strides and this dtype over the same memory; without
    numpy take 'buffer'."""

    def __init__(self, pointer: Any, shape: tuple[int, ...], itemsize: int, dtype: Union[str, list[Any]]) -> None:
        strides: list[int] = []
        size = itemsize
        for length in reversed(shape):
            strides.insert(0, size)
            size *= length
        self.shape = shape  #: elements in each dimension
        self.strides = tuple(strides)  #: bytes from one element to the next in each dimension
        self.dtype = dtype  #: an element, as numpy.dtype() takes it
        self.buffer = memoryview(ffi.buffer(pointer, size)).toreadonly()  #: all of it as bytes
        self._address = int(ffi.cast("uintptr_t", pointer))

    @property
    def __array_interface__(self) -> dict[str, Any]:
        is_number = isinstance(self.dtype, str)
        size = self.strides[-1]
        return {"version": 3, "shape": self.shape, "strides": self.strides, "data": (self._address, True),
                "typestr": self.dtype if is_number else f"|V{size}", "descr": [] if is_number else self.dtype}
