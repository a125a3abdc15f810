import pytest

pytest_plugins = ["journeys"]
pytest.register_assert_rewrite("attempt", "keyboard", "learner", "program")

from display import Display
from keyboard import Keyboard
from quizzes import GREETING, SEEDS


@pytest.fixture(scope="module")
def display(session):
    with Display(session) as display:
        yield display


@pytest.fixture
def keyboard(learner, tmp_path):
    """A learner without a mouse, before the greeting."""
    learner.start()
    keyboard = Keyboard(learner.program, tmp_path)
    keyboard.window(GREETING, "OK")
    learner.store = dict(SEEDS)
    return keyboard
