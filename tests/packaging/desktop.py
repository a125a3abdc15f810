"""Starts the installed program as a desktop does, by its desktop entry, and uses it.

    desktop.py pass HOME    for the first time: a quiz is passed
    desktop.py find HOME    later: that pass is still there
"""

import os
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent.parent / "e2e"))

from gi.repository import Gio, GLib

from learner import QUIZZES, Learner
from program import Program
from session import Display, Session, Stuck

ENTRY = "org.zorvan.Zorvan.desktop"
QUIZ = QUIZZES[5]


def main():
    task, home = sys.argv[1:]
    with Session() as session, Display(session) as display:
        learner = Learner(display, ENTRY, Path(home) / ".config", program_type=LaunchedProgram)
        try:
            {"pass": pass_a_quiz, "find": find_the_pass}[task](learner)
            assert learner.passes(QUIZ) == 1
            learner.quit()
            assert learner.stored() == learner.store
        except (AssertionError, Stuck):
            print(learner.program.tree(), *learner.program.log_lines(), sep="\n", file=sys.stderr)
            raise


def pass_a_quiz(learner):
    learner.take(QUIZ, learner.start_for_the_first_time())
    print("A quiz was passed")


def find_the_pass(learner):
    learner.store = learner.stored()
    learner.start()
    learner.expect_levels(learner.program.wait_for_window("Zorvan"))
    print("The pass is still there")


class LaunchedProgram(Program):
    """A program that a desktop starts by its entry."""

    def spawn(self, entry, environment):
        context = Gio.AppLaunchContext()
        for variable, value in environment.items():
            context.setenv(variable, value)
        launched = []
        with self._log.open("ab") as log:
            Gio.DesktopAppInfo.new(entry).launch_uris_as_manager_with_fds(
                [],
                context,
                GLib.SpawnFlags.SEARCH_PATH | GLib.SpawnFlags.DO_NOT_REAP_CHILD,
                None,
                None,
                lambda _, pid, *data: launched.append(LaunchedProcess(pid)),
                None,
                -1,
                log.fileno(),
                log.fileno(),
            )
        return launched[0]


class LaunchedProcess:
    """The part of Popen that is needed, for a child that was started by something else."""

    def __init__(self, pid):
        self.pid = pid
        self.returncode = None

    def poll(self):
        if self.returncode is None:
            ended, status = os.waitpid(self.pid, os.WNOHANG)
            if ended:
                self.returncode = os.waitstatus_to_exitcode(status)
        return self.returncode


if __name__ == "__main__":
    main()
