"""What a program on a virtual desktop needs around it: homes of its own, a session bus, the
accessibility bus, and displays to run on.
"""

import contextlib
import ctypes
import os
import re
import select
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

import pyatspi
from gi.repository import Atspi, GLib

# Seconds that any one thing may take; a tool that watches the program may need more.
PATIENCE = int(os.environ.get("PATIENCE", "60"))

# Keys that are sent by number: by name, xdotool also holds Alt if a newer keyboard layout lists the
# key with Alt as well.
KEY_CODES = {"F1": 67}


class Stuck(Exception):
    """What was waited for did not come."""


def wait_until(what, condition):
    """The first true value of `condition`; raises Stuck, naming `what`, if none comes in time."""
    deadline = time.monotonic() + PATIENCE
    while True:
        # Events of the accessibility bus are delivered here.
        while GLib.MainContext.default().iteration(False):
            pass
        found = condition()
        if found:
            return found
        if time.monotonic() > deadline:
            raise Stuck(f"waited {PATIENCE} seconds in vain: {what}")
        time.sleep(0.03)


class Session:
    """A login session without a display. It lives in a `with` block and ends everything that it has
    started at the end of the block.

    A process can have only one session: the accessibility library stays with the first bus that it
    finds.

    folder    for anything that the session's programs need
    programs  the root of everything that the accessibility bus knows
    """

    def __init__(self):
        self._children = []

    def __enter__(self):
        self.folder = Path(tempfile.mkdtemp(prefix="session-"))
        try:
            self._open()
        except BaseException:
            self._close()
            raise
        return self

    def __exit__(self, *_):
        self._close()

    def spawn(self, name, command, environment=(), **options):
        """Starts a child that ends with this process at the latest. What it writes goes into
        log(name).
        """
        with self.log(name).open("ab") as log:
            child = subprocess.Popen(
                ["setpriv", "--pdeathsig", "KILL", *command],
                env=os.environ | dict(environment),
                stdin=subprocess.DEVNULL,
                stdout=log,
                stderr=log,
                **options,
            )
        self._children.append(child)
        return child

    def spawn_server(self, name, command):
        """Starts a server that writes its address into the pipe that `command` is given, and
        returns the server and the address.
        """
        ours, theirs = os.pipe()
        with open(ours, encoding="ascii") as pipe:
            try:
                server = self.spawn(name, command(theirs).split(), pass_fds=[theirs])
            finally:
                os.close(theirs)
            ready, _, _ = select.select([pipe], [], [], PATIENCE)
            address = pipe.readline().strip() if ready else ""
        if not address:
            raise Stuck(f"{name} did not start: {self.log(name).read_text(errors='replace')}")
        return server, address

    def end(self, child):
        child.terminate()
        try:
            child.wait(timeout=5)
        except subprocess.TimeoutExpired:
            child.kill()
            child.wait()
        self._children.remove(child)

    def log(self, name):
        return self.folder / f"{name}.log"

    def _open(self):
        _adopt_orphans()
        for variable, name in {
            "HOME": "home",
            "XDG_CONFIG_HOME": "home/config",
            "XDG_CACHE_HOME": "home/cache",
            "XDG_DATA_HOME": "home/data",
            "XDG_STATE_HOME": "home/state",
            "XDG_RUNTIME_DIR": "runtime",
        }.items():
            (self.folder / name).mkdir(mode=0o700)
            os.environ[variable] = str(self.folder / name)
        for variable in ("AT_SPI_BUS_ADDRESS", "SESSION_MANAGER", "WAYLAND_DISPLAY"):
            os.environ.pop(variable, None)
        os.environ |= {
            "LC_ALL": "C.UTF-8",
            "GSETTINGS_BACKEND": "memory",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            # Newer Qt writes a line whenever it is asked about a control that no longer exists.
            "QT_LOGGING_RULES": "qt.accessibility.atspi.warning=false",
        }
        _, os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.spawn_server(
            "dbus-daemon",
            lambda pipe: f"dbus-daemon --session --nofork --nopidfile --print-address={pipe}",
        )
        self.programs = wait_until(
            "the accessibility bus is ready", lambda: pyatspi.Registry.getDesktop(0)
        )
        # Cached answers may be out of date.
        self.programs.set_cache_mask(Atspi.Cache.NONE)

    def _close(self):
        for child in reversed(self._children.copy()):
            self.end(child)
        _end_orphans()
        shutil.rmtree(self.folder, ignore_errors=True)


class Display:
    """A virtual X server with a window manager, where programs are used with the real pointer and
    keyboard. It lives in a `with` block.
    """

    client_list = "_NET_CLIENT_LIST_STACKING"

    def __init__(self, session, size="1280x720", watched=False, options=""):
        self.session = session
        self.size = size
        self._watched = watched
        self._options = options

    def __enter__(self):
        # Xephyr is a window on the user's own display, for watching.
        server = "Xephyr -no-host-grab" if self._watched else "Xvfb"
        self._server, number = self.session.spawn_server(
            "display",
            lambda pipe: f"{server} -displayfd {pipe} -screen {self._screen()} -dpi 96 -noreset"
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

    def _screen(self):
        return self.size if self._watched else f"0 {self.size}x24"

    def click(self, x, y):
        self.run("xdotool", "mousemove", x, y, "click", 1)
        self._pause()

    def turn_wheel(self, x, y, up=False):
        """Turns the wheel of the mouse by one notch."""
        self.run("xdotool", "mousemove", x, y, "click", 4 if up else 5)
        self._pause()

    def press(self, *keys):
        """Types keys, such as "Tab" or "ctrl+q", into the window with the focus."""
        self.run("xdotool", "key", *(KEY_CODES.get(key, key) for key in keys))
        self._pause()

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
        listed = self.run("xprop", "-root", self.client_list)
        topmost_first = reversed(re.findall(r"0x[0-9a-f]+", listed))
        return {x_window: self._place(x_window) for x_window in topmost_first}

    def _place(self, x_window):
        shown = self.attempt("xwininfo", "-id", x_window).stdout
        labels = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return tuple(int(n) for label in labels for n in re.findall(rf"{label}: +(-?\d+)", shown))

    def frame(self, x_window):
        """Left, top, width and height of a window with its frame."""
        left, top, width, height = self._place(x_window)
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
        try:
            return subprocess.run(
                [str(part) for part in command],
                env=os.environ | self.environment,
                stdin=subprocess.DEVNULL,
                capture_output=True,
                text=True,
                timeout=PATIENCE,
            )
        except subprocess.TimeoutExpired as error:
            raise Stuck(f"{command[0]} took more than {PATIENCE} seconds") from error

    def run(self, *command):
        """What a command writes; raises Stuck if it fails."""
        done = self.attempt(*command)
        if done.returncode != 0:
            raise Stuck(f"{command[0]} failed: {done.stderr.strip()}")
        return done.stdout

    def _pause(self):
        if self._watched:
            time.sleep(0.4)


def _adopt_orphans():
    """Makes this process the parent of processes that its children leave behind."""
    set_child_subreaper = 36
    ctypes.CDLL(None).prctl(set_child_subreaper, 1, 0, 0, 0)


def _end_orphans():
    """Waits for the services of a bus, which end with it, and ends those that do not."""
    for signals in ([], [signal.SIGTERM], [signal.SIGKILL]):
        for orphan in _orphans():
            for number in signals:
                os.kill(orphan, number)
        deadline = time.monotonic() + 2
        while _orphans() and time.monotonic() < deadline:
            time.sleep(0.05)


def _orphans():
    try:
        while os.waitpid(-1, os.WNOHANG)[0]:
            pass
    except ChildProcessError:
        return []
    parent = f"\nPPid:\t{os.getpid()}\n"
    orphans = []
    for status in Path("/proc").glob("[0-9]*/status"):
        try:
            if parent in status.read_text():
                orphans.append(int(status.parent.name))
        except OSError:
            pass
    return orphans
