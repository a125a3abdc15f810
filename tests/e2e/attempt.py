"""One attempt at a quiz, as the learner sees it."""

import re

from accessible import Role, State, has, name_of
from quizzes import QUESTIONS, answer_names


class Attempt:
    """The window of a quiz, and how many of its questions were answered, and rightly."""

    def __init__(self, program, quiz):
        self.program = program
        self.quiz = quiz
        self.window = program.wait_for_window(quiz.name)
        self.answered = 0
        self.right = 0
        self.buttons = []
        self.next_question = None

    @property
    def is_over(self):
        return self.answered == self.quiz.length

    @property
    def passes(self):
        return self.right / self.quiz.length >= 0.8

    def question(self):
        """The question on screen, once it is the next one."""
        _, label, *self.buttons = self.program.wait_for_all(
            self.window,
            (Role.LABEL, f"Question {self.answered + 1} of {self.quiz.length}"),
            (Role.LABEL, QUESTIONS),
            *((Role.PUSH_BUTTON, re.compile(f"{letter}: .*")) for letter in "ABC"),
        )
        question = QUESTIONS[name_of(label)]
        assert [name_of(button) for button in self.buttons] == answer_names(question)
        usable = [True, True, not question["thirdButtonOff"]]
        assert [has(button, State.ENABLED) for button in self.buttons] == usable
        return question

    def answer(self, right=True, keys=""):
        """Answers the question on screen, with the mouse or with the keys for the three answers."""
        question = self.question()
        choice = question["right"] if right else 3 - min(question["right"], 2)
        if keys:
            self.program.press(keys[choice - 1])
        else:
            self.program.click(self.buttons[choice - 1])
        self.count(right)

    def count(self, right=True):
        """Counts an answer and waits for its verdict, unless it was the last."""
        self.answered += 1
        self.right += right
        if not self.is_over:
            percent = f"{self.right / self.answered * 100:.0f}{' ' if right else ''}%"
            *_, self.next_question = self.program.wait_for_all(
                self.window,
                (Role.LABEL, "correct" if right else "wrong"),
                (Role.LABEL, f"Score: {percent}"),
                (Role.PUSH_BUTTON, "Next Question"),
            )

    def go_on(self, key=""):
        if key:
            self.program.press(key)
        else:
            self.program.click(self.next_question)

    def answer_all(self, wrong=0, keys=""):
        """Answers all remaining questions, the last `wrong` of them wrongly."""
        while not self.is_over:
            self.answer(self.answered < self.quiz.length - wrong, keys)
            if not self.is_over:
                self.go_on("Return" if keys else "")
