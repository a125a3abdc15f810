"""Without sight: what a screen reader says, word for word."""

import re

import pytest

from accessible import Role, name_of
from quizzes import ABANDON, GREETING, PASSED, STRUCTURE, TIMED, UNTIMED, answer_names
from session import wait_until

# As Orca writes it up to version 50, and since then.
NO_VOICE = "SPEECH: Not available|Speech server is not responsive"


def plain(text):
    """Leaves out what only some versions say: full stops, and that a window is one."""
    text = " ".join(text.split()).replace("push button", "button")
    return re.sub(r"\.(?= |$)", "", re.sub(r" frame\b", "", text))


class Orca:
    """The screen reader. Without a voice it writes what it says into its log."""

    def __init__(self, display):
        self._display = display
        self._log = display.session.folder / "orca-says.log"
        self._heard = 0

    def __enter__(self):
        # Orca holds back what it writes unless it writes to a terminal.
        orca = "orca --replace --disable=braille --debug-file=/dev/tty"
        command = ["script", "--quiet", "--flush", "--command", orca, str(self._log)]
        self._process = self._display.session.spawn("orca", command, self._display.environment)
        wait_until("Orca is ready", lambda: len(re.findall(NO_VOICE, self._written())) >= 2)
        return self

    def __exit__(self, *_):
        self._display.session.end(self._process)

    def expect(self, *phrases):
        """Waits until all of these phrases have been said since the last time."""
        phrases = [plain(phrase) for phrase in phrases]

        def ends():
            said = self.said()
            found = [said.find(phrase) for phrase in phrases]
            return -1 not in found and [at + len(text) for at, text in zip(found, phrases)]

        try:
            self._heard += max(wait_until(f"it says {phrases}", ends))
        finally:
            print(self.said())

    def said(self):
        """What it has said since the last time, made plain."""
        spoken = re.findall(r"SPEECH OUTPUT: '(.*?)' ?\{", self._written(), re.DOTALL)
        return plain(" ".join(spoken))[self._heard :]

    def _written(self):
        return self._log.read_text("utf-8", errors="replace") if self._log.exists() else ""


@pytest.fixture
def orca(display):
    with Orca(display) as orca:
        yield orca


@pytest.fixture
def learner(learner):
    # Qt never frees the keys that the screen reader has not let through at the end.
    learner.environment = {"ASAN_OPTIONS": "detect_leaks=0"}
    return learner


def test_a_quiz_is_taken_by_ear(learner, orca, keyboard):
    program = learner.program
    orca.expect(GREETING, "OK button.")
    program.press("Return")
    orca.expect("Zorvan", "Terminology: 14 questions button.", "0 of 3 passes, next.")
    program.press("Tab")
    orca.expect("Variables: 19 questions button.", "0 of 3 passes.")

    program.press("ctrl+5")
    orca.expect("Structure")
    attempt = learner.attempt(STRUCTURE)
    while not attempt.is_over:
        question = attempt.question()
        answers = answer_names(question)
        position = f"Question {attempt.answered + 1} of 7."
        orca.expect(f"{question['text']} panel.", f"{answers[0]} button.", position)
        right = attempt.answered != 1
        attempt.answer(right, "abc")
        if not attempt.is_over:
            right_answer = answers[question["right"] - 1]
            verdict = "correct" if right else f"wrong, the right answer is {right_answer}"
            score = f"score {attempt.right / attempt.answered * 100:.0f}"
            orca.expect("Next Question button.", f"{verdict}, {score}")
            program.press("Return")
    learner.expect_results(attempt)
    marks = "Pass mark 1: earned. Pass mark 2: missing. Pass mark 3: missing."
    orca.expect("Results", f"Structure. {marks} {PASSED[1]} panel.", "Home button.")

    program.press("F1")
    orca.expect("Help", "The quizzes. Six quizzes each cover one side of PHP")
    program.press("Tab")
    orca.expect("An attempt. The questions of a quiz come one at a time")
    program.press("Escape")
    orca.expect("Results", PASSED[1], "Home button.")
    program.press("ctrl+comma")
    orca.expect("Settings", "Timing.", UNTIMED, "selected")
    program.press("Down")
    orca.expect(TIMED, "selected")
    program.press("Tab")
    orca.expect("It cannot be undone.", "Clear Progress… button.")
    program.press("ctrl+5")
    expect_silence_of_the_clock(learner.attempt(STRUCTURE), orca)
    program.press("ctrl+q")
    orca.expect(ABANDON, "Yes button.")
    program.press("Return")
    # The log has lines from Qt about keys that the screen reader was slow to let through.
    assert program.exit_status() == 0


def expect_silence_of_the_clock(attempt, orca):
    clock = attempt.program.wait_for(Role.LABEL, "Time left: 1:45", attempt.window)
    orca.expect("Structure", "Question 1 of 7.")
    second = int(name_of(clock)[-2:])
    for passed in (1, 2, 3):
        text = f"Time left: 1:{second - passed:02}"
        attempt.program.wait_until(f'"{text}" can be read', lambda: name_of(clock) == text)
    assert orca.said() == ""
