"""Takes one quiz from the main menu to its results, as a learner does, and saves a picture of
each window on the way.

    tour.py PROGRAM FOLDER
"""

import json
import re
import signal
import sys
from pathlib import Path

from desktop import Desktop, Role, State, Stuck, has, name_of

QUIZ, QUIZ_ID, QUESTIONS = "Structure", "5", 7

BANK = json.loads((Path(__file__).parent.parent / "data/questions.json").read_text("utf-8"))
RIGHT_ANSWERS = {
    question["text"]: "ABC"[question["right"] - 1]
    + ": "
    + question["answers"][question["right"] - 1]
    for question in BANK
}


def main():
    program, folder = (Path(argument).absolute() for argument in sys.argv[1:])
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.glob("*.png"):
        old.unlink()
    for number in (signal.SIGHUP, signal.SIGINT, signal.SIGTERM):
        signal.signal(number, lambda *_: sys.exit("The tour was ended."))
    try:
        with Desktop() as desktop:
            try:
                desktop.start(program)
                Tour(desktop, folder).take()
            except Stuck:
                desktop.screen(folder / "failed.png")
                print("The program wrote:", *desktop.log_lines(), sep="\n  ", file=sys.stderr)
                raise
    except Stuck as problem:
        sys.exit(f"The tour failed: {problem}. How far it came is in {folder}")
    print(f"The tour is complete. Its pictures are in {folder}")


class Tour:
    def __init__(self, desktop, folder):
        self.desktop = desktop
        self.folder = folder
        self.pictures = 0

    def take(self):
        self.greeting()
        self.main_menu()
        self.help()
        self.quiz()
        self.results()
        self.progress()
        self.settings()
        self.quit()
        self.check_log()
        self.check_store()

    def greeting(self):
        alert = self.desktop.wait_for_window(re.compile("Welcome to Zorvan.*"))
        self.picture("greeting")
        self.click_button("OK", alert)

    def main_menu(self):
        menu = self.desktop.wait_for_window("Zorvan")
        self.desktop.wait_for(Role.PROGRESS_BAR, f"{QUIZ}, 0 of 3 passes", menu)
        self.picture("main menu", menu)

    def help(self):
        menu = self.desktop.wait_for_window("Zorvan")
        self.desktop.click(self.desktop.wait_for(Role.MENU_ITEM, "Help", menu))
        self.desktop.click(self.desktop.wait_for(Role.MENU_ITEM, "Zorvan Help", menu))
        text = self.desktop.wait_for_window("Help")
        self.picture("help", text)
        self.click_button("Close", text)

    def quiz(self):
        menu = self.desktop.wait_for_window("Zorvan")
        self.click_button(f"{QUIZ}: {QUESTIONS} questions", menu)
        quiz = self.desktop.wait_for_window(QUIZ)
        for number in range(1, QUESTIONS + 1):
            self.desktop.wait_for(Role.LABEL, f"Question {number} of {QUESTIONS}", quiz)
            question = self.desktop.wait_for(Role.LABEL, RIGHT_ANSWERS, quiz)
            if number == 1:
                self.picture("question", quiz)
            self.click_button(RIGHT_ANSWERS[name_of(question)], quiz)
            if number == QUESTIONS:
                break
            self.desktop.wait_for(Role.LABEL, "correct", quiz)
            self.desktop.wait_for(Role.LABEL, "Score: 100 %", quiz)
            if number == 1:
                self.picture("answer", quiz)
            self.click_button("Next Question", quiz)
        self.desktop.wait_until("the quiz closes", lambda: not self.desktop.windows(QUIZ))

    def results(self):
        results = self.desktop.wait_for_window("Results")
        self.desktop.wait_for(Role.LABEL, QUIZ, results)
        self.desktop.wait_for(Role.LABEL, re.compile("Congratulations you have passed.*"), results)
        self.picture("results", results)

    def progress(self):
        # Two main menus are open; the first shows what was known when it opened.
        menu = self.desktop.wait_until("a main menu shows the pass", self.menus_with_the_pass)[0]
        self.desktop.bring_to_front(menu)
        self.picture("main menu after a pass", menu)
        self.click_button("Progress", menu)
        progress = self.desktop.wait_for_window("Progress")
        self.desktop.wait_for(Role.LABEL, f"{QUIZ}: 33%", progress)
        self.picture("progress", progress)
        self.desktop.bring_to_front(menu)

    def menus_with_the_pass(self):
        return [
            menu
            for menu in self.desktop.windows("Zorvan")
            if self.desktop.find(Role.PROGRESS_BAR, f"{QUIZ}, 1 of 3 passes", menu)
        ]

    def settings(self):
        self.click_button("Settings", self.desktop.wait_for_window("Zorvan"))
        self.picture("settings", self.desktop.wait_for_window("Settings"))

    def quit(self):
        self.desktop.press("ctrl+q")
        status = self.desktop.exit_status()
        if status != 0:
            raise Stuck(f"the program ended with status {status}")

    def check_log(self):
        expected = ["Finished Starting", QUIZ_ID]
        if self.desktop.log_lines() != expected:
            raise Stuck(f"the program wrote {self.desktop.log_lines()}, not {expected}")

    def check_store(self):
        store = self.desktop.configuration("Zorvan/Zorvan.conf").read_text("utf-8").splitlines()
        for line in (f"quiz{QUIZ_ID}=1", "currentStatus=pass"):
            if line not in store:
                raise Stuck(f"the program's store holds no line {line}")

    def click_button(self, name, window):
        button = self.desktop.wait_for(Role.PUSH_BUTTON, name, window)
        self.desktop.wait_until(f'"{name}" is enabled', lambda: has(button, State.ENABLED))
        self.desktop.click(button)

    def picture(self, name, window=None):
        self.pictures += 1
        file = self.folder / f"{self.pictures:02}-{name.replace(' ', '-')}.png"
        self.desktop.picture(file, window)
        print(f"  {file.name}", flush=True)


if __name__ == "__main__":
    main()
