"""Keys that are held down."""

import pytest

from display import Display
from quizzes import QUIZZES, STRUCTURE


@pytest.fixture(scope="module")
def display(session):
    # Keys repeat sooner and faster than on a learner's keyboard.
    with Display(session, options="-ardelay 100 -arinterval 10") as display:
        yield display


def test_a_held_key_acts_once(learner, keyboard):
    program, display = learner.program, learner.display
    # The key that dismisses the greeting is still down, but must not start a quiz.
    with display.holding("Return"):
        menu = keyboard.window("Zorvan", QUIZZES[1].button)
        learner.expect_levels(menu)
    keyboard.move_on()
    assert program.windows() == [menu]

    with display.holding("ctrl", "5"):
        attempt = learner.attempt(STRUCTURE)
        question = attempt.question()
    expect_nothing_more(keyboard, attempt)
    assert len(program.windows()) == 2

    # Goes on with the mouse while the key of an answer is down.
    with display.holding("abc"[question["right"] - 1]):
        attempt.count()
        attempt.go_on()
        attempt.question()
    expect_nothing_more(keyboard, attempt)

    attempt.answer()
    with display.holding("Return"):
        attempt.question()
    expect_nothing_more(keyboard, attempt)


def expect_nothing_more(keyboard, attempt):
    """Checks that the question on screen is unanswered after all typed keys have arrived."""
    keyboard.move_on()
    attempt.question()
