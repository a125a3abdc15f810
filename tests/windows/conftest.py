import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).parents[1] / "e2e"))
pytest.register_assert_rewrite("wine")

from display import Display
from session import Session
from wine import Wine


def pytest_addoption(parser):
    parser.addoption("--build", type=Path, required=True, help="the build folder for Windows")
    parser.addoption("--evidence", type=Path, required=True, help="folder for pictures")


@pytest.fixture(scope="session")
def display():
    with Session() as session, Display(session) as display:
        yield display


@pytest.fixture
def wine(display, tmp_path):
    """A Windows on which nobody has installed anything."""
    with Wine(display, tmp_path / "wine") as wine:
        yield wine
