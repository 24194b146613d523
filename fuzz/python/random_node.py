"""Random configurations of a node, and anything as an argument."""
import random
from typing import Any, Callable

import piovios

ffi = piovios.ffi
CLASSES = (176, 177, 205, 469, 514, 369, 206, 427, 437, 538, 769, 867)  # in the order of the exchange
NAMES = *map(str.encode, ("gästehaus ", "", "α" * 40, "x" * 80, "line\nfeed", 'quo"te\\')), b"\xff\xfe raw", b"y" * 81


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


def value(chance: random.Random, depth: int = 0) -> Any:
    """Anything."""
    depth += 1
    kinds: tuple[Callable[[], Any], ...] = (
        lambda: chance.choice((-1, 0, 1, 100, 177, 205, 4094, 4095, 65535, 65536, 2**32, 2**70, -2**40)),
        lambda: chance.choice((None, True, 1.5, "", "1/3", "1/1/8", "15m", "\0", "x" * 300, ffi.NULL, float("nan"))),
        lambda: chance.randbytes(chance.choice((0, 1, 4, 16, 130, 134, 147, 500))),
        lambda: chance.choice(CLASSES),
        lambda: [value(chance, depth) for _ in range(chance.randrange(4))] if depth < 4 else (),
        lambda: tuple(value(chance, depth) for _ in range(chance.randrange(4))) if depth < 4 else (),
        lambda: {chance.choice(("sMoid", "sBody", "acName")): value(chance, depth)} if depth < 4 else {})
    return chance.choice(kinds)()


def fitting(chance: random.Random, kind: Any) -> Any:
    """An argument as a C program may give it: any number, any record, null or enough room; (owner, memory)."""
    if kind.kind == "primitive":
        bits = 8 * ffi.sizeof(kind)
        return chance.choice((0, 1, 2, 3, 5, chance.randrange(18), chance.randrange(4097), 2**31)) % 2**bits
    if kind.kind == "pointer" and chance.random() < 0.05:
        return ffi.NULL
    room = ffi.new("char[]", 8192 if kind.kind == "pointer" else ffi.sizeof(kind))
    ffi.buffer(room)[:] = (chance.randbytes(len(room) - 1) if chance.random() < 0.5 else bytes(len(room) - 1)) + b"\0"
    pointer = ffi.cast(kind if kind.kind == "pointer" else f"{kind.cname} *", room)
    return room, pointer if kind.kind == "pointer" else pointer[0]
