"""What a desktop decides: which window is in front, and which has the keyboard."""

import filecmp
import re
import time
from pathlib import Path

import pytest

from learner import ABANDON, FAILED, GREETING, QUIZZES, SEEDS, TIME_IS_UP, Attempt
from program import Role, State, describe, has, name_of
from session import wait_until

STRUCTURE = QUIZZES[5]


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
    attempt = Attempt(learner, STRUCTURE, program.wait_for_window("Structure"))
    attempt.answer(keys="abc")
    attempt.expect_verdict(right=True)


def test_a_quiz_is_passed(learner):
    menu = start_again(learner)
    learner.take(STRUCTURE, menu)
    assert learner.passes(STRUCTURE) == 1
    learner.quit()
    assert learner.stored() == learner.store


def test_the_close_guard(learner):
    menu = start_again(learner)
    program = learner.program
    attempt = learner.open_quiz(STRUCTURE, menu)
    attempt.answer()
    attempt.expect_verdict(right=True)
    program.press("ctrl+w")
    answer(program, program.wait_for_window(ABANDON), "Escape")
    program.wait_until("the quiz has the keyboard", lambda: has(attempt.window, State.ACTIVE))
    program.press("Return")
    attempt.answer(keys="abc")
    attempt.expect_verdict(right=True)
    program.press("ctrl+w")
    answer(program, program.wait_for_window(ABANDON), "Return")
    program.wait_until_gone(attempt.window)
    # The window that is left has the keyboard.
    program.wait_until("the main menu has the keyboard", lambda: has(menu, State.ACTIVE))
    program.press("ctrl+3")
    program.wait_for_window("Methods")


def test_the_window_menu(learner, tmp_path):
    menu = start_again(learner)
    program = learner.program
    attempt = learner.open_quiz(STRUCTURE, menu)
    sight = Sight(program, program.place(heading(program, attempt.window)), tmp_path)
    cover_with_help(program, attempt.window)
    wait_until("Help covers the quiz", lambda: not sight.is_seen())
    program.press("alt+w")
    program.wait_for(Role.MENU_ITEM, "2 Structure")
    program.press("2")
    if not program.display.grants_requests:
        wait_until("the quiz asks for the keyboard", program.display.asks_for_attention)
        return
    program.wait_until("the quiz has the keyboard", lambda: has(attempt.window, State.ACTIVE))
    wait_until("the quiz is in front", sight.is_seen)
    attempt.answer(keys="abc")
    attempt.expect_verdict(right=True)
    program.press("alt+w")
    program.wait_for(Role.MENU_ITEM, "1 Zorvan")
    program.press("1")
    program.wait_until("the main menu has the keyboard", lambda: has(menu, State.ACTIVE))
    program.press("ctrl+3")
    program.wait_for_window("Methods")


def test_about_twice(learner):
    menu = start_again(learner)
    program = learner.program
    open_about(program)
    about = program.wait_for_window(ABOUT)
    press_corner(program, menu)
    program.wait_until("the main menu has the keyboard", lambda: has(menu, State.ACTIVE))
    open_about(program)
    if not program.display.grants_requests:
        wait_until("About asks for the keyboard", program.display.asks_for_attention)
        return
    program.wait_until("About has the keyboard", lambda: has(about, State.ACTIVE))
    assert program.windows(ABOUT) == [about]
    program.press("Escape")
    program.wait_until_gone(about)
    learner.quit()


# Like an alert, it is found by its text.
ABOUT = re.compile("About Zorvan.*")


def open_about(program):
    program.press("alt+z")
    program.wait_for(Role.MENU_ITEM, "About Zorvan")
    program.press("a")


def test_the_last_window(learner):
    menu = start_again(learner)
    program = learner.program
    program.press("ctrl+w")
    program.wait_until_gone(menu)
    way_back = program.wait_for_window("Zorvan")
    program.wait_for(Role.LABEL, "No window is open.", way_back)
    program.click_button("Main Menu", way_back)
    program.wait_until_gone(way_back)
    menu = program.wait_for_window("Zorvan")
    learner.expect_levels(menu)
    program.press("ctrl+w")
    program.wait_until_gone(menu)
    program.wait_for_window("Zorvan")
    program.press("ctrl+q")
    learner.expect_the_end()


def test_quit_behind_help(learner, tmp_path):
    if not learner.display.grants_requests:
        pytest.skip("a window cannot come to the front here")
    _, attempt, sight = begin_a_quiz(learner, tmp_path)
    program = learner.program
    cover_with_help(program, attempt.window)
    wait_until("Help covers the quiz", lambda: not sight.is_seen())
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
    program.wait_until("the main menu has the keyboard", lambda: has(menu, State.ACTIVE))
    program.press("ctrl+q")
    question = program.wait_for_window(ABANDON)
    wait_until("the quiz is on screen", sight.is_seen)
    answer(program, question, "Return")
    learner.expect_the_end()


def begin_a_quiz(learner, folder):
    """Answers the first question of a quiz, and notes how its window looks."""
    menu = start_again(learner)
    program = learner.program
    attempt = learner.open_quiz(STRUCTURE, menu)
    attempt.answer()
    attempt.expect_verdict(right=True)
    return menu, attempt, Sight(program, program.place(heading(program, attempt.window)), folder)


def heading(program, window):
    """The text at the top of a quiz, which an alert does not cover."""
    return program.wait_for(Role.LABEL, "Structure", window)


def cover_with_help(program, window):
    """Opens the help over a window."""
    place = program.place(window)
    program.press("F1")
    program.wait_for_window("Help")
    program.display.put_over(place)


def test_the_time_is_up_in_the_background(learner, tmp_path):
    clock = Clock(learner, tmp_path)
    menu = start_again(learner, timedQuizzes="yes")
    program = learner.program
    attempt = learner.open_quiz(STRUCTURE, menu)
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
    program.wait_until_gone(attempt.window)
    learner.store["currentStatus"] = "fail"
    learner.expect_outcome(STRUCTURE, FAILED)


def start_again(learner, **settings):
    """Starts the program for somebody who has used it before, and returns the main menu."""
    learner.store = SEEDS | settings
    file = learner.home / "Zorvan/Zorvan.conf"
    file.parent.mkdir()
    lines = (f"{key}={value}\n" for key, value in learner.store.items())
    file.write_text("[General]\n" + "".join(lines), "utf-8")
    learner.start()
    return learner.program.wait_for_window("Zorvan")


def press_corner(program, window):
    """Presses the mouse in the lower right corner of a window, where there is no control."""
    left, top, width, height = program.place(window)
    program.display.click(left + width - 6, top + height - 6)


def answer(program, alert, key):
    """Answers an alert that has the keyboard."""
    program.wait_until(f"{describe(alert)} has the keyboard", lambda: has(alert, State.ACTIVE))
    program.press(key)
    program.wait_until_gone(alert)


class Sight:
    """A part of the screen, and how it looked at first."""

    def __init__(self, program, place, folder):
        self._display = program.display
        self._place = place
        self._first = folder / "first.ppm"
        self._now = folder / "now.ppm"
        self._display.put_pointer_aside()
        self._display.part(self._first, self._place)
        wait_until("the screen rests", self._rests)

    def _rests(self):
        rests = self.is_seen()
        self._now.replace(self._first)
        return rests

    def is_seen(self):
        """Whether it looks the same now."""
        self._display.part(self._now, self._place)
        return filecmp.cmp(self._first, self._now, shallow=False)


class OtherProgram:
    """Another program, whose window is over the middle of one of ours."""

    width, height = 300, 640

    def __init__(self, program, window, folder):
        self._program = program
        self._session = program.display.session
        self._notes = folder / "notes"
        left, top, width, height = program.place(window)
        x, y = left + width // 2, top + height // 2
        self.middle = x - 100, y - 40, 200, 80
        self._place = x - self.width // 2, max(y - self.height // 2, 0), self.width, self.height

    def __enter__(self):
        command = Path(__file__).with_name("otherprogram.py"), self._notes, *self._place
        self._process = self._session.spawn(
            "other-program",
            ["/usr/bin/python3", *map(str, command)],
            self._program.display.environment | {"NO_AT_BRIDGE": "1"},
        )
        # The desktop may put it behind our window, but it is taller: its lower end can be clicked.
        left, top, width, height = self._place
        bottom = left + width // 2, top + height - 12
        wait_until("the other program has the keyboard", lambda: self._is_pressed(*bottom))
        return self

    def __exit__(self, *_):
        self._session.end(self._process)

    def _is_pressed(self, x, y):
        self._program.display.click(x, y)
        return self.notes()[-1:] == ["has the keyboard"]

    def notes(self):
        """What it has noted so far."""
        return self._notes.read_text("utf-8").splitlines() if self._notes.exists() else []

    def write(self, text):
        """Types a text, and checks that this program gets it and has not lost the keyboard."""
        expected = [*self.notes(), *text]
        self._program.press(*text)
        wait_until("the other program gets the keys", lambda: self.notes() == expected)


class Clock:
    """The time that the program sees."""

    rate = 40

    def __init__(self, learner, folder):
        self._file = folder / "clock"
        self._file.write_text("+0")
        self._started = time.monotonic()
        learner.environment = {
            "LD_PRELOAD": "/usr/$LIB/faketime/libfaketimeMT.so.1",
            "FAKETIME_TIMESTAMP_FILE": str(self._file),
            "FAKETIME_NO_CACHE": "1",
        }

    def hurry(self):
        self._file.write_text(f"+0 x{self.rate}")

    def slow_down(self):
        """Goes on at the usual rate, from a time no earlier than it has reached."""
        self._file.write_text(f"+{self.rate * (time.monotonic() - self._started):.0f}")
