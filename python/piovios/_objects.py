"""VLANs, ports and their objects: handles that ask the region each time, and named tuples that hold what they got."""
from __future__ import annotations

from typing import TYPE_CHECKING, Any, Iterator, NamedTuple, Optional, Union

from ._declarations import ffi
from ._errors import NotFound
from ._library import lib
from ._records import copied

if TYPE_CHECKING:
    from ._node import Node

PORTS = {f"{slot}/{port}": (slot, port) for slot in (1, 2, 3) for port in (1, 2, 3, 4, 5)}
_MEMBERSHIPS = {1: "tagged", 2: "untagged"}
_PORT_TYPES = {0: "none", 1: "pnp", 2: "cnp", 3: "cep"}


class Pep(NamedTuple):
    """A provider edge port: a customer edge port's way into one S-VLAN."""

    pep_index: int  #: 1 to 16
    svid: int
    cvids: int  #: how many C-VIDs of the port go there, those of the default registration included
    priorities: list[int]  #: what received priorities 1 to 8 become, each 1 to 8


class Registration(NamedTuple):
    """A C-VID of a customer edge port and the S-VID that it belongs to."""

    cvid: int
    svid: int
    untagged_cep: bool
    untagged_pep: bool
    relay_cvid: Optional[int]  #: None: the C-VID is relayed as it is


class DefaultRegistration(NamedTuple):
    """Where the C-VIDs of a customer edge port without a registration of their own go."""

    svid: Optional[int]  #: None: nowhere
    untagged_pep: bool


class Translation(NamedTuple):
    """A local VID of a provider or customer network port and the VID under which it is relayed."""

    local_vid: int
    relay_vid: int
    status: int  #: 3 counts as a provider-bridge setting


class Period(NamedTuple):
    """One period of a queue's history."""

    age: int  #: 0 is the current period, 1 the one before it
    counters: list[int]  #: eight, 64 bits wide, in the writer's order
    stamp: list[int]  #: two words of the writer
    suspect: bool


class Vlan:
    """A VLAN that exists. Each attribute is read from the region when it is asked for, and NotFound once it is gone."""

    __slots__ = ("_node", "id")

    def __init__(self, node: Node, vid: int) -> None:
        self._node = node
        self.id = vid

    def __repr__(self) -> str:
        return f"<Vlan {self.id}>"

    def _entry(self) -> Any:
        self._node.check()
        entry = lib.Swct_GetVlanEntryRPtr(self.id)
        if not entry or not entry.boExists:
            raise NotFound(f"there is no VLAN {self.id}")
        return entry

    @property
    def name(self) -> str:
        """At most 81 bytes of UTF-8; bytes that are none appear as \\xNN. May be empty."""
        name: bytes = ffi.string(self._entry().sVlanData.acName, 81)
        return name.decode("utf-8", "backslashreplace")

    @property
    def members(self) -> dict[str, Union[str, int]]:
        """Port to "tagged" or "untagged", or to the stored number where it is neither."""
        entry, ports = self._entry(), ffi.new("SwctPortList *")
        lib.Swct_GetPortMembersOfVlan(self.id, ports)
        found: dict[str, Union[str, int]] = {}
        for item in ports.asPort[0:ports.bNbrOfPorts]:
            value = entry.adwMembership[item.bSlot - 1][item.bPort - 1]
            if value != 0:  # else it has gone since
                found[f"{item.bSlot}/{item.bPort}"] = _MEMBERSHIPS.get(value, value)
        return found

    @property
    def has_interface(self) -> bool:
        """Whether the VLAN has a layer-3 interface."""
        self._entry()
        return lib.Swct_DoesVlanIfExist(self.id) != 0

    @property
    def users(self) -> int:
        """How many QinQ ports and provider edge ports use the VLAN."""
        return int(self._entry().dwNbrOfQinQOrPep)

    @property
    def record(self) -> Any:
        """The whole record, a named tuple SwctVlan."""
        return copied(self._entry().sVlanData)


class Port:
    """A switch port that exists. Each attribute is read when it is asked for, and NotFound once the port is gone."""

    __slots__ = ("_node", "name", "slot", "port")

    def __init__(self, node: Node, name: str) -> None:
        self._node = node
        self.name = name  #: "slot/port": slot 1 to 3, port 1 to 5
        self.slot, self.port = PORTS[name]

    def __repr__(self) -> str:
        return f"<Port {self.name}>"

    def _entry(self) -> Any:
        self._node.check()
        entry = lib.Swct_GetSwitchPortRPtr(self.slot, self.port)
        if not entry or not entry.dwL2PortType:
            raise NotFound(f"there is no port {self.name}")
        return entry

    def _walk(self, iterator: Any, moid: str) -> Iterator[Any]:
        """The Moids of the port's objects, each valid until the next."""
        self._entry()
        for found in self._node.walk(iterator, ffi.new(f"{moid} *", {"bSlot": self.slot, "bPort": self.port})):
            if (found.bSlot, found.bPort) != (self.slot, self.port):
                return
            yield found

    @property
    def type(self) -> Union[str, int]:
        """Its type in provider bridging: "none", "pnp", "cnp" or "cep", or the stored number where it is none."""
        value = self._entry().dwPbPortType
        return _PORT_TYPES.get(value, value)

    @property
    def pvid(self) -> int:
        """Its port VLAN id."""
        return int(self._entry().wPvid)

    @property
    def peps(self) -> list[Pep]:
        """By PEP index. Empty unless the port is a customer edge port in switch mode 1."""
        found = []
        for moid in self._walk(lib.Swct_ProviderEdgePortMoidIterator, "SwctProviderEdgePortMoid"):
            svid = lib.Swct_ProviderEdgePort_GetSVid(moid[0])
            cvids = lib.Swct_GetNumberOfCVidRegistrationsForSVid(self.slot, self.port, svid)
            entry, priorities = ffi.new("SwctServicePriorityRegeneration *"), []
            for priority in range(1, 9):
                key = {"bSlot": self.slot, "bPort": self.port, "wPepIndex": moid.wPepIndex, "dwPriority": priority}
                lib.Swct_ReadServicePriorityRegeneration(key, entry)
                priorities.append(entry.dwRegeneratedPriority)
            found.append(Pep(moid.wPepIndex, svid, cvids, priorities))
        return found

    @property
    def registrations(self) -> list[Registration]:
        """By C-VID. Empty unless the port is a customer edge port in switch mode 1."""
        found, entry = [], ffi.new("SwctCVidRegistration *")
        for moid in self._walk(lib.Swct_CVidRegistrationMoidIterator, "SwctCVidRegistrationMoid"):
            lib.Swct_ReadCVidRegistration(moid[0], entry)
            relay = entry.wRelayCVid if entry.boRelayCVid == 1 else None
            flags = bool(entry.boUntaggedCep), bool(entry.boUntaggedPep)
            found.append(Registration(moid.wCVid, entry.wSvid, *flags, relay))
        return found

    @property
    def default_registration(self) -> Optional[DefaultRegistration]:
        """None unless the port is a customer edge port with ingress filtering 2 in switch mode 1."""
        self._entry()
        moid, entry = ffi.new("SwctPortMoid *", (538, self.slot, self.port)), ffi.new("SwctDefaultCVidRegistration *")
        if not lib.Swct_DoesDefaultCVidRegistrationExist(moid[0]):
            return None
        lib.Swct_ReadDefaultCVidRegistration(moid[0], entry)
        return DefaultRegistration(entry.wSvid if entry.wSvid != 4095 else None, bool(entry.boUntaggedPep))

    @property
    def translations(self) -> list[Translation]:
        """By local VID. Empty unless the port is a provider or customer network port in switch mode 1."""
        found, entry = [], ffi.new("SwctVidTranslation *")
        for moid in self._walk(lib.Swct_VidTranslationMoidIterator, "SwctVidTranslationMoid"):
            lib.Swct_ReadVidTranslation(moid[0], entry)
            found.append(Translation(moid.wLocalVid, entry.wRelayVid, entry.dwStatus))
        return found

    @property
    def record(self) -> Any:
        """The whole record, a named tuple SwctSwitchPort."""
        return copied(self._entry())
