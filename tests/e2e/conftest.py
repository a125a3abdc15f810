import pytest

pytest_plugins = ["journeys"]
pytest.register_assert_rewrite("attempt", "keyboard", "learner")

from display import Display
from keyboard import Keyboard
from quizzes import GREETING, SEEDS


def pytest_addoption(parser):
    parser.addoption(
        "--watch", action="store_true", help="show the screen in a window, and take one's time"
    )


@pytest.fixture(scope="module")
def display(request, session):
    with Display(session, watched=request.config.getoption("--watch")) as display:
        yield display


@pytest.fixture
def keyboard(learner, tmp_path):
    """A learner without a mouse, before the greeting."""
    learner.start()
    keyboard = Keyboard(learner.program, tmp_path)
    keyboard.window(GREETING, "OK")
    learner.store = dict(SEEDS)
    return keyboard
