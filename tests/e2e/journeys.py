"""What all journeys have in common, on any display."""

import shutil
from pathlib import Path

import pytest

from keyboard import Keyboard
from learner import Learner
from quizzes import GREETING, SEEDS
from session import Session


def pytest_addoption(parser):
    parser.addoption("--program", required=True, help="the program to try")
    parser.addoption(
        "--evidence",
        type=Path,
        default=Path("e2e-evidence"),
        help="where a journey that fails leaves what helps to understand why",
    )


@pytest.fixture(scope="session")
def session():
    with Session() as session:
        yield session


@pytest.fixture
def learner(request, display, tmp_path):
    """A learner whose program ends with the journey."""
    learner = Learner(display, request.config.getoption("--program"), tmp_path)
    yield learner
    if learner.program and learner.program.is_running():
        learner.program.end()


@pytest.fixture
def keyboard(learner, tmp_path):
    """A learner without a mouse, before the greeting."""
    learner.start()
    keyboard = Keyboard(learner.program, tmp_path)
    keyboard.window(GREETING, "OK")
    learner.store = dict(SEEDS)
    return keyboard


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item):
    """Collects the evidence while the program still runs."""
    report = (yield).get_result()
    folder = item.config.getoption("--evidence") / item.name
    if report.when == "call":
        shutil.rmtree(folder, ignore_errors=True)
    learner = item.funcargs.get("learner")
    if report.failed and learner is not None and learner.program is not None:
        folder.mkdir(parents=True, exist_ok=True)
        learner.program.leave_evidence(folder)
        report.sections.append(("The evidence", f"is in {folder}"))
