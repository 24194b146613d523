from collections.abc import Iterator

import pytest
from browser import Browser
from node import Node


@pytest.fixture(scope="session")
def browser() -> Iterator[Browser]:
    with Browser() as one:
        yield one


@pytest.fixture
def node(request: pytest.FixtureRequest) -> Iterator[Node]:
    one = Node(str(abs(hash(request.node.name))))
    yield one
    one.close()
