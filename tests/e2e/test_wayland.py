"""A quiz under weston, without pointer, keyboard and focus."""

import os
import re
import subprocess
import tempfile
from pathlib import Path
from shutil import move

import pytest

from accessible import Role, ask, children, name_of
from program import ActionProgram
from quizzes import STRUCTURE
from session import PATIENCE, wait_until

# There is no other way to learn an action's name.
pytestmark = pytest.mark.filterwarnings("ignore:Atspi.Action.get_action_name is deprecated")


class Weston:
    """A Wayland compositor with a virtual screen. It lives in a `with` block."""

    def __init__(self, session):
        self.session = session
        self.environment = {"WAYLAND_DISPLAY": "headless", "QT_QPA_PLATFORM": "wayland"}

    def __enter__(self):
        # Pictures and the list of windows are available only with --debug.
        command = (
            "weston --backend=headless-backend.so --use-pixman --width=1280 --height=720"
            " --no-config --idle-time=0 --debug --socket=headless"
        )
        self._server = self.session.spawn("weston", command.split())
        socket = Path(os.environ["XDG_RUNTIME_DIR"]) / "headless"
        wait_until("the compositor is ready", socket.is_socket)
        return self

    def __exit__(self, *_):
        self.session.end(self._server)

    def windows(self):
        """The titles of all windows on the screen, in alphabetical order, and the programs' names
        as in desktop entries.
        """
        scene = self._run("weston-debug", "scene-graph")
        found = re.findall(r"role xdg_toplevel, .*top-level window '(.*)' of ([\w.-]+)", scene)
        return sorted(title for title, _ in found), {program for _, program in found}

    def picture(self, file):
        with tempfile.TemporaryDirectory(dir=self.session.folder) as folder:
            self._run("weston-screenshooter", XDG_PICTURES_DIR=folder)
            [picture] = Path(folder).iterdir()
            move(picture, file)

    def _run(self, *command, **environment):
        environment = os.environ | self.environment | environment
        return subprocess.check_output(command, env=environment, text=True, timeout=PATIENCE)


class FocuslessProgram(ActionProgram):
    def wait_for_window(self, title):
        return self.wait_until(f'the window "{title}" is shown', lambda: self.windows(title))[0]


@pytest.fixture(scope="module")
def display(session):
    with Weston(session) as display:
        yield display


@pytest.fixture
def learner(learner):
    learner.program_type = FocuslessProgram
    return learner


def test_a_quiz_is_passed_on_wayland(learner):
    menu = learner.start_for_the_first_time()
    expect_on_screen(learner.display, "Zorvan")
    # The compositor finds the icon by this name.
    assert learner.display.windows()[1] == {"org.zorvan.Zorvan"}
    learner.take(STRUCTURE, menu)
    expect_on_screen(learner.display, "Results — Zorvan", "Zorvan", "Zorvan")
    # Newer Qt opens no menu before something is clicked or typed, which never happens here.
    [quit_item, *_] = menu_items(learner.program.windows()[0], "Quit")
    learner.program.click(quit_item)
    learner.expect_the_end()


def menu_items(item, name):
    """The menu items of that name inside `item`, shown or not."""
    for child in children(item):
        if ask(child.get_role) == Role.MENU_ITEM and name_of(child) == name:
            yield child
        yield from menu_items(child, name)


def expect_on_screen(display, *titles):
    """Waits until the compositor shows exactly these windows, whatever the program says."""
    wait_until(f"the windows {titles} are on screen", lambda: display.windows()[0] == list(titles))
