"""Desktops on a virtual X server. Keys and pointer are those of the server."""

from display import Display
from program import Program
from session import wait_until


class Desktop(Display):
    """A desktop whose windows are managed by `command`.

    program_type     how programs are used there
    shows_attention  whether one can see that a window asks for attention
    grants_requests  whether a window that asks for the keyboard gets it if its program has it
    """

    command = ()
    program_type = Program
    shows_attention = True
    grants_requests = True

    def spawn_manager(self, environment=()):
        name, *_ = self.command
        return self.session.spawn(name, self.command, self.environment | dict(environment))

    def part(self, file, place):
        """Saves a picture of a part of the screen."""
        left, top, width, height = place
        part = f"{width}x{height}+{left}+{top}"
        self.run("import", "-silent", "-window", "root", "-crop", part, "+repage", file)


class X11Desktop(Desktop):
    def start_manager(self):
        manager = self.spawn_manager({"KWIN_COMPOSE": "N", "NO_AT_BRIDGE": "1"})
        wait_until(
            "the window manager is ready",
            lambda: "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
        )
        return manager

    def put_over(self, place):
        """Moves the window with the keyboard so that it covers a place on the screen."""
        self.run("xdotool", "getactivewindow", "windowmove", place[0], place[1])

    def minimise(self):
        """Minimises the window with the keyboard; returns whether the desktop can do so."""
        self.run("xdotool", "getactivewindow", "windowminimize")
        return True

    def asks_for_attention(self):
        """Whether any window asks for attention."""
        return any(
            "_NET_WM_STATE_DEMANDS_ATTENTION" in self.run("xprop", "-id", window, "_NET_WM_STATE")
            for window in self.windows()
        )


class Metacity(X11Desktop):
    command = ["metacity", "--compositor=none"]


class Xfwm(X11Desktop):
    command = ["xfwm4", "--compositor=off"]
    # The other list leaves out a window that is the only one.
    client_list = "_NET_CLIENT_LIST"


class KWinX11(X11Desktop):
    command = ["kwin_x11"]
