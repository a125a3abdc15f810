"""Takes one quiz from the main menu to its results, as a learner does, and saves a picture of
each window on the way.

    tour.py PROGRAM FOLDER
"""

import signal
import sys
import tempfile
import traceback
from itertools import count
from pathlib import Path

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
        learner = Learner(display, program, Path(home))
        try:
            take_tour(learner, Album(learner, folder))
        except (Stuck, AssertionError) as problem:
            learner.program.leave_evidence(folder)
            # Most assertions have no message: their line of code says what they want.
            reason = str(problem) or traceback.extract_tb(problem.__traceback__)[-1].line
            sys.exit(f"The tour failed: {reason}. How far it came is in {folder}")
    print(f"The tour is complete. Its pictures are in {folder}")


def take_tour(learner, album):
    learner.start()
    album.add("greeting", GREETING)
    learner.greeted()
    menu = album.add("main menu", "Zorvan")
    learner.choose_menu_item("Help", "Zorvan Help")
    album.add("help", "Help")
    learner.program.click_button("Close")

    attempt = learner.open_quiz(STRUCTURE, menu)
    attempt.question()
    album.add("question", STRUCTURE.name)
    attempt.answer()
    album.add("answer", STRUCTURE.name)
    attempt.go_on()
    attempt.answer_all()
    learner.expect_results(attempt)
    album.add("results", "Results")

    menu = learner.newest_menu()
    album.add("main menu after a pass", "Zorvan")
    learner.program.click_button("Progress", menu)
    album.add("progress", "Progress")
    learner.program.bring_to_front(menu)
    learner.program.click_button("Settings", menu)
    album.add("settings", "Settings")
    learner.quit()


class Album:
    """Numbered pictures of windows."""

    def __init__(self, learner, folder):
        self._learner = learner
        self._folder = folder
        self._numbers = count(1)

    def add(self, name, title):
        """Takes a picture of the window of that title, and returns the window."""
        window = self._learner.program.wait_for_window(title)
        file = self._folder / f"{next(self._numbers):02}-{name.replace(' ', '-')}.png"
        self._learner.program.picture(file, window)
        print(f"  {file.name}", flush=True)
        return window


if __name__ == "__main__":
    main()
