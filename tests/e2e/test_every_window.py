"""Every window: all of it is on the screen, and in words for who does not see it."""

import re

import pytest
from gi.repository import Atspi

from accessible import Role, State, action_names, ask, describe, has, name_of, shown
from quizzes import ABANDON, CLEAR, CLEARED, GREETING, PASSED, QUIZZES, STRUCTURE
from quizzes import TIMED, UNTIMED

NAMELESS = (Role.FILLER, Role.SEPARATOR)

# There is no other way to learn an action's name.
pytestmark = pytest.mark.filterwarnings("ignore:Atspi.Action.get_action_name is deprecated")


def test_every_window_fits_and_is_in_words(learner):
    learner.start()
    program = learner.program
    expect_window(program, program.wait_for_window(GREETING), (Role.LABEL, GREETING))
    menu = learner.greeted()
    expect_window(program, menu)

    program.click_button("Settings", menu)
    settings = program.wait_for_window("Settings")
    expect_window(program, settings)
    assert has(program.wait_for(Role.RADIO_BUTTON, UNTIMED, settings), State.CHECKED)
    assert not has(program.wait_for(Role.RADIO_BUTTON, TIMED, settings), State.CHECKED)
    program.click_button("Clear Progress…", settings)
    expect_window(program, program.wait_for_window(CLEAR), (Role.LABEL, CLEAR))
    learner.dismiss(CLEAR, "Yes")
    expect_window(program, program.wait_for_window(CLEARED), (Role.LABEL, CLEARED))
    learner.dismiss(CLEARED, "OK")
    program.press("Escape")

    take_a_quiz(learner, program.wait_for_window("Zorvan"))
    menu = learner.newest_menu()
    expect_window(program, menu)
    program.click_button("Progress", menu)
    values = ["0%", "0%", "0%", "0%", "33%", "0%"]
    passes = [f"{QUIZZES[quiz].name}: {value}" for quiz, value in enumerate(values, 1)]
    expect_window(
        program,
        program.wait_for_window("Progress"),
        (Role.PANEL, ". ".join(passes)),
        *((Role.LABEL, value) for value in passes),
    )
    program.press("F1")
    expect_window(program, program.wait_for_window("Help"))
    learner.choose_menu_item("Zorvan", "About Zorvan")
    expect_window(program, program.wait_for_window("About Zorvan"))
    program.press("Escape")
    program.wait_for_window("Help")
    expect_window(program, program.close_all())
    # The same items were read as another window's before.
    learner.choose_menu_item("Zorvan", "Quit")
    learner.expect_the_end()


def take_a_quiz(learner, menu):
    program = learner.program
    attempt = learner.open_quiz(STRUCTURE, menu)
    question = attempt.question()
    expect_window(
        program,
        attempt.window,
        (Role.LABEL, "Structure"),
        (Role.PROGRESS_BAR, "Progress, 0 of 7 questions"),
        (Role.LABEL, "Question 1 of 7"),
        (Role.PANEL, question["text"]),
        (Role.LABEL, "Score: –"),
    )
    attempt.answer()
    expect_window(program, attempt.window)
    program.press("ctrl+w")
    expect_window(program, program.wait_for_window(ABANDON), (Role.LABEL, ABANDON))
    learner.dismiss(ABANDON, "No")
    attempt.go_on()
    attempt.answer_all()
    marks = "Pass mark 1: earned. Pass mark 2: missing. Pass mark 3: missing."
    expect_window(
        program, learner.expect_results(attempt), (Role.PANEL, f"Structure. {marks} {PASSED[1]}")
    )


def expect_window(program, window, *wanted):
    """Checks that a window and its frame are on the screen and nothing in it is cut off, and that
    everything has a name, every state is in words and every control is usable.
    """
    program.expect_on_screen(window)
    for role, name in wanted:
        program.wait_for(role, name, window)
    items = list(shown(window))
    controls = [item for item in items if has(item, State.FOCUSABLE)]
    buttons = [name_of(item) for item in controls if ask(item.get_role) == Role.PUSH_BUTTON]
    assert len(buttons) == len(set(buttons)), buttons
    for item in [window, *items]:
        role, name = ask(item.get_role), name_of(item)
        assert role not in (Role.INVALID, Role.UNKNOWN), describe(item)
        assert name.strip() or role in NAMELESS or holds_an_alerts_buttons(item), describe(item)
        assert not re.fullmatch("[A-Z0-9]", name), describe(item)
        if role == Role.PROGRESS_BAR:
            value = ask(Atspi.Value.get_current_value, item)
            maximum = ask(Atspi.Value.get_maximum_value, item)
            assert f", {value:.0f} of {maximum:.0f} " in name
        if role in (Role.PUSH_BUTTON, Role.RADIO_BUTTON) and has(item, State.ENABLED):
            assert item in controls and action_names(item), describe(item)


def holds_an_alerts_buttons(item):
    parent = ask(item.get_parent)
    return ask(item.get_role) == Role.PANEL and ask(parent.get_role) == Role.ALERT
