"""What a program on a virtual desktop needs around it: homes of its own, a session bus and the
accessibility bus.
"""

import ctypes
import os
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
    """A login session without a display, in a `with` block, which ends everything that it started.
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
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for child in reversed(self._children.copy()):
            self.end(child)
        _end_orphans()
        shutil.rmtree(self.folder, ignore_errors=True)

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
        for kind in ("CONFIG", "CACHE", "DATA", "STATE"):
            os.environ.pop(f"XDG_{kind}_HOME", None)
        for variable in ("AT_SPI_BUS_ADDRESS", "SESSION_MANAGER", "WAYLAND_DISPLAY"):
            os.environ.pop(variable, None)
        for variable, name in {"HOME": "home", "XDG_RUNTIME_DIR": "runtime"}.items():
            (self.folder / name).mkdir(mode=0o700)
            os.environ[variable] = str(self.folder / name)
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


def _adopt_orphans():
    """Makes this process the parent of processes that its children leave behind."""
    set_child_subreaper = 36
    ctypes.CDLL(None).prctl(set_child_subreaper, 1, 0, 0, 0)


def _end_orphans():
    """Ends what the services of the buses have left behind."""
    us = os.getpid()
    orphans = Path(f"/proc/{us}/task/{us}/children")
    while found := orphans.read_text("ascii").split():
        for orphan in map(int, found):
            os.kill(orphan, signal.SIGKILL)
            os.waitpid(orphan, 0)
