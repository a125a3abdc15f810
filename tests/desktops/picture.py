"""Saves a picture of the program on KDE's desktop: the main menu, and beside it a quiz.

    picture.py PROGRAM FILE
"""

import signal
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent.parent / "e2e"))

from desktops import KWinX11
from learner import Learner
from quizzes import ABANDON, STRUCTURE
from session import Session, Stuck, wait_until

COLOURS = Path("/usr/share/color-schemes/BreezeLight.colors")
# The font of the other pictures.
FONT = "Cantarell,11,-1,5,50,0,0,0,0,0"
SCALE = 2
# In pixels at scale 1: around the windows, between them, and how much lower the quiz is.
MARGIN, GAP, DROP = 40, 20, 56
QUESTION = "What will be displayed?\n$counter = 1;"


class Kde(KWinX11):
    def start_manager(self):
        config = self.session.folder / "home/.config"
        config.mkdir()
        settings = f"[General]\nfont={FONT}\nmenuFont={FONT}\n[WM]\nactiveFont={FONT}\n"
        (config / "kdeglobals").write_text(settings + COLOURS.read_text("utf-8"), "utf-8")
        self.environment |= {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"}
        name, value = "RESOURCE_MANAGER", f"Xft.dpi:\t{96 * SCALE}"
        self.run("xprop", "-root", "-f", name, "8s", "-set", name, value)
        return super().start_manager()

    def spawn_manager(self, environment=()):
        # Windows have shadows only if they are composed with OpenGL.
        return super().spawn_manager(dict(environment) | {"KWIN_COMPOSE": "O2"})

    def spawn_background(self, colour):
        program = Path(__file__).with_name("background.py")
        environment = self.environment | {"NO_AT_BRIDGE": "1"}
        self.session.spawn("background", ["/usr/bin/python3", program, colour], environment)
        wait_until("there is a background", self.windows)

    def move(self, x_window, left, top):
        """Moves a window to a place, which does not count its frame."""
        self.run("xdotool", "windowmove", x_window, left, top)
        wait_until("the window has moved", lambda: self.windows()[x_window][:2] == (left, top))


def main():
    program, file = (Path(argument).absolute() for argument in sys.argv[1:])
    for number in (signal.SIGHUP, signal.SIGINT, signal.SIGTERM):
        signal.signal(number, lambda *_: sys.exit("The picture was given up."))
    try:
        with Session() as session, Kde(session, size="3200x2000") as display:
            learner = Learner(display, program, session.folder / "home/.config")
            # Otherwise the accessibility bus would count in larger pixels than the display.
            learner.environment = {"QT_ENABLE_HIGHDPI_SCALING": "0"}
            take(learner, file)
    except (Stuck, AssertionError) as problem:
        sys.exit(f"There is no picture: {problem}")


def take(learner, file):
    display = learner.display
    display.spawn_background("#c3cfdd")
    menu = learner.start_again(quiz1="3", quiz2="3", quiz3="3", quiz4="3", quiz5="1")
    program = learner.program
    quiz = open_quiz(learner, menu).window
    menu_window, quiz_window = (program.x_window(window) for window in (menu, quiz))
    left, top = 2 * MARGIN * SCALE, 2 * MARGIN * SCALE
    display.move(menu_window, left, top)
    *_, width, _ = display.windows()[menu_window]
    display.move(quiz_window, left + width + GAP * SCALE, top + DROP * SCALE)
    program.bring_to_front(menu)
    program.picture(file)
    display.part(file, around(display.frame(menu_window), display.frame(quiz_window)))


def around(*places):
    """The area around some places, with a margin."""
    lefts, tops, widths, heights = zip(*places)
    left, top = min(lefts), min(tops)
    right = max(map(sum, zip(lefts, widths)))
    bottom = max(map(sum, zip(tops, heights)))
    margin = MARGIN * SCALE
    return left - margin, top - margin, right - left + 2 * margin, bottom - top + 2 * margin


def open_quiz(learner, menu):
    """A quiz whose third question, which has code, was just answered."""
    program = learner.program
    while True:
        program.bring_to_front(menu)
        attempt = learner.open_quiz(STRUCTURE, menu)
        while attempt.answered < 2 and not is_wanted(attempt.question()):
            attempt.answer(keys="abc")
            attempt.go_on("Return")
        found = attempt.answered == 2 and is_wanted(attempt.question())
        # With the mouse, which hides the focus.
        attempt.answer()
        if found:
            return attempt
        program.press("ctrl+w")
        learner.dismiss(ABANDON, "Yes")
        program.wait_until_gone(attempt.window)


def is_wanted(question):
    return question["text"].startswith(QUESTION)


if __name__ == "__main__":
    main()
