"""Starts the installed program as its desktop entry says, and uses it.

    desktop.py pass HOME    for the first time: a quiz is passed
    desktop.py find HOME    later: that pass is still there
"""

import sys
from pathlib import Path
from shutil import which

sys.path.insert(0, str(Path(__file__).parent.parent / "e2e"))

from gi.repository import Gio

from display import Display
from learner import Learner
from quizzes import STRUCTURE
from session import Session, Stuck


def main():
    task, home = sys.argv[1:]
    program = which(Gio.DesktopAppInfo.new("org.zorvan.Zorvan.desktop").get_executable())
    with Session() as session, Display(session) as display:
        learner = Learner(display, program, Path(home) / ".config")
        try:
            if task == "pass":
                learner.take(STRUCTURE, learner.start_for_the_first_time())
            else:
                learner.store = learner.stored()
                learner.start()
                learner.expect_levels(learner.program.wait_for_window("Zorvan"))
            assert learner.passes(STRUCTURE) == 1
            learner.quit()
        except (AssertionError, Stuck):
            print(learner.program.tree(), *learner.program.log_lines(), sep="\n", file=sys.stderr)
            raise
    print({"pass": "A quiz was passed", "find": "The pass is still there"}[task])


if __name__ == "__main__":
    main()
