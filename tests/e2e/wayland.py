"""Programs on Wayland: a compositor without a pointer, a keyboard or a focus, and programs that are
used without them.
"""

import os
import re
import subprocess
from pathlib import Path

from gi.repository import Atspi

from accessible import State, action_names, ask, describe, has
from program import Program
from session import PATIENCE, Stuck, wait_until


class WaylandDisplay:
    """A Wayland compositor with a virtual screen. It lives in a `with` block."""

    def __init__(self, session):
        self.session = session
        self.environment = {"WAYLAND_DISPLAY": "headless", "QT_QPA_PLATFORM": "wayland"}

    def __enter__(self):
        # Pictures and the list of windows are available only with --debug.
        command = (
            "weston --backend=headless-backend.so --use-pixman --width=1280 --height=720"
            f" --no-config --idle-time=0 --debug --socket={self.environment['WAYLAND_DISPLAY']}"
        )
        self._server = self.session.spawn("weston", command.split())
        socket = Path(os.environ["XDG_RUNTIME_DIR"]) / self.environment["WAYLAND_DISPLAY"]
        wait_until("the compositor is ready", socket.is_socket)
        return self

    def __exit__(self, *_):
        self.session.end(self._server)

    def titles(self):
        """The titles of all windows that are on the screen, in alphabetical order."""
        return sorted(title for title, _ in self._windows())

    def programs(self):
        """The names, as in desktop entries, of the programs whose windows are on the screen."""
        return {program for _, program in self._windows()}

    def _windows(self):
        scene = self._run("weston-debug", "scene-graph")
        return re.findall(r"role xdg_toplevel, .*top-level window '(.*)' of ([\w.-]+)", scene)

    def picture(self, file):
        """Saves a picture of the whole screen, as it is, under a name that has the time."""
        self._run("weston-screenshooter", XDG_PICTURES_DIR=str(file.parent))

    def _run(self, *command, **environment):
        """What a command writes; raises Stuck if it fails."""
        try:
            return subprocess.run(
                command,
                env=os.environ | self.environment | environment,
                stdin=subprocess.DEVNULL,
                capture_output=True,
                text=True,
                timeout=PATIENCE,
                check=True,
            ).stdout
        except subprocess.SubprocessError as error:
            raise Stuck(f"{error}: {error.stderr}") from error


class ActionProgram(Program):
    """A program that is used through the actions that its controls offer, as with a switch or a
    screen reader. No window has the focus, and places on the screen are unknown.
    """

    def wait_for_window(self, title):
        """The window of that title, once it is shown."""
        return self.wait_until(f'the window "{title}" is shown', lambda: self.windows(title))[0]

    def click(self, item):
        """Does what a click would do."""
        self.wait_until(f"{describe(item)} is enabled", lambda: has(item, State.ENABLED))
        names = action_names(item)
        usable = [index for index, name in enumerate(names) if name in ("Press", "ShowMenu")]
        if not usable:
            raise Stuck(f"{describe(item)} cannot be pressed, its only actions are {names}")
        ask(Atspi.Action.do_action, item, usable[0])
