"""Any arguments: the interpreter lives, and what is raised is what the package says."""
import os
import random
from typing import Any, Callable

import piovios
from pictures import CLASSES, put_random

ROUNDS = int(os.environ.get("PIOVIOS_TEST_ROUNDS", "40")) * 2500
ffi, lib = piovios.ffi, piovios.lib
# Requests and replies have no length of their own: Node.set_config and get_config see to that. And the attachments.
LEFT_OUT = "Swct_SetConfig", "Swct_GetConfig", "Swct_Open", "Swct_CdbmOpen", "Swct_Init"


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
    """An argument as a C program may give it: any number, any record, null or enough room."""
    if kind.kind == "primitive":
        bits = 8 * ffi.sizeof(kind)
        return chance.choice((0, 1, 2, 3, 5, chance.randrange(18), chance.randrange(4097), 2**31)) % 2**bits
    if kind.kind == "pointer" and chance.random() < 0.05:
        return ffi.NULL
    room = ffi.new("char[]", 8192 if kind.kind == "pointer" else ffi.sizeof(kind))
    ffi.buffer(room)[:] = (chance.randbytes(len(room) - 1) if chance.random() < 0.5 else bytes(len(room) - 1)) + b"\0"
    pointer = ffi.cast(kind if kind.kind == "pointer" else f"{kind.cname} *", room)
    return (room, pointer) if kind.kind == "pointer" else (pointer, pointer[0])


def test_any_use_of_the_layer(node: piovios.Node) -> None:
    chance = random.Random(2)
    put_random(node, chance)
    names = "vlan", "port", "history", "periods", "get_config", "set_config", "vlans"
    uses: list[Any] = [getattr(node, name) for name in names]
    uses += [piovios.record, lambda prefix: piovios.open(prefix=prefix)]
    for _ in range(ROUNDS):
        use = chance.choice(uses)
        arguments = [value(chance) for _ in range(2 if use.__name__ == "set_config" else 1)]
        try:
            result = use(*arguments)
            for name in (name for name in dir(result) if use.__name__ in ("vlan", "port") and name[0] != "_"):
                getattr(result, name)
            list(result if use.__name__ == "vlans" else ())
        except (piovios.Error, TypeError, ValueError, OverflowError):
            pass
    piovios.platform.Standin__SetErrorTracing(1)


def test_any_operation_with_any_arguments(node: piovios.Node) -> None:
    chance = random.Random(3)
    put_random(node, chance)
    piovios.platform.Standin__SetErrorTracing(0)
    names = [name for name in dir(lib) if name.startswith("Swct_") and name not in LEFT_OUT]
    assert len(names) > 290
    for _ in range(ROUNDS):
        operation = getattr(lib._raw, name := chance.choice(names))  # type: ignore[attr-defined]
        made = [fitting(chance, kind) for kind in ffi.typeof(operation).args]
        result = getattr(lib, name)(*(item[1] if isinstance(item, tuple) else item for item in made))
        if isinstance(result, ffi.CData):
            bytes(ffi.buffer(result))
        if chance.random() < 0.001:
            [port.peps for port in node.ports()]
    piovios.platform.Standin__SetErrorTracing(1)
