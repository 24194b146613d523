"""Any arguments: the interpreter lives, and what is raised is what the package says."""
import os
import random
from typing import Any

import piovios
from random_node import fitting, put_random, value

ROUNDS = int(os.environ.get("PIOVIOS_TEST_ROUNDS", "40")) * 2500
ffi, lib = piovios.ffi, piovios.lib
# Requests and replies have no length of their own: Node.set_config and get_config see to that. And the attachments.
LEFT_OUT = "Swct_SetConfig", "Swct_GetConfig", "Swct_Open", "Swct_CdbmOpen", "Swct_Init"


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
