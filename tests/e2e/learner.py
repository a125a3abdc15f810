"""A learner: what one does with the program, and what one may expect of it."""

from dataclasses import dataclass, field
from pathlib import Path

from accessible import Role, description_of
from attempt import Attempt
from program import Program
from quizzes import ABANDON, FAILED, GREETING, PASSED, QUIZZES, SEEDS


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

    def start_again(self, **settings):
        """Starts the program for somebody who has used it before, and returns the main menu."""
        self.store = SEEDS | settings
        self.store_file.parent.mkdir()
        lines = (f"{key}={value}\n" for key, value in self.store.items())
        self.store_file.write_text("[General]\n" + "".join(lines), "utf-8")
        self.start()
        return self.program.wait_for_window("Zorvan")

    def quit(self):
        self.program.press("ctrl+q")
        self.expect_the_end()

    def expect_the_end(self):
        assert self.program.exit_status() == 0, self.program.log_lines()
        assert self.program.log_lines() == self.log
        assert self.stored() == self.store

    def come_back(self):
        """Quits, starts again, and checks that everything is as it was."""
        self.quit()
        self.start()
        menu = self.program.wait_for_window("Zorvan")
        self.expect_levels(menu)
        assert self.program.windows() == [menu]
        assert self.stored() == self.store
        return menu

    @property
    def store_file(self):
        return self.home / "Zorvan/Zorvan.conf"

    def stored(self):
        text = self.store_file.read_text("utf-8") if self.store_file.exists() else ""
        return dict(line.split("=", 1) for line in text.splitlines() if "=" in line)

    def passes(self, quiz):
        return int(self.store[f"quiz{quiz.id}"])

    def dismiss(self, message, button):
        alert = self.program.wait_for_window(message)
        self.program.click_button(button, alert)
        self.program.wait_until_gone(alert)

    def choose_menu_item(self, menu, item):
        window = self.program.windows()[0]
        self.program.click_button(menu, window, Role.MENU_ITEM)
        self.program.click_button(item, window, Role.MENU_ITEM)

    def expect_levels(self, menu):
        levels = {quiz: f"{self.passes(quiz)} of 3 passes" for quiz in QUIZZES.values()}
        found = self.program.wait_for_all(
            menu,
            *((Role.PUSH_BUTTON, quiz.button) for quiz in levels),
            *((Role.PROGRESS_BAR, f"{quiz.name}, {level}") for quiz, level in levels.items()),
            (Role.PROGRESS_BAR, self.whole_level()),
        )
        next_one = next((quiz for quiz in levels if self.passes(quiz) < 3), None)
        for (quiz, level), button in zip(levels.items(), found):
            mastered = ", mastered" if self.passes(quiz) == 3 else ""
            assert description_of(button) == level + (", next" if quiz == next_one else mastered)

    def whole_level(self):
        total = sum(self.passes(quiz) for quiz in QUIZZES.values())
        return f"All quizzes, {total} of 21 passes"

    def newest_menu(self):
        """The main menu that the results opened last, in front of the others."""
        menu = self.program.wait_until(
            "a main menu is up to date",
            lambda: [
                menu
                for menu in self.program.windows("Zorvan")
                if self.program.find(Role.PROGRESS_BAR, self.whole_level(), menu)
            ],
        )[0]
        self.program.bring_to_front(menu)
        self.expect_levels(menu)
        return menu

    def open_quiz(self, quiz, menu):
        self.program.click_button(quiz.button, menu)
        return self.attempt(quiz)

    def attempt(self, quiz):
        """The attempt at a quiz that was just opened."""
        attempt = Attempt(self.program, quiz)
        self.store["currentTest"] = str(quiz.id)
        return attempt

    def take(self, quiz, menu, wrong=0):
        """Takes a quiz from the main menu to its results, with that many wrong answers, and
        returns the window with the results.
        """
        attempt = self.open_quiz(quiz, menu)
        attempt.answer_all(wrong)
        return self.expect_results(attempt)

    def abandon(self, quiz, menu):
        """Closes a quiz half-way: goes on once when asked, then does not."""
        attempt = self.open_quiz(quiz, menu)
        attempt.answer()
        self.program.press("alt+F4")
        self.dismiss(ABANDON, "No")
        attempt.go_on()
        attempt.answer(right=False)
        self.program.press("alt+F4")
        self.dismiss(ABANDON, "Yes")
        self.program.wait_until_gone(attempt.window)

    def expect_results(self, attempt):
        quiz = attempt.quiz
        if attempt.passes:
            self.store[f"quiz{quiz.id}"] = str(min(self.passes(quiz) + 1, 3))
        sentence = PASSED[self.passes(quiz)] if attempt.passes else FAILED
        return self.expect_outcome(attempt, "pass" if attempt.passes else "fail", sentence)

    def expect_outcome(self, attempt, status, sentence):
        quiz = attempt.quiz
        self.program.wait_until_gone(attempt.window)
        self.store |= {"currentTest": str(quiz.id), "currentStatus": status}
        self.log.append(str(quiz.id))
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
