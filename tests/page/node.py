"""A node of its own for each test: a region with another prefix, the command, and the exporter beside it."""

import http.client
import json
import os
import signal
import subprocess
import tempfile
from pathlib import Path
from typing import Any

PROGRAMS = Path(os.environ["PIOVIOS_PROGRAMS"])
EXAMPLES = Path(__file__).parents[2] / "examples"
PORTS = [f"{slot}/{port}" for slot in (1, 2, 3) for port in range(1, 6)]


def full_node(port: dict[str, object]) -> dict[str, object]:
    """4094 VLANs, each with all 15 ports; every port has the members of 'port', too."""
    members = {"tagged": PORTS[1:], "untagged": PORTS[:1]}
    vlans = [{"id": vlan, "name": f"customer service {vlan:04}", "members": members} for vlan in range(1, 4095)]
    ports = [dict(port, port=name) for name in PORTS]
    return {"schema": 1, "switch": {"name": "full node", "mode": "provider-bridge"}, "vlans": vlans, "ports": ports}


FULL = {
    "members": full_node({}),
    "translations": full_node({"type": "pnp", "vidTranslations": [
        {"localVid": vid, "relayVid": vid * 1237 % 4095 or 1} for vid in range(1, 4095)]}),
    "registrations": full_node({"type": "cep", "providerEdgePorts": [
        {"index": index, "sVid": 100 + index} for index in range(1, 17)], "cVidRegistrations": [
        {"cVids": ",".join(str(vid) for vid in range(1, 4095) if vid * 7 % 16 == index), "sVid": 101 + index}
        for index in range(16)]}),
}
# Text that would end a script, marks that turn the writing around, control bytes, no UTF-8.
HOSTILE = ["</script><script>alert(1)</script>", "<!--<script>", "\"'&amp;\\u003c", "${alert(1)}", "{{data}}{{script}}"]
HOSTILE_BYTES = ["1b5b324a07", "ff3c2f7363726970743e", "a\u202ecba".encode().hex(), "\u2066x\u2028y".encode().hex()]


def hostile_node() -> dict[str, object]:
    vlans: list[dict[str, object]] = [{"id": 10 + i, "name": name} for i, name in enumerate(HOSTILE)]
    vlans += [{"id": 50 + i, "nameBytes": name} for i, name in enumerate(HOSTILE_BYTES)]
    for vlan in vlans:
        vlan["members"] = {"tagged": ["1/1"], "other": {"1/2": 7}}
    return {"schema": 1, "switch": {"name": HOSTILE[0], "mode": "provider-bridge"}, "vlans": vlans, "ports": [
        {"port": "1/1", "type": "pnp"}, {"port": "1/2"},
        {"port": "1/3", "type": "cep", "pvid": 10, "providerEdgePorts": [{"index": 1, "sVid": 10}],
         "cVidRegistrations": [{"cVids": 7, "sVid": 10}]}]}


class Node:
    def __init__(self, name: str) -> None:
        os.environ["PIOVIOS_SHM_PREFIX"] = f"page-test-{os.getpid()}-{name}-"
        os.environ["PIOVIOS_NAMES"] = str(EXAMPLES / "demo.names.json")
        self.state = tempfile.TemporaryDirectory(prefix="page-test-state-")
        os.environ["STATE_DIRECTORY"] = self.state.name
        self.region = Path(f"/dev/shm/{os.environ['PIOVIOS_SHM_PREFIX']}swct-data")
        self.exporter: subprocess.Popen[str] | None = None
        self.port = 0

    def run(self, *words: str, ends: tuple[int, ...] = (0,), given: str = "") -> str:
        answer = subprocess.run([str(PROGRAMS / "piovios"), *words], input=given, capture_output=True, text=True)
        assert answer.returncode in ends, answer.stderr
        return answer.stdout

    def ask(self, *words: str) -> Any:
        return json.loads(self.run("--json", *words, ends=(0, 1)))

    def load(self, configuration: dict[str, object] | str) -> None:
        """An example by its name, or a configuration."""
        self.run("init", "--force")
        if isinstance(configuration, str):
            self.run("load", str(EXAMPLES / f"{configuration}.json"))
        elif configuration:
            self.run("load", "-", "--lenient", given=json.dumps(configuration))

    def serve(self, *words: str) -> None:
        self.exporter = subprocess.Popen([str(PROGRAMS / "piovios-exporter"), "--listen", "127.0.0.1:0", *words],
                                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        assert self.exporter.stdout
        self.port = int(self.exporter.stdout.readline().rstrip("/\n").rsplit(":", 1)[1])

    def get(self, path: str, method: str = "GET", **headers: str) -> tuple[int, str, http.client.HTTPMessage]:
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=20)
        connection.request(method, path, headers={name.replace("_", "-"): value for name, value in headers.items()})
        answer = connection.getresponse()
        text = answer.read().decode()
        connection.close()
        return answer.status, text, answer.headers

    def close(self) -> None:
        self.region.unlink(missing_ok=True)
        self.state.cleanup()
        if self.exporter:
            self.exporter.send_signal(signal.SIGTERM)
            output, _ = self.exporter.communicate(timeout=20)
            assert self.exporter.returncode == 0, output
