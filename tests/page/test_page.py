"""The page in a browser: what it draws is what the command tells, whatever the region holds."""

import time
from pathlib import Path
from typing import Any

import pytest
from browser import Browser
from node import EXAMPLES, FULL, HOSTILE, HOSTILE_BYTES, Node, hostile_node

# Port by port, how many squares of each kind its column has.
SQUARES = """(() => {
  const count = {};
  for (const table of document.querySelectorAll('.block table')) {
    const ports = [...table.tHead.rows[0].cells].map((cell) => cell.textContent);
    for (const row of table.tBodies[0].rows) {
      [...row.cells].forEach((cell, i) => {
        if (cell.className) {
          const of = count[ports[i]] = count[ports[i]] || {t: 0, u: 0, o: 0};
          ++of[cell.className];
        }
      });
    }
  }
  return count;
})()"""
BARS = """Object.fromEntries([...document.querySelectorAll('svg[data-queue]')].map((svg) =>
  [svg.dataset.ring + ' ' + svg.dataset.queue,
   ['rect.bar', '.missing', '.suspect', '.drop'].map((kind) => svg.querySelectorAll(kind).length)]))"""
CARDS = """Object.fromEntries([...document.querySelectorAll('[data-card]')].map((card) =>
  [card.dataset.card, card.lastChild.textContent]))"""
TOO_SLOW = 2000  # milliseconds


def report(node: Node, browser: Browser, tmp_path: Path) -> Path:
    file = tmp_path / "node.html"
    node.run("report", str(file))
    browser.faults.clear()
    browser.requests.clear()
    browser.open(file)
    assert browser.requests == [file.as_uri()]
    assert browser.faults == []
    return file


def squares_of(node: Node) -> dict[str, dict[str, int]]:
    count: dict[str, dict[str, int]] = {}
    for vlan in node.ask("show", "vlans")["vlans"]:
        members = vlan.get("members", {})
        for letter, kind in (("t", "tagged"), ("u", "untagged"), ("o", "other")):
            for port in members.get(kind, []):
                count.setdefault(port, {"t": 0, "u": 0, "o": 0})[letter] += 1
    return count


NODES: dict[str, Any] = {"metro": "metro-access", "qinq": "qinq-access", "empty": {}, "hostile": hostile_node(), **FULL}


@pytest.mark.parametrize("name", NODES)
def test_squares(name: str, node: Node, browser: Browser, tmp_path: Path) -> None:
    node.load(NODES[name])
    file = report(node, browser, tmp_path)
    assert browser.ask(SQUARES) == squares_of(node)
    counts = node.ask("status")["counts"] if name != "hostile" else {}
    cards = {title: int(text.replace(",", "")) for title, text in browser.ask(CARDS).items()}
    for title, count in (("ports", "ports"), ("VLANs", "vlans"), ("VLAN members", "vlanMembers"),
                         ("VID translations", "vidTranslations"), ("C-VID registrations", "cVidRegistrations"),
                         ("provider edge ports", "providerEdgePorts")):
        assert cards[title] == counts.get(count, cards[title])
    assert int(browser.ask("document.body.dataset.drawn")) < TOO_SLOW
    assert file.stat().st_size < 1_000_000


def test_hostile_names_stay_text(node: Node, browser: Browser, tmp_path: Path) -> None:
    node.load(hostile_node())
    text = report(node, browser, tmp_path).read_text()
    assert text.count("<script") == 2 and text.count("</script") == 2
    names = browser.ask("[...document.querySelectorAll('.block tbody bdi')].map((name) => name.textContent)")
    told = [line[6:].split("  ")[0] for line in node.run("show", "vlans").splitlines()[1:]]
    assert names == told
    assert len(names) == len(HOSTILE) + len(HOSTILE_BYTES)
    assert not set("\u202e\u2066\u2028\x1b") & set("".join(names))
    assert browser.ask("document.querySelectorAll('script').length") == 2
    assert HOSTILE[0] in browser.ask("document.title")
    # What a foreign script could do: nothing, the policy stops it.
    browser.ask("document.body.append(Object.assign(document.createElement('p'), {id: 'p'}))")
    assert browser.ask("try { p.innerHTML = '<i>'; 'set' } catch (error) { error.name }") == "TypeError"


def test_bars(node: Node, browser: Browser, tmp_path: Path) -> None:
    node.load("metro-access")
    node.run("demo", "--collector")
    gap = 155 + ((1 * 5 + 3) * 9 + 2) * 97 * 74 + 40 * 74  # a record in the middle of a ring: port 2/4, queue 2
    with open(node.region, "r+b") as region:
        region.seek(gap)
        region.write(bytes(74))
    report(node, browser, tmp_path)
    bars = browser.ask(BARS)
    wanted = {}
    for ring in ("15m", "24h"):
        for port in (f"{slot}/{port}" for slot in (1, 2) for port in range(1, 6)):
            for queue in node.ask("history", port, *(["--24h"] if ring == "24h" else []))["queues"]:
                periods = queue["periods"]
                wanted[f"{ring} {queue['queue']}"] = [
                    len(periods), sum(p["missing"] for p in periods), sum(p["suspect"] is True for p in periods),
                    sum((p["counters"] or [0] * 8)[2] > 0 for p in periods)]
    assert bars == wanted
    assert sum(count[1] for count in bars.values()) == 1
    assert sum(count[3] for count in bars.values()) > 1000


def test_edge_pictures(node: Node, browser: Browser, tmp_path: Path) -> None:
    node.load("metro-access")
    report(node, browser, tmp_path)
    lines = browser.ask("[...document.querySelectorAll('svg[data-port=\"1/3\"] title')].map((one) => one.textContent)")
    assert "PEP 2, priority 2\u21921 4\u21923 7\u21926 8\u21926" in lines
    assert "201-203 (3 C-VIDs), relayed as 3201" in lines and "all other C-VIDs, default" in lines
    assert "1/1 pnp VID 2100, translated, 3/1 pnp VID 1100" in lines
    assert browser.ask("document.querySelectorAll('svg[data-port]').length") == 2
    # The same for those who do not look: a table, opened with the keyboard.
    browser.ask("document.querySelector('#edge details summary').focus()")
    for kind in ("keyDown", "keyUp"):
        browser.call("Input.dispatchKeyEvent", type=kind, key="Enter", text="\r", windowsVirtualKeyCode=13)
    browser.await_true("document.querySelectorAll('#edge details[open] tbody tr').length === 3", 5)


@pytest.mark.parametrize("vlan,port,kind,shown", [
    ("", "", "", 21), ("campus", "", "", 6), ("100-330", "", "", 7), ("20,1310", "", "", 2), ("", "2", "", 3),
    ("", "2", "u", 1), ("", "", "u", 9), ("no such", "", "", 0)])
def test_filter(vlan: str, port: str, kind: str, shown: int, node: Node, browser: Browser, tmp_path: Path) -> None:
    node.load("metro-access")
    report(node, browser, tmp_path)
    for element, value in (("vlan", vlan), ("port", port), ("kind", kind)):
        browser.ask(f"(e => {{ e.value = {value!r}; e.dispatchEvent(new Event('input')); }})"
                    f"(document.getElementById('filter-{element}'))")
    assert browser.ask("document.querySelectorAll('.block tbody tr').length") == shown


def test_findings(node: Node, browser: Browser, tmp_path: Path) -> None:
    node.load("metro-access")
    with open(node.region, "r+b") as region:
        region.seek(659504 + 99 * 222)
        region.write(b"\7")
    report(node, browser, tmp_path)
    assert "vlan 100" in browser.ask("document.querySelector('#findings-body tbody').textContent")
    assert browser.ask(CARDS)["audit findings"] == "1"


def test_open_page_follows(node: Node, browser: Browser) -> None:
    node.load("metro-access")
    node.serve()
    browser.faults.clear()
    browser.requests.clear()
    browser.open(f"http://127.0.0.1:{node.port}/")
    browser.await_true("document.querySelectorAll('.block tbody tr').length === 21", 5)
    planned = EXAMPLES.joinpath("metro-access.json").read_text().replace("public library", "town library")
    node.run("load", "-", given=planned)
    browser.await_true("document.querySelector('.block').textContent.includes('town library')", 2)
    node.run("remove", "--force")
    browser.await_true("document.body.dataset.state === 'warning'", 2)
    assert browser.ask("document.querySelectorAll('.block tbody tr').length") == 21  # what it held is still there
    browser.faults.clear()  # the browser itself tells of each answer 503
    start = time.monotonic()
    node.load("qinq-access")
    browser.await_true("document.title.startsWith('qinq-access-4')", 2 + start - time.monotonic() + 1)
    assert browser.ask("document.body.dataset.state") == "good"
    assert browser.faults == []
    asked = {address.split("/", 3)[3] for address in browser.requests if not address.startswith("data:")}
    assert asked == {"", "data.json"}
