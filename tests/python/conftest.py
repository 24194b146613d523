"""The node of each test is the one of the example."""
import json
import subprocess
from typing import Any

pytest_plugins = ["node_fixture"]


def command(*arguments: str) -> Any:
    """What piovios prints as JSON."""
    return json.loads(subprocess.run(["piovios", *arguments], check=True, stdout=subprocess.PIPE).stdout)
