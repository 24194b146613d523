"""The layer-2 configuration of a switching node, which its processes share in one region of shared memory.

    import piovios
    node = piovios.open()
    for vlan in node.vlans():
        print(vlan.id, vlan.name, vlan.members)

open() attaches; a Node has VLANs, ports, history and the exchange with the CDBM. Every operation of the library is in
piovios.lib by the name that the C headers give it, and every record in piovios.ffi.
"""
from ._declarations import ffi
from ._errors import Error, NotAttached, NotFound, WrongUse
from ._library import lib, load, platform
from ._node import Node, open
from ._objects import DefaultRegistration, Pep, Period, Port, Registration, Translation, Vlan
from ._records import record
from ._table import Table
from ._version import __version__

__all__ = [
    "DefaultRegistration", "Error", "Node", "NotAttached", "NotFound", "Pep", "Period", "Port", "Registration", "Table",
    "Translation", "Vlan", "WrongUse", "__version__", "ffi", "lib", "load", "open", "platform", "record",
]
