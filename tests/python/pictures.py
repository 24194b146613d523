"""Random configurations, and what a node should look like in Python: read from what 'piovios save' writes."""
import random
from typing import Any

import piovios

CLASSES = (176, 177, 205, 469, 514, 369, 206, 427, 437, 538, 769, 867)  # in the order of the exchange
NAMES = *map(str.encode, ("gästehaus", "", "α" * 40, "x" * 80, "line\nfeed", 'quo"te\\')), b"\xff\xfe raw", b"y" * 81


def put_random(node: piovios.Node, chance: random.Random) -> None:
    """Fills a new node."""
    ports = [(slot, port) for slot in (1, 2, 3) for port in (1, 2, 3, 4, 5)]
    types = {port: chance.choice((0, 1, 2, 3, 3)) for port in ports}
    vlans = sorted(chance.sample(range(1, 4096), chance.randrange(1, 60)))
    records: dict[int, list[Any]] = {number: [] for number in CLASSES}
    for port, kind in types.items():
        exists, filtering = int(chance.random() < 0.9), chance.choice((1, 2))
        records[177].append(((177, *port), (chance.choice(vlans), 1, filtering, exists, kind, b"", 1)))
        if kind == 3:
            svids = chance.sample([vid for vid in vlans if vid < 4095], min(len(vlans) - 1, chance.randrange(17)))
            for index, svid in zip(chance.sample(range(1, 17), len(svids)), svids):
                records[469].append(((469, *port, index), (svid, b"set")))
                for priority in range(1, 9):
                    records[427].append(((427, *port, index, priority), (priority, chance.randrange(1, 9))))
            for cvid in chance.sample(range(1, 4095), chance.choice((0, 3, 200)) if svids else 0):
                flags = chance.randrange(2), chance.randrange(2), chance.randrange(4096), chance.randrange(3)
                records[369].append(((369, *port, cvid), (cvid, chance.choice(svids), *flags, b"")))
            records[538].append(((538, *port), (chance.choice((*svids, 4095)), chance.randrange(2))))
        elif kind:
            for vid in chance.sample(range(1, 4095), chance.choice((0, 5, 100))):
                records[437].append(((437, *port, vid), (vid, chance.choice(vlans), b"", chance.randrange(5))))
    for vid in vlans:
        records[205].append(((205, vid), {"wVlanId": vid, "acName": chance.choice(NAMES), "dwStatus": 2,
                                          "dwRowState": 1, "dwVlanIf": chance.randrange(2)}))
        for port in chance.sample(ports, chance.randrange(16)):
            records[206].append(((206, vid, *port), (*port, 1, chance.choice((1, 2, 1, 2, 7)))))
    switch = node.get_config(176)[0]
    records[176] = [switch._replace(dwSwitchMode=chance.choice((1, 1, 1, 2)))]
    records[867] = [chance.randrange(2**32)]
    for number in CLASSES:
        node.set_config(number, records[number])


def picture(node: piovios.Node) -> dict[str, Any]:
    """Through the package."""
    last = [node.vlan(4095)] if piovios.lib.Swct_DoesVlanExist(4095) else []
    return {
        "vlans": {vlan.id: (vlan.name, vlan.has_interface, vlan.members) for vlan in [*node.vlans(), *last]},
        "ports": {port.name: (port.type, port.pvid, [pep[:2] + pep[3:] for pep in port.peps], port.registrations,
                              port.default_registration, port.translations) for port in node.ports()},
    }


def saved(document: Any) -> dict[str, Any]:
    """Through the command. Objects of provider bridging are walked in their mode only."""
    in_force = document["switch"]["mode"] == "provider-bridge"
    ports = {}
    for port in document["ports"]:
        default = port.get("defaultCVidRegistration") if port.get("ingressFiltering") == "default-cvid" else None
        if port.get("layer2Type", 1) != 0:
            ports[port["port"]] = (
                port["type"], port["pvid"],
                [_pep(pep) for pep in port.get("providerEdgePorts", ()) if in_force],
                sorted(found for group in port.get("cVidRegistrations", ()) if in_force for found in _group(group)),
                (None if default["sVid"] == "none" else default["sVid"], default.get("untaggedPep", False))
                if default and in_force else None,
                [(item["localVid"], item["relayVid"], item.get("status", 3))
                 for item in port.get("vidTranslations", ()) if in_force])
    return {"vlans": {vlan["id"]: (_name(vlan), bool(vlan.get("layer3Interface")), _members(vlan))
                      for vlan in document["vlans"]}, "ports": ports}


def _pep(pep: Any) -> tuple[Any, ...]:
    return pep["index"], pep["sVid"], pep.get("priorityRegeneration", list(range(1, 9)))


def _group(group: Any) -> list[tuple[Any, ...]]:
    relay = group.get("relayCVid", 0) if group.get("relay") is True else None
    rest = group["sVid"], group.get("untaggedCep", False), group.get("untaggedPep", False), relay
    ranges = [list(map(int, part.split("-"))) for part in str(group["cVids"]).split(",")]
    return [(cvid, *rest) for part in ranges for cvid in range(part[0], part[-1] + 1)]


def _name(vlan: Any) -> str:
    text: str = vlan["name"] if "name" in vlan else bytes.fromhex(vlan["nameBytes"]).decode("utf-8", "backslashreplace")
    return text


def _members(vlan: Any) -> dict[str, Any]:
    members = vlan.get("members", {})
    return {**{port: kind for kind in ("tagged", "untagged") for port in members.get(kind, ())},
            **members.get("other", {})}
