"""A desktop for end-to-end tests: a virtual X server with a window manager and a session bus,
and one program on it, which is watched through the accessibility bus and used with the real
pointer and keyboard.
"""

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

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

Role = Atspi.Role
State = Atspi.StateType

PATIENCE = 30  # seconds that any one thing may take


class Stuck(Exception):
    """What was waited for did not come."""


def wait_until(what, condition):
    """The first true value of `condition`; raises Stuck, naming `what`, if none comes in time."""
    deadline = time.monotonic() + PATIENCE
    while True:
        found = condition()
        if found:
            return found
        if time.monotonic() > deadline:
            raise Stuck(f"waited {PATIENCE} seconds in vain: {what}")
        time.sleep(0.05)


class Desktop:
    """Lives in a `with` block, at whose end all that it has started has ended. All of it runs
    with homes of its own under a temporary folder.

    A process can have one desktop in its life: the accessibility library stays with the first
    bus that it finds.
    """

    def __init__(self, size="1280x720"):
        self.size = size
        self.program = None
        self._children = []

    def __enter__(self):
        self._home = Path(tempfile.mkdtemp(prefix="desktop-"))
        try:
            self._open()
        except BaseException:
            self._close()
            raise
        return self

    def __exit__(self, *_):
        self._close()

    # The program

    def start(self, program):
        """Starts the program, to be watched from here on."""
        self.program = self._spawn("program", [str(Path(program).resolve())])

    def configuration(self, name):
        """A file below the program's configuration folder."""
        return self._home / "config" / name

    def log_lines(self):
        """What the program has written to its standard output and standard error."""
        return self._log("program").read_text(encoding="utf-8", errors="replace").splitlines()

    def exit_status(self):
        """Waits for the program to end."""
        wait_until("the program ends", lambda: self.program.poll() is not None)
        return self.program.returncode

    def wait_until(self, what, condition):
        """As the function, but for no longer than the program runs."""

        def holds():
            if self.program.poll() is not None:
                raise Stuck(f"the program has ended, with status {self.program.returncode}")
            return condition()

        return wait_until(what, holds)

    # What is on screen. A name is a text, a compiled pattern that the name has to match whole,
    # or a collection of texts.

    def windows(self, title):
        """The windows of that title, the one with the focus first. An alert's is its message."""
        found = [
            window
            for window in _children(self._application())
            if has(window, State.SHOWING) and _is_named(window, title)
        ]
        return sorted(found, key=lambda window: not has(window, State.ACTIVE))

    def wait_for_window(self, title):
        """The window of that title, once it has the focus."""
        return self.wait_until(
            f'the window "{title}" has the focus',
            lambda: [window for window in self.windows(title) if has(window, State.ACTIVE)],
        )[0]

    def bring_to_front(self, window):
        """What a click in a task bar does."""
        self._run("xdotool", "windowactivate", self._x_window(window))
        self.wait_until(f'"{name_of(window)}" has the focus', lambda: has(window, State.ACTIVE))

    def find(self, role, name, within=None):
        """All that is shown of that role and name."""
        return [
            item
            for item in _shown(within or self._application())
            if _ask(item.get_role) == role and _is_named(item, name)
        ]

    def wait_for(self, role, name, within=None):
        """The first that find() finds, as soon as there is one."""
        return self.wait_until(
            f'a {role.value_nick} "{name}" is shown', lambda: self.find(role, name, within)
        )[0]

    # Pointer and keyboard

    def click(self, item):
        """Presses the left button over the middle of `item`, which has to be in the window with
        the focus.
        """
        window = _window_of(item)
        self.wait_until(f'"{name_of(window)}" has the focus', lambda: has(window, State.ACTIVE))
        # Until the two agree on the place, the program has not yet heard where its window is.
        self._x_window(window)
        x, y, width, height = extents(item)
        self._run("xdotool", "mousemove", x + width // 2, y + height // 2, "click", 1)

    def press(self, *keys):
        """Types keys, such as "Tab" or "ctrl+q", into the window with the focus."""
        self._run("xdotool", "key", *keys)

    # Pictures

    def picture(self, file, window=None):
        """Saves a picture of a window with its frame, or of the whole screen, when it is painted
        and rests. The pointer is put aside first.
        """
        self._run("xdotool", "mousemove", *self.size.split("x"))
        source = ["-frame", "-window", self._x_window(window)] if window else ["-window", "root"]
        before = self._home / "before.png"

        def rests():
            if file.exists():
                shutil.move(file, before)
            self._run("import", "-silent", *source, file)
            return before.exists() and self._painted(file) and self._same(before, file)

        file.unlink(missing_ok=True)
        before.unlink(missing_ok=True)
        self.wait_until(f"{file.name} is painted", rests)

    def screen(self, file):
        """Saves a picture of the screen as it is."""
        self._try("import", "-silent", "-window", "root", file)

    def _painted(self, file):
        return int(self._run("identify", "-format", "%k", file)) > 8

    def _same(self, before, after):
        return self._try("compare", "-metric", "AE", before, after, "null:").returncode == 0

    # Servers and other children

    def _open(self):
        _adopt_orphans()
        for variable, name in {
            "XDG_CONFIG_HOME": "config",
            "XDG_CACHE_HOME": "cache",
            "XDG_DATA_HOME": "data",
            "XDG_STATE_HOME": "state",
            "XDG_RUNTIME_DIR": "runtime",
        }.items():
            (self._home / name).mkdir(mode=0o700)
            os.environ[variable] = str(self._home / name)
        for variable in ("AT_SPI_BUS_ADDRESS", "SESSION_MANAGER", "WAYLAND_DISPLAY", "XAUTHORITY"):
            os.environ.pop(variable, None)
        os.environ |= {
            "LC_ALL": "C.UTF-8",
            "GSETTINGS_BACKEND": "memory",
            "QT_QPA_PLATFORM": "xcb",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        }

        display = self._spawn_server(
            "Xvfb",
            lambda pipe: f"Xvfb -displayfd {pipe} -screen 0 {self.size}x24 -dpi 96 -noreset",
        )
        os.environ["DISPLAY"] = f":{display}"
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._spawn_server(
            "dbus-daemon",
            lambda pipe: f"dbus-daemon --session --nofork --nopidfile --print-address={pipe}",
        )
        self._spawn("openbox", ["openbox", "--sm-disable"])
        wait_until(
            "the window manager is ready",
            lambda: "0x" in self._run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
        )
        desktop = wait_until("the accessibility bus is ready", lambda: Atspi.get_desktop(0))
        # Nothing here runs the loop that would keep remembered answers fresh.
        desktop.set_cache_mask(Atspi.Cache.NONE)

    def _close(self):
        for child in reversed(self._children):
            _end(child)
        _end_orphans()
        shutil.rmtree(self._home, ignore_errors=True)

    def _log(self, name):
        return self._home / f"{name}.log"

    def _spawn(self, name, command, **options):
        with self._log(name).open("wb") as log:
            try:
                child = subprocess.Popen(
                    command, stdin=subprocess.DEVNULL, stdout=log, stderr=log, **options
                )
            except FileNotFoundError as error:
                raise Stuck(f"there is no {command[0]} here") from error
        self._children.append(child)
        return child

    def _spawn_server(self, name, command):
        """Starts a server that writes its address into a pipe, and returns the address."""
        ours, theirs = os.pipe()
        with open(ours, encoding="ascii") as pipe:
            try:
                self._spawn(name, command(theirs).split(), pass_fds=[theirs])
            finally:
                os.close(theirs)
            ready, _, _ = select.select([pipe], [], [], PATIENCE)
            address = pipe.readline().strip() if ready else ""
        if not address:
            raise Stuck(f"{name} did not start: {self._log(name).read_text(errors='replace')}")
        return address

    def _try(self, *command):
        try:
            return subprocess.run(
                [str(part) for part in command],
                stdin=subprocess.DEVNULL,
                capture_output=True,
                text=True,
                timeout=PATIENCE,
            )
        except FileNotFoundError as error:
            raise Stuck(f"there is no {command[0]} here") from error
        except subprocess.TimeoutExpired as error:
            raise Stuck(f"{command[0]} took more than {PATIENCE} seconds") from error

    def _run(self, *command):
        done = self._try(*command)
        if done.returncode != 0:
            raise Stuck(f"{command[0]} failed: {done.stderr.strip()}")
        return done.stdout

    # The program's side of the buses

    def _application(self):
        """The program on the accessibility bus; None while it is not there."""
        for application in _children(Atspi.get_desktop(0)):
            if _ask(application.get_process_id) == self.program.pid:
                return application
        return None

    def _x_window(self, window):
        """The X window of a top-level window, known by its place and size."""

        def found():
            listed = self._run("xprop", "-root", "_NET_CLIENT_LIST_STACKING")
            topmost_first = reversed(re.findall(r"0x[0-9a-f]+", listed))
            return [x for x in topmost_first if self._x_extents(x) == extents(window)]

        return self.wait_until(f'"{name_of(window)}" is on screen', found)[0]

    def _x_extents(self, x_window):
        shown = self._try("xwininfo", "-id", x_window).stdout
        labels = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return tuple(int(n) for label in labels for n in re.findall(rf"{label}: +(-?\d+)", shown))


def name_of(item):
    return _ask(item.get_name) or ""


def extents(item):
    """Left, top, width and height, in pixels of the screen."""
    box = _ask(item.get_extents, Atspi.CoordType.SCREEN)
    return (box.x, box.y, box.width, box.height) if box else None


def has(item, state):
    states = _ask(item.get_state_set)
    return states is not None and states.contains(state)


def _ask(method, *arguments):
    """The program's answer; None when what is asked about is gone."""
    try:
        return method(*arguments)
    except GLib.Error:
        return None


def _children(item):
    count = _ask(item.get_child_count) if item else None
    children = [_ask(item.get_child_at_index, index) for index in range(count or 0)]
    return [child for child in children if child]


def _shown(item):
    """All that is shown below `item`."""
    for child in _children(item):
        if has(child, State.SHOWING):
            yield child
            yield from _shown(child)


def _window_of(item):
    parent = _ask(item.get_parent)
    while parent and _ask(parent.get_role) != Role.APPLICATION:
        item, parent = parent, _ask(parent.get_parent)
    return item


def _is_named(item, name):
    if isinstance(name, str):
        return name_of(item) == name
    if isinstance(name, re.Pattern):
        return name.fullmatch(name_of(item)) is not None
    return name_of(item) in name


def _end(child):
    child.terminate()
    try:
        child.wait(timeout=5)
    except subprocess.TimeoutExpired:
        child.kill()
        child.wait()


def _adopt_orphans():
    """Makes this process the parent of what its children leave behind."""
    set_child_subreaper = 36
    ctypes.CDLL(None).prctl(set_child_subreaper, 1, 0, 0, 0)


def _end_orphans():
    """The services of a bus end with it; here they are waited for, and made to if need be."""
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
