"""A quiz in a Wayland session, without pointer and keyboard."""

import pytest

from accessible import Role, ask, below, name_of
from quizzes import STRUCTURE
from session import wait_until
from wayland import ActionProgram, WaylandDisplay

# There is no other way to learn an action's name.
pytestmark = pytest.mark.filterwarnings("ignore:Atspi.Action.get_action_name is deprecated")


@pytest.fixture(scope="module")
def display(session):
    with WaylandDisplay(session) as display:
        yield display


@pytest.fixture
def learner(learner):
    learner.program_type = ActionProgram
    # Qt leaves the compositor without freeing what it got from it.
    learner.environment = {"ASAN_OPTIONS": "detect_leaks=0"}
    return learner


def test_a_quiz_is_passed_on_wayland(learner):
    menu = learner.start_for_the_first_time()
    expect_on_screen(learner.display, "Zorvan")
    # The compositor finds the icon by this name.
    assert learner.display.programs() == {"org.zorvan.Zorvan"}
    learner.take(STRUCTURE, menu)
    expect_on_screen(learner.display, "Results — Zorvan", "Zorvan", "Zorvan")
    # Newer Qt opens no menu before something is clicked or typed, which never happens here.
    learner.program.click(
        next(
            item
            for item in below(learner.program.windows()[0])
            if ask(item.get_role) == Role.MENU_ITEM and name_of(item) == "Quit"
        )
    )
    learner.expect_the_end()
    expect_on_screen(learner.display)


def expect_on_screen(display, *titles):
    """Waits until the compositor shows exactly these windows, whatever the program says."""
    wait_until(f"the windows {titles} are on screen", lambda: display.titles() == list(titles))
