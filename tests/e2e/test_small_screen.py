"""Large text on a small screen: what does not fit scrolls, and the focus stays in view."""

import pytest

from accessible import Role, common, describe, extents, lies_within, view_of
from display import Display
from keyboard import row_of
from quizzes import GREETING, QUESTIONS, STRUCTURE

WHEEL_UP, WHEEL_DOWN = 4, 5


@pytest.fixture
def display(session):
    with Display(session, "1024x600") as display:
        yield display


@pytest.fixture
def learner(learner):
    # Text at 200 %; without the second variable everything else would be enlarged as well.
    learner.environment = {"QT_FONT_DPI": "192", "QT_ENABLE_HIGHDPI_SCALING": "0"}
    return learner


def test_everything_can_be_reached(learner, keyboard):
    program = learner.program
    program.expect_on_screen(program.windows(GREETING)[0])
    keyboard.press("Return")
    menu = program.wait_for_window("Zorvan")
    walk(keyboard, menu)
    keyboard.press("F1")
    window = program.wait_for_window("Help")
    walk(keyboard, window)
    keyboard.press("Escape")
    program.wait_until_gone(window)
    scroll_to(program, menu, program.wait_for(Role.PUSH_BUTTON, STRUCTURE.button, menu))
    attempt = learner.open_quiz(STRUCTURE, menu)
    walk(keyboard, attempt.window)
    answer_by_keys(keyboard, attempt)
    attempt.question()
    scroll_to(program, attempt.window, attempt.buttons[2])
    attempt.answer_all(keys="abc")
    results = learner.expect_results(attempt)
    program.expect_on_screen(results)
    wait_for_view(program, keyboard.wait_for_focus("Home"))
    learner.quit()


def answer_by_keys(keyboard, attempt):
    program = keyboard.program
    attempt.question()
    wait_for_view(program, attempt.buttons[0])
    wait_for_view(program, program.wait_for(Role.LABEL, QUESTIONS, attempt.window))
    # The last answer is the furthest down.
    keyboard.press("Tab", "Tab")
    wait_for_view(program, keyboard.focused())
    attempt.answer(keys="abc")
    wait_for_view(program, keyboard.wait_for_focus("Next Question"))
    wait_for_view(program, program.wait_for(Role.LABEL, "correct", attempt.window))
    keyboard.press("Return")


def walk(keyboard, window):
    """Goes round a window with Tab, and checks that each control it reaches is in view."""
    keyboard.program.expect_on_screen(window)
    first = stop = keyboard.focused()
    while True:
        wait_for_view(keyboard.program, stop)
        stop = keyboard.move_on(stop)
        if stop == first:
            return


def wait_for_view(program, item):
    """Waits until a control is in view, the row around it from top to bottom. A text that is higher
    than the view has to fill it.
    """

    def fully():
        left, _, width, _ = extents(item)
        _, top, _, height = extents(row_of(item))
        view = view_of(item)
        return common((left, top, width, height), view)[2:] == (width, min(height, view[3]))

    program.wait_until(f"{describe(item)} at {extents(item)} is in view", fully)


def scroll_to(program, window, item):
    """Turns the wheel until a control is in view."""
    left, top, width, height = extents(window)
    while not lies_within(extents(item), view_of(item)):
        before = extents(item)
        notch = WHEEL_UP if before[1] < top else WHEEL_DOWN
        program.display.click(left + width // 2, top + height // 2, notch)
        program.wait_until(
            f"the wheel moves {describe(item)}, which is at {before}",
            lambda: extents(item) != before,
        )
