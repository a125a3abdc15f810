import subprocess
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).parents[1] / "e2e"))
pytest.register_assert_rewrite(
    "attempt", "keyboard", "learner", "program", "reader", "windowslearner", "wine"
)

from display import Display
from journeys import keyboard, pytest_runtest_makereport, session
from windowslearner import COMPANY, WindowsLearner
from wine import Wine

__all__ = ["keyboard", "pytest_runtest_makereport", "session"]


def pytest_addoption(parser):
    parser.addoption("--build", type=Path, required=True, help="the build folder for Windows")
    parser.addoption("--evidence", type=Path, required=True, help="folder for pictures")


@pytest.fixture(scope="session")
def build(request):
    return request.config.getoption("--build").absolute()


@pytest.fixture(scope="session")
def display(session):
    with Display(session) as display:
        yield display


@pytest.fixture
def wine(display, tmp_path):
    """A Windows on which nobody has installed anything."""
    with Wine(display, tmp_path / "wine") as wine:
        yield wine


@pytest.fixture(scope="session")
def installed(build, tmp_path_factory):
    """A folder with the program and all that it needs, as users get it."""
    folder = tmp_path_factory.mktemp("installed")
    command = ["cmake", "--install", build, "--prefix", folder, "--strip"]
    subprocess.run(command, check=True, capture_output=True)
    return folder


@pytest.fixture
def learner(wine, reader, installed, tmp_path):
    """A learner who has never used the program, which ends with the journey."""
    if wine.registry(COMPANY) is not None:
        wine.run("reg", "delete", COMPANY, "/f")
    learner = WindowsLearner(
        wine.display, installed / "zorvan.exe", tmp_path, wine=wine, reader=reader
    )
    yield learner
    if learner.program and learner.program.is_running():
        learner.program.end()
