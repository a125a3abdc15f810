"""The quizzes, their questions, and what the program says of them."""

import json
from dataclasses import dataclass
from pathlib import Path

BANK = json.loads((Path(__file__).parent.parent / "data/questions.json").read_text("utf-8"))
QUESTIONS = {question["text"]: question for question in BANK}


@dataclass(frozen=True)
class Quiz:
    id: int
    name: str
    length: int
    caption: str = ""

    @property
    def button(self):
        return f"{self.name}: {self.caption or f'{self.length} questions'}"


QUIZZES = {
    quiz.id: quiz
    for quiz in (
        Quiz(1, "Terminology", 14),
        Quiz(2, "Variables", 19),
        Quiz(3, "Methods", 10),
        Quiz(4, "Functions", 11),
        Quiz(5, "Structure", 7),
        Quiz(6, "Syntax", 16),
        Quiz(7, "Main Test", 30, "The final: 30 questions drawn from all six"),
    )
}
STRUCTURE = QUIZZES[5]

GREETING = (
    "Welcome to Zorvan, this is the main progress screen where you can select quizzes to take and"
    " track your progress."
)
ABANDON = (
    "This will end your current progress on this test, would you still like to close this window?"
)
CLEAR = "This will reset all progress. Are you sure you want to clear your progress?"
CLEARED = "All progress on quizzes has been reset"
TIME_IS_UP = "The time is up for this test."
PASSED = {
    1: "Congratulations you have passed this quiz. Only two more passes needed to have this quiz"
    " mastered.",
    2: "Congratulations you have passed this quiz. Only one more pass needed to have this quiz"
    " mastered.",
    3: "Congratulations you MASTERED this quiz.",
}
FAILED = "Unfortunately you did not pass the quiz this time. Please try again."
TIMED = "Timed: about 15 seconds a question"
UNTIMED = "Untimed: take as long as you like"

SEEDS = {"currentTest": "0", "currentStatus": "0", "firstRun": "false"} | {
    f"quiz{quiz}": "0" for quiz in QUIZZES
}


def answer_names(question):
    """The names of the buttons of a question's answers."""
    return [f"{letter}: {answer or 'empty'}" for letter, answer in zip("ABC", question["answers"])]
