"""The examples do what they say: an SNMP manager sees the VLANs, a day of drops is drawn."""
import os
import re
import socket
import subprocess
import sys
from pathlib import Path
from typing import Iterator

import piovios
import pytest
from pictures import command

ROOT = Path(__file__).parents[2]
EXAMPLES = ROOT / "examples/python"
TABLE = ".1.3.6.1.2.1.17.7.1.4.3.1"
metro = pytest.mark.configuration(str(ROOT / "examples/metro-access.json"))


@pytest.fixture
def snmpd(tmp_path: Path) -> Iterator[str]:
    """The address of Debian's daemon with the agent."""
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as free:
        free.bind(("127.0.0.1", 0))
        address = f"127.0.0.1:{free.getsockname()[1]}"
    settings = tmp_path / "snmpd.conf"
    settings.write_text(f"rwcommunity public 127.0.0.1\n"
                        f"pass_persist {TABLE} {sys.executable} {EXAMPLES / 'snmp_agent.py'}\n")
    daemon = subprocess.Popen(["/usr/sbin/snmpd", "-f", "-Lf", str(tmp_path / "log"), "-C", "-c", str(settings),
                               f"udp:{address}"], env={**os.environ, "SNMP_PERSISTENT_DIR": str(tmp_path), "MIBS": ""})
    try:
        yield address
    finally:
        daemon.terminate()
        daemon.wait()


def ask(program: str, address: str, *arguments: str) -> str:
    """What an SNMP command prints; it waits until the daemon is there."""
    done = subprocess.run([program, "-v2c", "-cpublic", "-r20", "-t1", "-On", "-Ox", "-OQ", address, *arguments],
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, env={**os.environ, "MIBS": ""})
    return done.stdout


@metro
def test_snmp_shows_the_vlans(node: piovios.Node, snmpd: str) -> None:
    seen: dict[tuple[int, int], str] = {}
    for column, vid, text in re.findall(rf'{TABLE}\.(\d+)\.(\d+) = ("[^"]*"|\d+)', ask("snmpbulkwalk", snmpd, TABLE)):
        seen[int(column), int(vid)] = " ".join(text.strip('"').split())

    def ports(*lists: list[str]) -> str:
        bits = sum(1 << 16 - ((int(port[0]) - 1) * 5 + int(port[2])) for ports in lists for port in ports)
        return f"{bits >> 8:02X} {bits & 255:02X}"
    expected = {}
    for vlan in command("show", "vlans", "--json")["vlans"]:
        name = vlan["name"].encode().hex(" ").upper()
        tagged, untagged = (vlan.get("members", {}).get(kind, []) for kind in ("tagged", "untagged"))
        values = {1: name, 2: ports(tagged, untagged), 4: ports(untagged), 5: "1"}
        expected.update({(column, vlan["id"]): text for column, text in values.items()})
    assert len(expected) == 84 and seen == expected
    assert "No Such Instance" in ask("snmpget", snmpd, f"{TABLE}.1.999")
    assert "notWritable" in ask("snmpset", snmpd, f"{TABLE}.1.100", "s", "x")


@pytest.mark.parametrize("has_matplotlib", (True, False))
def test_a_day_of_drops_is_drawn(node: piovios.Node, tmp_path: Path, has_matplotlib: bool) -> None:
    for age in range(97):
        record = ([(0, 0), (0, 0), (age, 0)], (1, 1), int(age == 0), 0)
        piovios.lib.Swct_WriteQueueStatisticsHistorical15m(
            2, 5, 8, 96 - age, piovios.ffi.new("SwctQueueStatisticsHistorical *", record))
    module = "def subplots(**_): raise SystemExit('drawn')" if has_matplotlib else "raise ImportError"
    (tmp_path / "matplotlib").mkdir()
    (tmp_path / "matplotlib/__init__.py").write_text("")
    (tmp_path / "matplotlib/pyplot.py").write_text(module)
    path = f"{tmp_path}:{os.environ['PYTHONPATH']}"
    done = subprocess.run([sys.executable, EXAMPLES / "plot_drops.py"], cwd=tmp_path, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, env={**os.environ, "PYTHONPATH": path})
    last = done.stdout.splitlines()[-1]
    assert last == "drawn" if has_matplotlib else re.fullmatch(r"2/5/8 █+▇+.*▁+ 4656", last)
