"""A learner: what one does with the program, and what one may expect of it."""

import json
import re
from dataclasses import dataclass, field
from pathlib import Path

from program import Program, Role, State, description_of, has, name_of

BANK = json.loads((Path(__file__).parent.parent / "data/questions.json").read_text("utf-8"))
QUESTION = {question["number"]: question for question in BANK}
NUMBER_OF = {question["text"]: question["number"] for question in BANK}


@dataclass(frozen=True)
class Quiz:
    id: int
    name: str
    length: int
    numbers: range
    caption: str = ""

    @property
    def button(self):
        return f"{self.name}: {self.caption or f'{self.length} questions'}"

    @property
    def pass_mark(self):
        """The lowest number of right answers that passes."""
        return -(-self.length * 8 // 10)

    def asked(self, number):
        """The question that is asked in place of `number`: 74 replaces the last three."""
        return min(number, 74)


QUIZZES = {
    quiz.id: quiz
    for quiz in (
        Quiz(1, "Terminology", 14, range(1, 15)),
        Quiz(2, "Variables", 19, range(15, 34)),
        Quiz(3, "Methods", 10, range(34, 44)),
        Quiz(4, "Functions", 11, range(44, 55)),
        Quiz(5, "Structure", 7, range(55, 62)),
        Quiz(6, "Syntax", 16, range(62, 78)),
        Quiz(7, "Main Test", 30, range(1, 78), "The final: 30 questions drawn from all six"),
    )
}

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

SEEDS = {"currentTest": "0", "currentStatus": "0", "firstRun": "false"} | {
    f"quiz{quiz}": "0" for quiz in QUIZZES
}


@dataclass
class Learner:
    """Uses the program with the mouse, unless told otherwise, and remembers what should come of it:
    the content of the store, and what the program writes to its log.
    """

    display: object
    command: str
    home: Path
    environment: dict = field(default_factory=dict)
    program_type: type = Program
    program: Program = None
    store: dict = field(default_factory=dict)
    log: list = field(default_factory=list)

    # From start to end

    def start(self):
        homes = {"XDG_CONFIG_HOME": str(self.home)}
        self.program = self.program_type(self.display, self.command, homes | self.environment)
        self.log = ["Finished Starting"]

    def start_for_the_first_time(self):
        self.start()
        return self.greeted()

    def greeted(self):
        """Goes on from the greeting to the main menu."""
        self.program.wait_for_window(GREETING)
        self.store = dict(SEEDS)
        assert self.stored() == self.store
        self.dismiss(GREETING, "OK")
        return self.program.wait_for_window("Zorvan")

    def quit(self):
        self.program.press("ctrl+q")
        self.expect_the_end()

    def expect_the_end(self):
        assert self.program.exit_status() == 0, self.program.log_lines()
        written = self.program.log_lines()
        assert written == self.log, f"the program wrote {written} instead of {self.log}"

    def come_back(self):
        """Quits, starts again, and checks that everything is as it was."""
        self.quit()
        assert self.stored() == self.store
        self.start()
        menu = self.program.wait_for_window("Zorvan")
        self.expect_levels(menu)
        assert self.program.windows() == [menu]
        assert self.stored() == self.store
        return menu

    # The store

    def stored(self):
        file = self.home / "Zorvan/Zorvan.conf"
        lines = file.read_text("utf-8").splitlines() if file.exists() else []
        return dict(line.split("=", 1) for line in lines if "=" in line)

    def passes(self, quiz):
        return int(self.store[f"quiz{quiz.id}"])

    # Windows

    def dismiss(self, message, button):
        alert = self.program.wait_for_window(message)
        self.program.click_button(button, alert)
        self.program.wait_until_gone(alert)

    def abandon(self, button):
        """Answers the question whether to leave a quiz."""
        self.dismiss(ABANDON, button)

    def expect_levels(self, menu):
        words = [f"{self.passes(quiz)} of 3 passes" for quiz in QUIZZES.values()]
        total = sum(self.passes(quiz) for quiz in QUIZZES.values())
        levels = [f"{quiz.name}, {level}" for quiz, level in zip(QUIZZES.values(), words)]
        found = self.program.wait_for_all(
            menu,
            *((Role.PUSH_BUTTON, quiz.button) for quiz in QUIZZES.values()),
            *((Role.PROGRESS_BAR, level) for level in levels),
            (Role.PROGRESS_BAR, f"All quizzes, {total} of 21 passes"),
        )
        descriptions = [description_of(button) for button in found[: len(QUIZZES)]]
        assert descriptions == [
            level + self.standing(quiz) for quiz, level in zip(QUIZZES.values(), words)
        ]

    def standing(self, quiz):
        """What the main menu says about a quiz beside its level."""
        if self.passes(quiz) == 3:
            return ", mastered"
        first = next(quiz for quiz in QUIZZES.values() if self.passes(quiz) < 3)
        return ", next" if quiz == first else ""

    def newest_menu(self):
        """The main menu that the results opened last, in front of the others."""
        total = sum(self.passes(quiz) for quiz in QUIZZES.values())
        level = f"All quizzes, {total} of 21 passes"
        menu = self.program.wait_until(
            "a main menu is up to date",
            lambda: [
                menu
                for menu in self.program.windows("Zorvan")
                if self.program.find(Role.PROGRESS_BAR, level, menu)
            ],
        )[0]
        self.program.bring_to_front(menu)
        self.expect_levels(menu)
        return menu

    def choose_menu_item(self, menu, item):
        window = self.program.windows()[0]
        self.program.click_button(menu, window, Role.MENU_ITEM)
        self.program.click_button(item, window, Role.MENU_ITEM)

    def set_timed(self, menu):
        """Makes quizzes timed from here on, and returns the settings window."""
        self.program.click_button("Settings", menu)
        settings = self.program.wait_for_window("Settings")
        timed = "Timed: about 15 seconds a question"
        self.program.click_button(timed, settings, Role.RADIO_BUTTON)
        self.store["timedQuizzes"] = "yes"
        return settings

    # Quizzes

    def open_quiz(self, quiz, menu):
        self.program.click_button(quiz.button, menu)
        self.store["currentTest"] = str(quiz.id)
        return Attempt(self, quiz, self.program.wait_for_window(quiz.name))

    def take(self, quiz, menu, wrong=0):
        """Takes a quiz from the main menu to its results, with that many wrong answers, and
        returns the window with the results.
        """
        attempt = self.open_quiz(quiz, menu)
        attempt.answer_all(wrong)
        return self.expect_results(attempt)

    def expect_results(self, attempt):
        quiz = attempt.quiz
        self.program.wait_until_gone(attempt.window)
        passed = attempt.right >= quiz.pass_mark
        if passed:
            self.store[f"quiz{quiz.id}"] = str(min(self.passes(quiz) + 1, 3))
        self.store |= {"currentTest": str(quiz.id), "currentStatus": "pass" if passed else "fail"}
        self.log.append(str(quiz.id))
        return self.expect_outcome(quiz, PASSED[self.passes(quiz)] if passed else FAILED)

    def expect_outcome(self, quiz, sentence):
        results = self.program.wait_for_window("Results")
        marks = ["earned" if mark <= self.passes(quiz) else "missing" for mark in (1, 2, 3)]
        self.program.wait_for_all(
            results,
            (Role.LABEL, quiz.name),
            (Role.LABEL, sentence),
            *((Role.IMAGE, f"Pass mark {mark}: {state}") for mark, state in enumerate(marks, 1)),
        )
        assert self.stored() == self.store
        return results


class Attempt:
    """One quiz window, as the learner sees it."""

    def __init__(self, learner, quiz, window):
        self.learner = learner
        self.program = learner.program
        self.quiz = quiz
        self.window = window
        self.asked = []
        self.right = 0
        self.buttons = []
        self.next_question = None

    def question(self):
        """The question on screen, once it is the next one."""
        position = f"Question {len(self.asked) + 1} of {self.quiz.length}"
        _, label, *self.buttons = self.program.wait_for_all(
            self.window,
            (Role.LABEL, position),
            (Role.LABEL, NUMBER_OF),
            *((Role.PUSH_BUTTON, re.compile(f"{letter}: .*")) for letter in "ABC"),
        )
        question = QUESTION[NUMBER_OF[name_of(label)]]
        assert [name_of(button) for button in self.buttons] == answer_names(question)
        usable = [True, True, not question["thirdButtonOff"]]
        assert [has(button, State.ENABLED) for button in self.buttons] == usable
        return question

    def answer(self, right=True, keys=""):
        """Answers the question on screen, with the mouse or with the keys for the three answers,
        and returns it.
        """
        question = self.question()
        choice = question["right"] if right else 3 - min(question["right"], 2)
        if keys:
            self.program.press(keys[choice - 1])
        else:
            self.program.click(self.buttons[choice - 1])
        self.count(question, right)
        return question

    def count(self, question, right):
        self.asked.append(question["number"])
        self.right += right

    def expect_verdict(self, right):
        answered = len(self.asked)
        percent = f"{self.right / answered * 100:.0f}{' ' if right else ''}%"
        *_, self.next_question = self.program.wait_for_all(
            self.window,
            (Role.LABEL, "correct" if right else "wrong"),
            (Role.LABEL, f"Score: {percent}"),
            (Role.PUSH_BUTTON, "Next Question"),
        )

    def go_on(self):
        self.program.click(self.next_question)

    def answer_all(self, wrong=0):
        """Answers all remaining questions, the last `wrong` of them wrongly."""
        while len(self.asked) < self.quiz.length:
            right = len(self.asked) < self.quiz.length - wrong
            self.answer(right)
            if len(self.asked) < self.quiz.length:
                self.expect_verdict(right)
                self.go_on()


def answer_names(question):
    """The names of the buttons of a question's answers."""
    return [
        f"{letter}: {answer or 'empty'}" for letter, answer in zip("ABC", question["answers"])
    ]
