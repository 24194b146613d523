"""A node through the package, and through the command."""
import json
import subprocess
from typing import Any

import piovios


def command(*arguments: str) -> Any:
    """What piovios prints as JSON."""
    return json.loads(subprocess.run(["piovios", *arguments], check=True, stdout=subprocess.PIPE).stdout)


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
