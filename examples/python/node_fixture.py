"""For pytest: a node of its own for each test, beside the node's live region.

    pytest_plugins = ["node_fixture"]               # in conftest.py

    @pytest.mark.configuration("node.json")         # left out: a new node, with its defaults
    def test_uplink(node):
        assert node.vlan(100).members["1/1"] == "tagged"

A process keeps one region for its life, so the tests of a run share one object and each finds it as made anew. Commands
that a test starts find it too: the prefix is in the environment.
"""
import os
import subprocess
from typing import Iterator

import piovios
import pytest

PREFIX = f"test-{os.getpid()}-"


def pytest_configure(config: pytest.Config) -> None:
    """Makes the mark known."""
    config.addinivalue_line("markers", "configuration(file): what piovios load puts into the node of the test")


@pytest.fixture(scope="session")
def region() -> Iterator[str]:
    """The prefix of the run's region, which is removed at its end."""
    os.environ["PIOVIOS_SHM_PREFIX"] = PREFIX
    yield PREFIX
    piovios.load()
    piovios.platform.Standin__RemoveShm(b"/swct-data")


@pytest.fixture
def node(request: pytest.FixtureRequest, region: str) -> Iterator[piovios.Node]:
    """A node that may be written, new or with the configuration of the test's mark."""
    with piovios.open(create=True, prefix=region) as made:
        mark = request.node.get_closest_marker("configuration")
        if mark:
            subprocess.run(["piovios", "load", "--no-checkpoint", *mark.args], check=True, stdout=subprocess.DEVNULL)
        yield made
