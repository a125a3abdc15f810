"""Displays that programs are shown on."""

import contextlib
import os
import re
import subprocess

from session import PATIENCE, Stuck, wait_until

# Keys that are sent by number: by name, xdotool also holds Alt if a newer keyboard layout lists the
# key with Alt as well.
KEY_CODES = {"F1": 67}


class Display:
    """A virtual X server with a window manager, where programs are used with the real pointer and
    keyboard. It lives in a `with` block.
    """

    client_list = "_NET_CLIENT_LIST_STACKING"

    def __init__(self, session, size="1280x720", options=""):
        self.session = session
        self.size = size
        self._options = options

    def __enter__(self):
        self._server, number = self.session.spawn_server(
            "display",
            lambda pipe: f"Xvfb -displayfd {pipe} -screen 0 {self.size}x24 -dpi 96 -noreset"
            f" {self._options}",
        )
        self.environment = {"DISPLAY": f":{number}", "QT_QPA_PLATFORM": "xcb"}
        self._manager = self.start_manager()
        return self

    def __exit__(self, *_):
        self.session.end(self._manager)
        self.session.end(self._server)

    def start_manager(self):
        """Starts the window manager, and waits until it manages windows."""
        # It gives its name before it is ready, and never focuses windows that open in between.
        manager = self.session.spawn(
            "openbox",
            ["openbox", "--sm-disable", "--startup", "xprop -root -f READY 32c -set READY 1"],
            self.environment,
        )
        wait_until(
            "the window manager is ready", lambda: "= 1" in self.run("xprop", "-root", "READY")
        )
        return manager

    def click(self, x, y, button=1):
        self.run("xdotool", "mousemove", x, y, "click", button)

    def press(self, *keys):
        """Types keys, such as "Tab" or "ctrl+q", into the window with the focus."""
        self.run("xdotool", "key", *(KEY_CODES.get(key, key) for key in keys))

    @contextlib.contextmanager
    def holding(self, *keys):
        """Holds keys down, so that the last of them repeats."""
        self.run("xdotool", "keydown", *keys)
        yield
        self.run("xdotool", "keyup", *reversed(keys))

    def activate(self, x_window):
        """Activates a window, as a click in a task bar does."""
        self.run("xdotool", "windowactivate", x_window)

    def put_pointer_aside(self):
        self.run("xdotool", "mousemove", *self.size.split("x"))

    def windows(self):
        """Left, top, width and height of each managed window by its X id, topmost first."""
        places = self._places()
        listed = re.findall(r"0x[0-9a-f]+", self.run("xprop", "-root", self.client_list))
        return {x_window: places[x_window] for x_window in reversed(listed) if x_window in places}

    def _places(self):
        # It fails if a window closes meanwhile.
        tree = self.attempt("xwininfo", "-root", "-tree").stdout
        line = r"(0x[0-9a-f]+) .* (\d+)x(\d+)\S+  \+(-?\d+)\+(-?\d+)$"
        return {
            x_window: (int(left), int(top), int(width), int(height))
            for x_window, width, height, left, top in re.findall(line, tree, re.MULTILINE)
        }

    def frame(self, x_window):
        """Left, top, width and height of a window with its frame."""
        left, top, width, height = self._places()[x_window]
        extents = self.run("xprop", "-id", x_window, "_NET_FRAME_EXTENTS")
        before, after, above, below = (int(n) for n in re.findall(r"\d+", extents))
        return left - before, top - above, width + before + after, height + above + below

    def picture(self, file, x_window=None):
        """Saves a picture of a window with its frame, or of the whole screen, as it is."""
        source = ["-frame", "-window", x_window] if x_window else ["-window", "root"]
        self.run("import", "-silent", *source, file)

    def differing_pixels(self, before, after):
        """How many pixels of two pictures differ; None if they cannot be compared."""
        metric = ("compare", "-metric", "AE", before, after, "null:")
        # ImageMagick 7 also writes their share.
        number = re.match(r"[\d.]+(e\+\d+)?", self.attempt(*metric).stderr)
        return float(number[0]) if number else None

    def attempt(self, *command):
        """Runs a command to its end."""
        return subprocess.run(
            [str(part) for part in command],
            env=os.environ | self.environment,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            text=True,
            timeout=PATIENCE,
        )

    def run(self, *command):
        """What a command writes; raises Stuck if it fails."""
        done = self.attempt(*command)
        if done.returncode != 0:
            raise Stuck(f"{command[0]} failed: {done.stderr.strip()}")
        return done.stdout
