"""Without sight, pointer and keys: what a screen reader is told and when, and what it can press."""

import pyatspi
import pytest

from accessible import Role, State, around, ask, description_of, has, name_of
from program import ActionProgram
from quizzes import STRUCTURE, answer_names

# There is no other way to learn an action's name.
pytestmark = pytest.mark.filterwarnings("ignore:Atspi.Action.get_action_name is deprecated")


@pytest.fixture
def learner(learner):
    learner.program_type = ActionProgram
    return learner


class Reader:
    """Notes what a screen reader would be told: what gets the focus, what is announced, and what
    changes its name.
    """

    FOCUSED = "object:state-changed:focused"
    ANNOUNCED = "object:announcement"
    RENAMED = "object:property-change:accessible-name"
    EVENTS = (
        FOCUSED,
        ANNOUNCED,
        RENAMED,
        "object:property-change:accessible-description",
        "object:property-change:accessible-value",
        "object:text-changed",
        "object:text-caret-moved",
        "window:activate",
        "window:create",
    )

    def __init__(self):
        self.heard = []
        self.announced = []

    def __enter__(self):
        pyatspi.Registry.registerEventListener(self._hear, *self.EVENTS)
        return self

    def __exit__(self, *_):
        pyatspi.Registry.deregisterEventListener(self._hear, *self.EVENTS)

    def _hear(self, event):
        self.heard.append((event.type.name, event.source, event.detail1))
        if event.type.name == self.ANNOUNCED:
            self.announced.append(event.any_data)

    def forget(self):
        self.heard.clear()
        self.announced.clear()

    def focused(self):
        return [item for kind, item, on in self.heard if kind == self.FOCUSED and on]


def test_the_verdict_is_heard_and_the_clock_is_not(learner):
    menu = learner.start_again(timedQuizzes="yes", quiz5="1")
    program = learner.program
    attempt = learner.open_quiz(STRUCTURE, menu)
    clock = program.wait_for(Role.LABEL, "Time left: 1:45", attempt.window)
    assert not has(clock, State.FOCUSABLE)
    with Reader() as reader:
        for text in ("Time left: 1:44", "Time left: 1:43"):
            program.wait_until(f'"{text}" can be read', lambda: name_of(clock) == text)
        # A new name of a label without the focus is not spoken.
        assert {(kind, item) for kind, item, _ in reader.heard} == {(Reader.RENAMED, clock)}

        for right in (True, False):
            question = attempt.question()
            first = attempt.buttons[0]
            program.wait_until("the first answer has the focus", lambda: program.focus() == first)
            assert description_of(first) == f"Question {attempt.answered + 1} of 7"
            group = next(item for item in around(first) if ask(item.get_role) == Role.PANEL)
            assert name_of(group) == question["text"]

            reader.forget()
            attempt.answer(right)
            answer = answer_names(question)[question["right"] - 1]
            wrong = f"wrong, the right answer is {answer}, score 50%"
            verdict = "correct, score 100 %" if right else wrong
            expect_to_be_told(program, reader, attempt.next_question, verdict)
            assert description_of(attempt.buttons[question["right"] - 1]) == "the right answer"

            reader.forget()
            attempt.go_on()
            attempt.question()
            program.wait_until(
                "the reader is told of the next question", lambda: first in reader.focused()
            )


def expect_to_be_told(program, reader, button, verdict):
    def told():
        # Before Qt 6.8 a description says what newer versions announce.
        texts = [*reader.announced, description_of(button)]
        return button in reader.focused() and list(filter(None, texts))

    assert program.wait_until("the reader is told of the verdict", told) == [verdict]
