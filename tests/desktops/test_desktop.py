"""What a desktop decides: which window is in front, and which has the keyboard."""

import re

import pytest

from accessible import Role, State, has, name_of
from desktops import Desktop
from quizzes import ABANDON, FAILED, GREETING, SEEDS, STRUCTURE, TIME_IS_UP
from session import wait_until
from surroundings import Clock, OtherProgram, Sight

# Like an alert, it is found by its text.
ABOUT = re.compile("About Zorvan.*")


@pytest.fixture
def learner(learner, display):
    learner.program_type = display.program_type
    return learner


def test_a_click_beside_the_greeting(learner):
    learner.start()
    program = learner.program
    program.wait_for_window(GREETING)
    learner.store = dict(SEEDS)
    [menu] = program.windows("Zorvan")
    press_corner(program, menu)

    def is_answered():
        # If a window does not get the keyboard that it asks for, the greeting is shown again.
        if any(has(greeting, State.ACTIVE) for greeting in program.windows(GREETING)):
            program.press("Return")
        return "Finished Starting" in program.log_lines()

    program.wait_until("the greeting is answered", is_answered)
    program.wait_for_window("Zorvan")
    program.press("ctrl+5")
    learner.attempt(STRUCTURE).answer(keys="abc")


def test_the_close_guard(learner):
    menu = learner.start_again()
    program = learner.program
    attempt = learner.open_quiz(STRUCTURE, menu)
    attempt.answer()
    program.press("ctrl+w")
    answer(program, program.wait_for_window(ABANDON), "Escape")
    program.wait_for_keyboard(attempt.window)
    program.press("Return")
    attempt.answer(keys="abc")
    program.press("ctrl+w")
    answer(program, program.wait_for_window(ABANDON), "Return")
    program.wait_until_gone(attempt.window)
    # The window that is left has the keyboard.
    program.wait_for_keyboard(menu)


def test_the_window_menu(learner, tmp_path):
    _, attempt, sight = begin_a_quiz(learner, tmp_path)
    program = learner.program
    cover_with_help(program, attempt.window, sight)
    program.press("alt+w")
    program.wait_for(Role.MENU_ITEM, "2 Structure")
    program.press("2")
    if not program.display.grants_requests:
        wait_until("the quiz asks for the keyboard", program.display.asks_for_attention)
        return
    program.wait_for_keyboard(attempt.window)
    wait_until("the quiz is in front", sight.is_seen)
    program.press("Return")
    attempt.question()


def test_about_twice(learner):
    menu = learner.start_again()
    program = learner.program
    open_about(program)
    about = program.wait_for_window(ABOUT)
    press_corner(program, menu)
    program.wait_for_keyboard(menu)
    open_about(program)
    if not program.display.grants_requests:
        wait_until("About asks for the keyboard", program.display.asks_for_attention)
        return
    program.wait_for_keyboard(about)
    assert program.windows(ABOUT) == [about]
    program.press("Escape")
    program.wait_until_gone(about)
    learner.quit()


def open_about(program):
    program.press("alt+z")
    program.wait_for(Role.MENU_ITEM, "About Zorvan")
    program.press("a")


def test_the_last_window(learner):
    menu = learner.start_again()
    program = learner.program
    program.press("ctrl+w")
    program.wait_until_gone(menu)
    way_back = program.wait_for_window("Zorvan")
    program.wait_for(Role.LABEL, "No window is open.", way_back)
    program.click_button("Main Menu", way_back)
    program.wait_until_gone(way_back)
    learner.expect_levels(program.wait_for_window("Zorvan"))
    learner.quit()


def test_quit_behind_help(learner, tmp_path):
    if not learner.display.grants_requests:
        pytest.skip("a window cannot come to the front here")
    _, attempt, sight = begin_a_quiz(learner, tmp_path)
    program = learner.program
    cover_with_help(program, attempt.window, sight)
    program.press("ctrl+q")
    question = program.wait_for_window(ABANDON)
    wait_until("the quiz is in front of Help", sight.is_seen)
    answer(program, question, "Return")
    learner.expect_the_end()


def test_quit_with_the_quiz_minimised(learner, tmp_path):
    menu, _, sight = begin_a_quiz(learner, tmp_path)
    program = learner.program
    if not learner.display.minimise():
        pytest.skip("no window can be minimised here")
    wait_until("the quiz is gone from the screen", lambda: not sight.is_seen())
    press_corner(program, menu)
    program.wait_for_keyboard(menu)
    program.press("ctrl+q")
    question = program.wait_for_window(ABANDON)
    wait_until("the quiz is on screen", sight.is_seen)
    answer(program, question, "Return")
    learner.expect_the_end()


def test_quit_again_and_again(learner):
    learner.start_again()
    # Where Qt hangs while it leaves the compositor, it does so once in about thirty times.
    for _ in range(40):
        wait_until("the windows are gone", lambda: quits_at_once(learner))
        assert learner.program.exit_status() == 0
        learner.start()
        learner.program.wait_for_window("Zorvan")
    learner.quit()


def quits_at_once(learner):
    # Other keys wait until the desktop has drawn everything, which takes too long for so many.
    Desktop.press(learner.display, "ctrl+q")
    return not learner.program.windows()


def begin_a_quiz(learner, folder):
    """Answers the first question of a quiz, and notes how its window looks."""
    menu = learner.start_again()
    program = learner.program
    attempt = learner.open_quiz(STRUCTURE, menu)
    attempt.answer()
    # An alert does not cover the text at the top.
    heading = program.wait_for(Role.LABEL, "Structure", attempt.window)
    return menu, attempt, Sight(program, program.place(heading), folder)


def cover_with_help(program, window, sight):
    """Opens the help over a window."""
    place = program.place(window)
    program.press("F1")
    program.wait_for_window("Help")
    program.display.put_over(place)
    wait_until("Help covers the quiz", lambda: not sight.is_seen())


def test_the_time_is_up_in_the_background(learner, tmp_path):
    clock = Clock(learner, tmp_path)
    attempt = learner.open_quiz(STRUCTURE, learner.start_again(timedQuizzes="yes"))
    program = learner.program
    attempt.question()
    label = program.wait_for(Role.LABEL, re.compile("Time left: .*"), attempt.window)
    with OtherProgram(program, attempt.window, tmp_path) as other:
        other.write("before")
        sight = Sight(program, other.middle, tmp_path)
        clock.hurry()
        program.wait_until("the time is up", lambda: name_of(label) == "Time left: 0:00")
        other.write("after")
        if learner.display.shows_attention:
            wait_until("a window asks for attention", learner.display.asks_for_attention)
        wait_until("the other program is in front", sight.is_seen)
        other.write("all")
        clock.slow_down()
        press_corner(program, attempt.window)
        program.wait_for_window(TIME_IS_UP)
    answer(program, program.wait_for_window(TIME_IS_UP), "Return")
    learner.expect_outcome(attempt, "fail", FAILED)


def press_corner(program, window):
    """Presses the mouse in the lower right corner of a window, where there is no control."""
    left, top, width, height = program.place(window)
    program.display.click(left + width - 6, top + height - 6)


def answer(program, alert, key):
    """Answers an alert that has the keyboard."""
    program.wait_for_keyboard(alert)
    program.press(key)
    program.wait_until_gone(alert)
