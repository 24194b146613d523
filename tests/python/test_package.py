"""The package against the interface's baseline, the command, and wrong use."""
import os
import random
import re
import subprocess
import sys
import xml.etree.ElementTree
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Any, Callable

import numpy
import piovios
import pytest
from piovios._node import _name
from pictures import command, picture, saved
from random_node import CLASSES, put_random

ROOT = Path(__file__).parents[2]
ROUNDS = int(os.environ.get("PIOVIOS_TEST_ROUNDS", "40"))
ffi, lib = piovios.ffi, piovios.lib


def test_interface_is_the_baselines(node: piovios.Node) -> None:
    baseline = xml.etree.ElementTree.parse(ROOT / "docs/reference/piovios.abi")
    names = [symbol.attrib["name"] for symbol in baseline.iter("elf-symbol")]
    assert len(names) > 300 and [name for name in names if not hasattr(lib, name)] == []
    for tag, least in (("class-decl", 20), ("union-decl", 1)):
        records = {record.attrib["name"]: record for record in baseline.iter(tag) if "size-in-bits" in record.attrib}
        assert len(records) >= least
        for name, record in records.items():
            assert ffi.sizeof(name) * 8 == int(record.attrib["size-in-bits"]), name
            fields = {member[0].attrib["name"]: int(member.attrib.get("layout-offset-in-bits", 0)) // 8
                      for member in record.findall("data-member")}
            assert {field: kind.offset for field, kind in ffi.typeof(name).fields} == fields, name
    assert command("layout", "--json")["size"] == len(node.region.buffer)


def test_packed_records_go_by_value(node: piovios.Node) -> None:
    node.set_config(177, [((177, 1, 3), (1, 1, 1, 1, 3, b"", 1))])
    node.set_config(469, [((469, 1, 3, 16), (100, b""))])
    moid, entry = (427, 1, 3, 16, 8), ffi.new("SwctServicePriorityRegeneration *", (8, 3))
    assert lib.Swct_DoesServicePriorityRegenerationExist(moid) and not lib.Swct_DoesServicePriorityRegenerationExist(
        (427, 1, 3, 16, 9))
    for operation, expected in (("Create", 3), ("Delete", 1), ("Write", 3)):
        arguments = [moid] if operation == "Delete" else [ffi.new("SwctServicePriorityRegenerationMoid *", moid)[0],
                                                          ffi.new("SwctServicePriorityRegeneration *", (8, 3))]
        getattr(lib, f"Swct_{operation}ServicePriorityRegeneration")(*arguments)
        lib.Swct_ReadServicePriorityRegeneration(moid, entry)
        assert (entry.dwPriority, entry.dwRegeneratedPriority) == (8, expected), operation


def test_random_configurations_are_as_saved(node: piovios.Node) -> None:
    for seed in range(ROUNDS):
        with piovios.open(create=True) as new:
            put_random(new, random.Random(seed))
            document = command("save")
            assert picture(new) == saved(document), seed
            for handle in new.ports():
                default = handle.default_registration
                own = [item.svid for item in handle.registrations]
                rest = 4094 - len(own) if default else 0
                for pep in handle.peps:
                    expected = own.count(pep.svid) + rest * (default is not None and default.svid == pep.svid)
                    assert pep.cvids == expected, (seed, handle, pep)
            content = [(number, new.get_config(number, raw=seed % 2 == 0)) for number in CLASSES]
        with piovios.open(create=True) as again:
            for number, records in content:
                again.set_config(number, records)
            document["ports"] = [port for port in document["ports"] if port.get("layer2Type", 1)]
            for port in document["ports"]:  # the exchange tells no others, and no default that is not in force
                if port.get("ingressFiltering") != "default-cvid":
                    port.pop("defaultCVidRegistration", None)
            assert command("save") == document, seed


def test_history_is_as_shown(node: piovios.Node) -> None:
    chance = random.Random(1)
    for ring, length in (("15m", 97), ("24h", 2)):
        write = getattr(lib, f"Swct_WriteQueueStatisticsHistorical{ring}")
        table = numpy.asarray(node.history(ring))
        for slot, port, queue in ((s, p, q) for s in (1, 2) for p in range(1, 6) for q in range(1, 9)):
            current = chance.randrange(length)
            for index in range(length):
                counters = [(chance.randrange(2**32), chance.randrange(2**32)) for _ in range(8)]
                stamp = chance.choice(((0, 0), (0, 7), (chance.randrange(2**32), 1)))
                record = counters, stamp, int(index == current), chance.randrange(2)
                write(slot, port, queue, index, ffi.new("SwctQueueStatisticsHistorical *", record))
                seen = table[slot - 1, port - 1, queue, index]
                assert (list(seen["counters"]), tuple(seen["stamp"]), seen["is_current"], seen["suspect"]) == (
                    [high << 32 | low for low, high in counters], *record[1:])
            name = f"{slot}/{port}/{queue}"
            shown = command("history", name, "--json", *(["--24h"] if ring == "24h" else []))["queues"][0]
            assert node.periods(name, ring) == [
                (-item["period"], item["counters"], item["stamp"], item["suspect"])
                for item in shown["periods"] if not item["missing"]]
        assert table.shape == (2, 5, 9, length) and not table.flags.owndata and not table.flags.writeable
        assert table.tobytes() == node.history(ring).buffer.tobytes()
        assert table.tobytes() in node.region.buffer.tobytes()
    lib.Swct_ClearQueueStatisticsHistorical15m(1, 1, 8)
    assert node.periods("1/1/8") == [] and not numpy.asarray(node.history())[0, 0, 8].tobytes().strip(b"\0")


def removed(thing: Any) -> Any:
    lib.Swct_DeleteVlan(1)
    lib.Swct_DeleteSwitchPort(1, 1)
    return thing


def closed(node: piovios.Node) -> piovios.Node:
    node.close()
    return node


def elsewhere(use: Callable[[], Any]) -> Any:
    return ThreadPoolExecutor(1).submit(use).result()


WRONG: dict[str, tuple[type[Exception], Callable[[piovios.Node], Any]]] = {
    "no VLAN": (piovios.NotFound, lambda node: node.vlan(999)),
    "VLAN 0": (piovios.NotFound, lambda node: node.vlan(0)),
    "VLAN 65636, which is 100 in 16 bits": (piovios.NotFound, lambda node: node.vlan(65636)),
    "VLAN as text": (TypeError, lambda node: node.vlan("1")),  # type: ignore[arg-type]
    "a VLAN that has gone": (piovios.NotFound, lambda node: removed(node.vlan(1)).members),
    "a port that has gone": (piovios.NotFound, lambda node: removed(node.port("1/1")).pvid),
    "a port that does not exist": (piovios.NotFound, lambda node: node.port("3/5")),
    "a port out of range": (piovios.NotFound, lambda node: node.port("4/1")),
    "a queue out of range": (piovios.NotFound, lambda node: node.periods("3/1/1")),
    "a null pointer": (AttributeError, lambda node: lib.Swct_GetVlanInfo(9999).wVlanId),
    "another ring": (ValueError, lambda node: node.history("1h")),
    "another class": (ValueError, lambda node: node.get_config(178)),
    "a record of another class": (ValueError, lambda node: node.set_config(205, [((206, 1), ())])),
    "an end in the middle": (ValueError, lambda node: node.set_config(205, [((0, 0), ()), ((205, 1), ())])),
    "a number too large": (ValueError, lambda node: node.set_config(205, [((205, 65536), ())])),
    "a name too long": (ValueError, lambda node: node.set_config(205, [((205, 1), {"acName": b"n" * 82})])),
    "an unknown field": (ValueError, lambda node: node.set_config(205, [((205, 1), {"acTitle": b"n"})])),
    "two switches": (ValueError, lambda node: node.set_config(176, node.get_config(176) * 2)),
    "half a record": (ValueError, lambda node: node.set_config(205, node.get_config(205, raw=True)[:-5])),
    "a long switch": (ValueError, lambda node: node.set_config(176, bytes(148))),
    "bytes behind the end": (ValueError, lambda node: node.set_config(205, node.get_config(205, raw=True)[:-1] + b"1")),
    "writing while reading": (piovios.WrongUse, lambda node: piovios.open().set_config(867, [1])),
    "another region": (piovios.WrongUse, lambda node: piovios.open(prefix="other-")),
    "a bad prefix": (piovios.NotAttached, lambda node: piovios.open(prefix="a/b")),
    "another platform": (piovios.WrongUse, lambda node: piovios.open(platform="libother.so")),
    "a closed node": (piovios.WrongUse, lambda node: closed(node).vlan(1)),
    "opening in another thread": (piovios.WrongUse, lambda node: elsewhere(piovios.open)),
    "asking in another thread": (piovios.WrongUse, lambda node: elsewhere(lambda: node.vlan(1))),
    "walking in another thread": (piovios.WrongUse, lambda node: elsewhere(lambda: list(node.vlans()))),
    "a store into a table": (TypeError, lambda node: node.region.buffer.__setitem__(0, 1)),
}


@pytest.mark.parametrize("case", WRONG)
def test_wrong_use_raises(node: piovios.Node, case: str) -> None:
    node.set_config(177, [((177, 1, 1), {"dwL2PortType": 1})])
    node.set_config(205, [((205, 1), (1,)), ((205, 100), (100,))])
    before = node.region.buffer.tobytes()
    error, use = WRONG[case]
    name = _name()
    with pytest.raises(error):
        use(node)
    assert _name() == name and piovios.open().region.buffer.tobytes() == before or "that has gone" in case


def run_alone(code: str, **environment: str) -> str:
    """The last line of a program of its own."""
    done = subprocess.run([sys.executable, "-c", f"import piovios, os\n{code}"], env={**os.environ, **environment},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return done.stdout.strip().splitlines()[-1]


def test_attaching_fails_with_its_reason(region: str) -> None:
    none = f"{region}none-"
    for code, expected in (
        ("piovios.lib.Swct_Open()", "nothing is loaded yet"),
        (f"piovios.open(prefix='{none}')", f"/{none}swct-data: it does not exist"),
        ("piovios.open(platform='libnone.so.7')", "libnone.so.7: cannot open shared object file"),
        ("piovios.open(platform='libm.so.6')", "undefined symbol"),
        (f"open('/dev/shm/{none}swct-data', 'w').close()\ntry: piovios.open(prefix='{none}')\n"
         f"finally: os.unlink('/dev/shm/{none}swct-data')", "it has another size"),
        (f"piovios.open(prefix='{none}', create=True)\nos.unlink('/dev/shm/{none}swct-data')\npiovios.open()",
         "was removed or made anew"),
    ):
        assert expected in run_alone(code), code
    retry = f"try: piovios.open(prefix='{none}')\nexcept piovios.NotAttached: pass\n"
    assert run_alone(retry + "from concurrent.futures import ThreadPoolExecutor as Elsewhere\n"
                     "Elsewhere(1).submit(lambda: print(piovios.open(create=True).switch.dwAgeingTime)).result()\n"
                     "piovios.platform.Standin__RemoveShm(b'/swct-data')", PIOVIOS_SHM_PREFIX=none) == "300"


@pytest.mark.configuration(str(ROOT / "examples/metro-access.json"))
@pytest.mark.parametrize("document, rest, expected", (
    ("README.md", "print(node.port('1/3').peps[0])", "Pep(pep_index=1, svid=1100, cvids=4081,"),
    ("docs/python.md", "print(piovios.open().vlan(401).name, drops.shape, record.acName[0])",
     "guests (2, 5, 8, 97) b'r'"),
))
def test_documented_programs_run(node: piovios.Node, document: str, rest: str, expected: str) -> None:
    programs = re.findall(r"```python\n(.*?)```", (ROOT / document).read_text(), flags=re.S)
    assert run_alone("".join(programs) + rest).startswith(expected)
