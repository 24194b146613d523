"""The exporter as its clients know it: what it answers to whom, a node that goes and comes back, hostile requests."""

import contextlib
import json
import os
import re
import shutil
import socket
import subprocess
import time
from pathlib import Path

import pytest
from hostile import siege
from jsonschema import Draft202012Validator
from node import EXAMPLES, FULL, PROGRAMS, Node

DOCS = EXAMPLES.parent / "docs"
PATHS = ["/", "/metrics", "/data.json", "/api/state", "/api/history?port=1/1", "/api/check"]

SLOWNESS = int(os.environ.get("PIOVIOS_SLOWNESS", "1"))  # of a build with sanitizers
SOON = 10  # seconds: changes are seen at once, the rest is for what else this machine does


def await_status(node: Node, path: str, status: int) -> str:
    end = time.monotonic() + SOON
    answer: tuple[object, ...] = ()
    while True:
        with contextlib.suppress(ConnectionError):  # of those whose question was under way when the region was cut off
            answer = node.get(path)
            if answer[0] == status:
                return str(answer[1])
        assert time.monotonic() < end, answer


@pytest.fixture
def metro(node: Node) -> Node:
    node.load("metro-access")
    node.serve("--host", "node.example.org")
    return node


def test_answers_are_those_of_the_command(metro: Node) -> None:
    metro.run("demo", "--collector")
    end = time.monotonic() + SOON
    while metro.get("/metrics")[1] != metro.run("metrics"):
        assert time.monotonic() < end
    assert metro.get("/api/state")[1] == metro.run("save")
    assert metro.get("/api/check")[1] == metro.run("--json", "check")
    for query, words in (("port=1/1", ["1/1"]), ("port=2/4&ring=24h", ["2/4", "--24h"]), ("port=1/1/8", ["1/1/8"])):
        assert json.loads(metro.get("/api/history?" + query)[1]) == metro.ask("history", *words)
    for name in ("configuration", "output"):
        assert metro.get(f"/api/{name}.schema.json")[1] == DOCS.joinpath(f"{name}.schema.json").read_text()
    if shutil.which("promtool"):
        checked = subprocess.run(["promtool", "check", "metrics"], input=metro.get("/metrics")[1], capture_output=True,
                                 text=True)
        assert (checked.returncode, checked.stdout + checked.stderr) == (0, "")


HEARD: list[tuple[str, str, dict[str, str], int]] = [
    ("HEAD", "/metrics", {}, 200), ("POST", "/", {}, 405), ("DELETE", "/metrics", {}, 405), ("OPTIONS", "/", {}, 405),
    ("GET", "/etc/passwd", {}, 404), ("GET", "/api/history", {}, 400), ("GET", "/api/history?port=9/9", {}, 400),
    ("GET", "/api/history?port=1/1&ring=1h", {}, 400), ("GET", "/", {"Host": "evil.example"}, 421),
    ("GET", "/", {"Host": "127.0.0.1.evil.example"}, 421), ("GET", "/", {"Host": "Node.Example.Org:443"}, 200),
    ("GET", "/", {"Host": "localhost"}, 200), ("GET", "/", {"Host": "127.9.0.1"}, 200),
    ("GET", "/", {"Host": "[::1]:19821"}, 200),
    ("GET", "/", {"X": "y" * 20000}, 431), ("POST", "/", {"Host": "evil.example"}, 421)]


def test_who_is_heard(metro: Node) -> None:
    for method, path, headers, status in HEARD:
        answer, text, told = metro.get(path, method, **headers)
        assert answer == status, (method, path, headers)
        assert status != 405 or told["Allow"] == "GET, HEAD"
        assert text or method == "HEAD"


def test_what_is_known_is_not_sent_again(metro: Node) -> None:
    for path in ("/data.json", "/api/state", "/api/check", "/api/history?port=1/1"):
        tag = metro.get(path)[2]["ETag"]
        assert metro.get(path, If_None_Match=tag)[:2] == (304, "")
    tag = metro.get("/data.json")[2]["ETag"]
    with open(metro.region, "r+b") as region:  # a counter of the history: the configuration stays as it is
        region.seek(155 + (9 + 0) * 97 * 74)
        region.write(b"\7\7")
    end = time.monotonic() + SOON
    while metro.get("/data.json", If_None_Match=tag)[0] != 200:
        assert time.monotonic() < end


def test_node_goes_and_comes_back(node: Node) -> None:
    node.serve()
    assert "\npiovios_up 0\n" in await_status(node, "/metrics", 503)
    assert node.exporter
    node.load("metro-access")
    for kind in ("removed", "anew", "cut"):
        await_status(node, "/api/state", 200)
        if kind == "cut":
            os.truncate(node.region, 1000)
        else:
            node.run("remove", "--force")
        if kind != "anew":
            for path in PATHS:
                await_status(node, path, 503)
            assert "piovios_up 0\n" in node.get("/metrics")[1]
            message = json.loads(node.get("/api/check")[1])
            Draft202012Validator(json.loads(DOCS.joinpath("output.schema.json").read_text())).validate(message)
        node.load("qinq-access")
        end = time.monotonic() + SOON
        while "qinq-access-4" not in node.get("/api/state")[1]:
            assert time.monotonic() < end, kind
        node.load("metro-access")


@pytest.mark.parametrize("words,reason", [
    (["--listen", "localhost"], "must be an IP address"), (["--listen", "127.0.0.1:99999"], "must end in a port"),
    (["--listen", "192.0.2.1"], "cannot listen on 192.0.2.1:19821"), (["--nonsense"], "see 'piovios-exporter --help'"),
    (["--host", "a", "b"], "see 'piovios-exporter --help'"), (["--host", ""], "must be a name"),
    (["--host", "a:80"], "must be a name"),
    (["--names", "/no/such/file"], "/no/such/file")])
def test_wrong_arguments(words: list[str], reason: str) -> None:
    ended = subprocess.run([str(PROGRAMS / "piovios-exporter"), *words], capture_output=True, text=True, timeout=20)
    assert ended.returncode != 0
    assert reason in ended.stderr and ended.stderr.count("\n") == 1


def test_hostile_requests(metro: Node) -> None:
    assert metro.exporter

    def memory() -> int:
        status = Path(f"/proc/{metro.exporter.pid}/status").read_text() if metro.exporter else ""
        return int(re.findall(r"VmRSS:\s+(\d+)", status)[0])

    siege(metro.port, 500)
    before = memory()
    statuses, times = siege(metro.port, 5000)
    assert set(statuses) == {200}
    assert times[len(times) // 2] < 0.05 * SLOWNESS
    assert memory() < before + 16384 * SLOWNESS


def sockets_of(process: int) -> int:
    count = 0
    for link in Path(f"/proc/{process}/fd").iterdir():
        with contextlib.suppress(FileNotFoundError):  # closed since its name was read
            count += os.readlink(link).startswith("socket")
    return count


def test_slow_readers_of_old_texts_are_few(node: Node) -> None:
    node.load(FULL["translations"])  # 4.4 MB; what slow readers of more than 64 MB hold is let go
    place = node.region.read_bytes().index(b"customer service 0001")
    node.serve()
    readers: list[socket.socket] = []
    assert node.exporter
    start = time.monotonic()
    for name in (f"reader {i:04}" for i in range(18)):
        with open(node.region, "r+b") as region:
            region.seek(place)
            region.write(name.encode())
        while name not in node.get("/api/state")[1]:
            pass
        readers.append(socket.socket())
        readers[-1].setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 2048)
        readers[-1].connect(("127.0.0.1", node.port))
        readers[-1].send(b"GET /api/state HTTP/1.1\r\nHost: localhost\r\n\r\n")
    await_status(node, "/api/check", 200)
    end = max(start + 18, time.monotonic() + 4)  # after 20 seconds any reader is cut off
    while (served := sockets_of(node.exporter.pid)) >= 18:
        assert time.monotonic() < end
    assert served > 3
    for reader in readers:
        reader.close()
