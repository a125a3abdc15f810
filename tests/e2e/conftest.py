import pytest

pytest_plugins = ["journeys"]
pytest.register_assert_rewrite("attempt", "keyboard", "learner", "program")

from display import Display


@pytest.fixture(scope="module")
def display(session):
    with Display(session) as display:
        yield display
