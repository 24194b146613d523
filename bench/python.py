#!/usr/bin/python3
"""What the Python package costs, on a region of its own: import, questions, all names, a day of history.

    PYTHONPATH=build/release/python LD_LIBRARY_PATH=build/release/data/swch:build/release/platform bench/python.py

Each figure is the best of many short rounds: what else the machine does only adds.
"""
import os
import re
import subprocess
import sys
import time
from typing import Any, Callable

import numpy
import piovios


def best(work: Callable[[], Any], calls: int = 1) -> float:
    """Seconds of one call."""
    rounds = []
    for _ in range(60):
        start = time.perf_counter()
        for _ in range(calls):
            work()
        rounds.append((time.perf_counter() - start) / calls)
    return min(rounds)


def import_time() -> float:
    """Seconds that a new interpreter spends on the package and what it needs of the standard library."""
    def once() -> float:
        command = [sys.executable, "-X", "importtime", "-c", "import piovios"]
        lines = subprocess.run(command, stderr=subprocess.PIPE, text=True, check=True).stderr
        return int(re.findall(r"\|\s*(\d+) \| piovios$", lines, flags=re.M)[0]) / 1e6
    return min(once() for _ in range(15))


def main() -> None:
    """Prints a line for each work."""
    node = piovios.open(create=True, prefix=f"bench-python-{os.getpid()}-")
    try:
        node.set_config(205, [((205, vid), (vid, 0, 2, b"vlan of customer %d" % vid)) for vid in range(1, 4095)])
        member, vlan = piovios.lib.Swct_IsPortMemberOfVlanId, node.vlan(100)
        assert len([vlan.name for vlan in node.vlans()]) == 4094
        for name, seconds in (
            ("import piovios", import_time()),
            ("a port is a member of a VLAN, lib", best(lambda: member(1, 1, 100), 2000)),
            ("a pointer to a VLAN record, lib", best(lambda: piovios.lib.Swct_GetVlanInfo(100), 2000)),
            ("the name of a VLAN, node", best(lambda: vlan.name, 500)),
            ("the names of 4094 VLANs, node", best(lambda: [vlan.name for vlan in node.vlans()])),
            ("the records of 4094 VLANs, node", best(lambda: node.get_config(205))),
            ("a day of all rings as an array", best(lambda: numpy.asarray(node.history("15m")), 50)),
            ("the sum of a counter over them", best(lambda: numpy.asarray(node.history())["counters"][..., 2].sum())),
        ):
            print(f"{name:40} {seconds * 1e6:10.2f} us")
    finally:
        piovios.platform.Standin__RemoveShm(b"/swct-data")


if __name__ == "__main__":
    main()
