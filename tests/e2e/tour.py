"""Takes one quiz from the main menu to its results, as a learner does, and saves a picture of
each window on the way.

    tour.py PROGRAM FOLDER
"""

import signal
import sys
import tempfile
import traceback
from pathlib import Path

from accessible import Role
from display import Display
from learner import Learner
from quizzes import GREETING, STRUCTURE
from session import Session, Stuck


def main():
    program, folder = (Path(argument).absolute() for argument in sys.argv[1:])
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.glob("*.png"):
        old.unlink()
    for number in (signal.SIGHUP, signal.SIGINT, signal.SIGTERM):
        signal.signal(number, lambda *_: sys.exit("The tour was ended."))
    with Session() as session, Display(session) as display, tempfile.TemporaryDirectory() as home:
        tour = Tour(Learner(display, program, Path(home)), folder)
        try:
            tour.take()
        except (Stuck, AssertionError) as problem:
            tour.program.leave_evidence(folder)
            # Most assertions have no message: their line of code says what they want.
            reason = str(problem) or traceback.extract_tb(problem.__traceback__)[-1].line
            sys.exit(f"The tour failed: {reason}. How far it came is in {folder}")
    print(f"The tour is complete. Its pictures are in {folder}")


class Tour:
    def __init__(self, learner, folder):
        self.learner = learner
        self.folder = folder
        self.pictures = 0

    @property
    def program(self):
        return self.learner.program

    def take(self):
        self.learner.start()
        self.program.wait_for_window(GREETING)
        self.picture("greeting")
        menu = self.learner.greeted()
        self.picture("main menu", menu)

        self.learner.choose_menu_item("Help", "Zorvan Help")
        self.picture_of("Help")
        self.program.click_button("Close")

        attempt = self.learner.open_quiz(STRUCTURE, self.program.wait_for_window("Zorvan"))
        attempt.question()
        self.picture("question", attempt.window)
        attempt.answer()
        self.picture("answer", attempt.window)
        attempt.go_on()
        attempt.answer_all()
        self.picture("results", self.learner.expect_results(attempt))

        menu = self.learner.newest_menu()
        self.picture("main menu after a pass", menu)
        self.program.click_button("Progress", menu)
        progress = self.picture_of("Progress")
        self.program.wait_for(Role.LABEL, f"{STRUCTURE.name}: 33%", progress)
        self.program.bring_to_front(menu)
        self.program.click_button("Settings", menu)
        self.picture_of("Settings")
        self.learner.quit()

    def picture_of(self, title):
        window = self.program.wait_for_window(title)
        self.picture(title.lower(), window)
        return window

    def picture(self, name, window=None):
        self.pictures += 1
        file = self.folder / f"{self.pictures:02}-{name.replace(' ', '-')}.png"
        self.program.picture(file, window)
        print(f"  {file.name}", flush=True)


if __name__ == "__main__":
    main()
