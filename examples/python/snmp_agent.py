#!/usr/bin/python3
"""snmp_agent.py - the VLANs of the node in SNMP: dot1qVlanStaticTable of the Q-BRIDGE-MIB, for snmpd's pass_persist.

    pass_persist .1.3.6.1.2.1.17.7.1.4.3.1 /usr/bin/python3 /usr/share/piovios/examples/python/snmp_agent.py

That line goes into snmpd.conf. The agent answers names, egress ports, untagged ports and row status; bridge port
(slot - 1) * 5 + port stands for slot/port. Nothing can be set. Where the region is missing, or was made anew, the agent
ends with a line on its standard error output, and snmpd starts it again with the next request.
"""
import sys
from typing import Optional

import piovios

BASE = (1, 3, 6, 1, 2, 1, 17, 7, 1, 4, 3, 1)
NAME, EGRESS, UNTAGGED, STATUS = COLUMNS = (1, 2, 4, 5)
ACTIVE = 1


def port_list(vlan: piovios.Vlan, only: Optional[str] = None) -> str:
    """A PortList: bridge port 1 is the highest bit of the first byte."""
    bits = 0
    for name, membership in vlan.members.items():
        slot, port = map(int, name.split("/"))
        if only in (None, membership):
            bits |= 1 << 16 - ((slot - 1) * 5 + port)
    return f"{bits >> 8:02X} {bits & 255:02X}"


def answer(node: piovios.Node, column: int, vid: int) -> Optional[tuple[str, str]]:
    """Type and value of one object; None: there is none."""
    try:
        vlan = node.vlan(vid)
        if column == NAME:
            return "string", vlan.name.encode()[:32].decode(errors="ignore").replace("\n", " ")  # no longer in the MIB
        if column in (EGRESS, UNTAGGED):
            return "octet", port_list(vlan, None if column == EGRESS else "untagged")
    except piovios.NotFound:
        return None
    return ("integer", str(ACTIVE)) if column == STATUS else None


def after(node: piovios.Node, oid: tuple[int, ...]) -> Optional[tuple[int, int]]:
    """Column and VLAN of the object behind an OID, of any length."""
    tail = oid[len(BASE):] if oid[:len(BASE)] == BASE else () if oid < BASE else (max(COLUMNS) + 1,)
    for column in COLUMNS:
        if tail[:1] <= (column,):
            last = tail[1] if len(tail) > 1 and tail[0] == column else 0
            for vlan in node.vlans(after=min(last, 4095)):
                return column, vlan.id
    return None


def reply(command: str, oid_text: str) -> list[str]:
    """The lines that answer a request."""
    node = piovios.open()  # the same region again, or the reason why not
    oid = tuple(int(part) for part in oid_text.strip(".").split("."))
    place = after(node, oid) if command == "getnext" else None
    if command == "get" and oid[:len(BASE)] == BASE and len(oid) == len(BASE) + 2:
        place = oid[-2], oid[-1]
    found = answer(node, *place) if place else None
    return [".".join(map(str, ("", *BASE, *place))), *found] if place and found else ["NONE"]


def main() -> int:
    """Serves snmpd until it closes the pipe."""
    for line in sys.stdin:
        command = line.strip()
        try:
            if command == "PING":
                lines = ["PONG"]
            elif command == "set":
                sys.stdin.readline(), sys.stdin.readline()
                lines = ["not-writable"]
            else:
                lines = reply(command, sys.stdin.readline().strip())
        except piovios.NotAttached as error:
            print(f"snmp_agent: {error}", file=sys.stderr)
            return 3
        print("\n".join(lines), flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
