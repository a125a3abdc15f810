"""Large text on a small screen: what does not fit scrolls, and the focus stays in view."""

import pytest

from keyboard import row_of
from learner import GREETING, NUMBER_OF, QUIZZES, Attempt
from program import Role, common, describe, extents, in_view, lies_within, view_of
from session import Display

SIZE = "1024x600"
STRUCTURE = QUIZZES[5]


@pytest.fixture
def display(request, session):
    with Display(session, SIZE, watched=request.config.getoption("--watch")) as display:
        yield display


@pytest.fixture
def learner(learner):
    # Text at 200 %; without the second variable everything else would be enlarged as well.
    learner.environment = {"QT_FONT_DPI": "192", "QT_ENABLE_HIGHDPI_SCALING": "0"}
    return learner


def test_by_keys(learner, keyboard):
    program = learner.program
    expect_on_screen(program, program.windows(GREETING)[0])
    keyboard.press("Return")
    menu = program.wait_for_window("Zorvan")
    walk(keyboard, menu)
    for keys, title in (("ctrl+comma", "Settings"), ("F1", "Help")):
        keyboard.press(keys)
        window = program.wait_for_window(title)
        walk(keyboard, window)
        keyboard.press("Escape")
        program.wait_until_gone(window)

    program.bring_to_front(menu)
    keyboard.press("ctrl+5")
    learner.store["currentTest"] = "5"
    attempt = Attempt(learner, STRUCTURE, program.wait_for_window(STRUCTURE.name))
    walk(keyboard, attempt.window)
    while len(attempt.asked) < STRUCTURE.length:
        attempt.question()
        wait_for_view(program, attempt.buttons[0])
        wait_for_view(program, program.wait_for(Role.LABEL, NUMBER_OF, attempt.window))
        # The last answer is the furthest down.
        keyboard.press("Tab", "Tab")
        expect_focus_in_view(keyboard)
        attempt.answer(keys="abc")
        if len(attempt.asked) < STRUCTURE.length:
            attempt.expect_verdict(right=True)
            wait_for_view(program, keyboard.wait_for_focus("Next Question"))
            wait_for_view(program, program.wait_for(Role.LABEL, "correct", attempt.window))
            keyboard.press("Return")
    results = learner.expect_results(attempt)
    expect_on_screen(program, results)
    keyboard.wait_for_focus("Home")
    expect_focus_in_view(keyboard)
    learner.quit()


def test_by_wheel(learner):
    menu = learner.start_for_the_first_time()
    row = learner.program.wait_for(Role.PUSH_BUTTON, STRUCTURE.button, menu)
    assert not in_view(row)
    scroll_to(learner.program, menu, row)
    attempt = learner.open_quiz(STRUCTURE, menu)
    while len(attempt.asked) < STRUCTURE.length:
        question = attempt.question()
        scroll_to(learner.program, attempt.window, attempt.buttons[question["right"] - 1])
        attempt.answer()
        if len(attempt.asked) < STRUCTURE.length:
            attempt.expect_verdict(right=True)
            scroll_to(learner.program, attempt.window, attempt.next_question)
            attempt.go_on()
    results = learner.expect_results(attempt)
    home = learner.program.wait_for(Role.PUSH_BUTTON, "Home", results)
    scroll_to(learner.program, results, home)
    learner.program.click(home)
    learner.log.append("Going Home")
    learner.quit()


def expect_on_screen(program, window):
    """Checks that a window is on the screen as a whole, with its frame."""
    frame = program.display.frame(program.x_window(window))
    screen = (0, 0, *(int(side) for side in SIZE.split("x")))
    assert lies_within(frame, screen), f"{describe(window)} at {frame} leaves the screen"


def walk(keyboard, window):
    """Goes round a window with Tab, and checks that each control it reaches is in view."""
    expect_on_screen(keyboard.program, window)
    first = last = keyboard.focused()
    while True:
        expect_focus_in_view(keyboard)
        keyboard.press("Tab")
        stop = keyboard.program.wait_until(
            f"Tab leads on from {describe(last)}",
            lambda: (item := keyboard.focused()) != last and item,
        )
        if stop == first:
            return
        last = stop


def expect_focus_in_view(keyboard):
    wait_for_view(keyboard.program, keyboard.focused())


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
    while not in_view(item):
        before = extents(item)
        program.display.turn_wheel(left + width // 2, top + height // 2, up=before[1] < top)
        program.wait_until(
            f"the wheel moves {describe(item)}, which is at {before}",
            lambda: extents(item) != before,
        )
