"""The node: attaching to its region, and the way to everything in it."""
from __future__ import annotations

import os
from _thread import get_ident
from typing import Any, Iterator, Optional

from ._declarations import ffi
from ._errors import Error, NotAttached, NotFound, WrongUse
from ._library import LIBRARY, PLATFORM, lib, load
from ._library import platform as standin
from ._objects import PORTS, Period, Port, Vlan
from ._records import copied, reply, request
from ._table import PERIOD, Table

REGION_NAME = b"/swct-data"
REGION_SIZE = 2741943  # frozen, like the whole layout
_RINGS = {"15m": 97, "24h": 2}
_QUEUES = {f"{slot}/{port}/{queue}": (slot, port, queue)
           for slot in (1, 2) for port in (1, 2, 3, 4, 5) for queue in range(9)}
_REASONS = {
    1: "it does not exist; start the process that creates it, or correct the prefix",
    2: "it has another size; run the same version everywhere and create it anew",
    3: "no permission; run as the user that created it, others may only read it",
    4: "bad prefix; use letters, digits, '-', '_' or '.'",
    5: "no memory for it; make room in /dev/shm",
    6: "the system refused; see the line on the standard error output",
}
# Of the process: the thread that uses the library, the region that it is attached to, the prefix that was set.
_process: dict[str, Any] = {}


class Node:
    """A node's region. Made by open(); good in the thread that opened it, until it is closed."""

    def __init__(self, write: bool) -> None:
        self.write = write  #: whether set_config is allowed
        self._is_open = True

    def __enter__(self) -> Node:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def close(self) -> None:
        """Ends the use of this object and of what came from it. The process stays attached: the library never lets go
        of a region. Tables can still be read."""
        self._is_open = False

    def check(self) -> None:
        """WrongUse when the node is closed, or in another thread than the one that opened it."""
        if not self._is_open:
            raise WrongUse("the node is closed")
        if _process.get("thread") != get_ident():
            raise WrongUse("another thread opened the node; the library's iterators serve one thread of a process")

    def walk(self, iterator: Any, moid: Any) -> Iterator[Any]:
        """Steps one of the library's iterators from 'moid' on, whose keys of 0 mean the start. Each result is 'moid',
        overwritten by the next."""
        while True:
            self.check()
            found = iterator(moid)
            if not found:
                return
            moid[0] = found[0]
            yield moid

    @property
    def switch(self) -> Any:
        """The switch attributes with the present numbers of VLANs and ports, a named tuple SwctSwitchAttributes."""
        self.check()
        attributes = ffi.new("SwctSwitchAttributes *")
        lib.Swct_GetSwitchAttributes(attributes)
        return copied(attributes[0])

    def vlans(self, after: int = 0) -> Iterator[Vlan]:
        """The VLANs that exist, behind id 'after', up to 4094 ascending, as the library walks them: VLAN 4095 is not
        among them."""
        for moid in self.walk(lib.Swct_GetNextVlan, ffi.new("SwctVlanMoid *", (0, after))):
            yield Vlan(self, moid.wVlanId)

    def vlan(self, vid: int) -> Vlan:
        """A VLAN, 1 to 4095; NotFound when it does not exist."""
        self.check()
        if not 1 <= vid <= 4095 or not lib.Swct_DoesVlanExist(vid):
            raise NotFound(f"there is no VLAN {vid}")
        return Vlan(self, vid)

    def ports(self) -> Iterator[Port]:
        """The switch ports that exist: the slots of the platform, then slot 3."""
        for moid in self.walk(lib.Swct_SwitchPortMoidIterator, ffi.new("SwctPortMoid *")):
            yield Port(self, f"{moid.bSlot}/{moid.bPort}")

    def port(self, name: str) -> Port:
        """A switch port, "1/3"; NotFound when it does not exist."""
        self.check()
        if name not in PORTS or not lib.Swct_DoesSwitchPortExist(*PORTS[name]):
            raise NotFound(f"there is no port {name!r}; ports are named slot/port, from 1/1 to 3/5")
        return Port(self, name)

    @property
    def region(self) -> Table:
        """The whole region as bytes."""
        self.check()
        # The bridge's name is the first thing in the region whose address the library tells, and the switch begins it.
        name = ffi.cast("char *", lib.Swct_GetBridgeName() if lib.Swct_IsAttachedForReading() else ffi.NULL)
        start = self._there(name) - ffi.offsetof("SwctSwitch", "sAttributes", "acBridgeName")
        return Table(start, (REGION_SIZE,), 1, "|u1")

    def history(self, ring: str = "15m") -> Table:
        """The rings of all queues, "15m" or "24h": [slot - 1][port - 1][queue][index], 2 x 5 x 9 x 97 or 2. A period
        has eight counters, a stamp (two words, zero: there is no record) and the marks is_current (1: yes) and
        suspect."""
        self.check()
        first = self._ring("RPtr", ring)(1, 1, 0, 0)
        return Table(self._there(first), (2, 5, 9, _RINGS[ring]), ffi.sizeof(first[0]), PERIOD)

    def periods(self, queue: str, ring: str = "15m") -> list[Period]:
        """The periods of one queue, "slot/port/queue" (1 to 2, 1 to 5, 0 to 8), the current one first; empty when the
        ring has no current one. Periods without a record are left out."""
        self.check()
        if queue not in _QUEUES:
            raise NotFound(f"there is no queue {queue!r}; queues are named slot/port/queue, from 1/1/0 to 2/5/8")
        read = self._ring("LastNRecords", ring)
        records = ffi.new("SwctQueueStatisticsHistorical[]", _RINGS[ring])
        read(*_QUEUES[queue], 0, records)
        if records[0].boIsCurrentPeriod != 1:
            return []
        return [Period(age, [word.dwHigh << 32 | word.dwLow for word in record.aqwCounter], list(record.adwStamp),
                       bool(record.boSuspect))
                for age, record in enumerate(records) if age == 0 or any(record.adwStamp)]

    def get_config(self, number: int, raw: bool = False) -> Any:
        """The objects of a class of the CDBM (docs/cdbm.md): named tuples of Moid and body, or with raw=True the
        library's bytes, zero Moid at the end included. Classes 176 and 867 have one record, without a Moid."""
        self.check()
        return reply(number, lib, raw)

    def set_config(self, number: int, records: Any) -> None:
        """Replaces what the region holds of a class, in the order of docs/cdbm.md. Records are named tuples, tuples or
        dicts as record() and get_config() make them, or bytes with or without their end. ValueError: what is given are
        no records of that class; then nothing has changed."""
        self.check()
        array = request(number, records)
        if not self.write:
            raise WrongUse("the node is open for reading; piovios.open(write=True) is for those who change it")
        if lib.Swct_SetConfig(number, array) != 0:
            raise Error(f"the library refused class {number}; its error trace says why")

    @staticmethod
    def _ring(operation: str, ring: str) -> Any:
        if ring not in _RINGS:
            raise ValueError(f"there is no ring {ring!r}; the rings are '15m' and '24h'")
        return getattr(lib, f"Swct_GetQueueStatisticsHistorical{ring}{operation}")

    @staticmethod
    def _there(pointer: Any) -> Any:
        if not pointer:
            raise NotAttached("the library has no view of the region any more")
        return pointer


def _reason() -> str:
    """Why the last use of the region failed."""
    if not hasattr(standin, "Standin__GetShmFailure"):
        return "the platform did not map it; see the line on the standard error output"
    return _REASONS.get(standin.Standin__GetShmFailure(), _REASONS[6])


def _set_prefix(prefix: Optional[str]) -> None:
    """None goes back to the environment."""
    if hasattr(standin, "Standin__SetShmPrefix"):
        text = ffi.NULL if prefix is None else ffi.new("char[]", str.encode(prefix).replace(b"\0", b"?"))
        standin.Standin__SetShmPrefix(text)
    elif prefix is not None:
        raise WrongUse("this platform names the region itself; only the stand-in takes a prefix")


def _name() -> str:
    """The region's name, prefix included."""
    if not hasattr(standin, "Standin__ShmPath"):
        return REGION_NAME.decode()
    path = ffi.new("char[]", standin.STANDIN__SHM_PATH_SIZE)
    if not standin.Standin__ShmPath(REGION_NAME, path, len(path)):
        raise NotAttached(f"cannot open the region: {_reason()}")
    return bytes(ffi.string(path)).decode()


def _object(name: str) -> Any:
    """What tells one object of a name from the next one of it."""
    try:
        found = os.stat(f"/dev/shm{name}")
    except OSError:
        return None
    return found.st_dev, found.st_ino


def open(*, write: bool = False, create: bool = False, prefix: Optional[str] = None, platform: str = PLATFORM,
         library: str = LIBRARY) -> Node:
    """Attaches the process to the node's region, for reading, or with write=True for reading and writing.

    create=True makes the region, or puts the one that is there back to its defaults, and implies write=True. 'prefix'
    names a test region of the stand-in; without it the environment variable PIOVIOS_SHM_PREFIX does. 'platform' is the
    node's platform library, loaded before the library.

    A process has one region for its whole life: the library never detaches, so that after close() the same region can
    be opened again and another one cannot. The thread that opens first is the only one that may open, and use, nodes.

    NotAttached: there is no region, or it cannot be mapped; the text says why. WrongUse: another region, platform or
    thread than before.
    """
    if _process.setdefault("thread", get_ident()) != get_ident():
        raise WrongUse("another thread of this process opened the node first")
    wanted = _process.get("prefix") if prefix is None else prefix
    try:
        load(platform, library)
        _set_prefix(wanted)
        _attach(create, write or create)
        _process["prefix"] = wanted
    finally:
        if "region" not in _process:
            del _process["thread"]  # nothing to guard so far
        if standin.is_loaded():
            _set_prefix(_process.get("prefix"))
    return Node(write or create)


def _attach(create: bool, write: bool) -> None:
    """Attaches to the region of the present name, or raises and leaves things as they were."""
    name, attached = _name(), _process.get("region")
    if attached and name != attached[0]:
        raise WrongUse(f"this process is attached to {attached[0]} and stays so; {name} needs a process of its own")
    if attached and not create and _object(name) != attached[1]:
        raise NotAttached(f"{name} was removed or made anew since this process attached; use a new process")
    (lib.Swct_Init if create else lib.Swct_CdbmOpen if write else lib.Swct_Open)()
    if not lib.Swct_IsAttachedForReading():  # where attaching for writing fails there is no read view either
        text = f"cannot attach to {name}: {_reason()}"
        if attached:
            lib.Swct_Open()  # earlier nodes go on reading
        raise NotAttached(text)
    _process["region"] = name, _object(name)
