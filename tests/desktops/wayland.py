"""Wayland compositors, whose screen is a window on a virtual X server."""

import filecmp
import json
import os
import shutil
import time
from itertools import count
from pathlib import Path

from gi.repository import Gio, GLib

from accessible import extents, name_of, window_of
from desktops import Desktop
from program import Program
from session import Stuck, wait_until

ENTRY = "org.zorvan.Zorvan"


class WaylandProgram(Program):
    """A program that is not told where its windows are."""

    def x_window(self, window):
        raise Stuck("There are no X windows on Wayland")

    def place(self, item):
        window = window_of(item)
        left, top, *_ = self.wait_until(
            f'the window "{name_of(window)}" is on screen', lambda: self.display.place(window)
        )
        its_left, its_top, width, height = extents(item)
        window_left, window_top, *_ = extents(window)
        return left + its_left - window_left, top + its_top - window_top, width, height


class WaylandDesktop(Desktop):
    program_type = WaylandProgram
    # Before Qt 6.8 few compositors are told which window in the background asks for attention.
    shows_attention = False
    socket = "nested"

    def start_manager(self):
        socket = Path(os.environ["XDG_RUNTIME_DIR"]) / self.socket
        manager = self.spawn_manager(self.options())
        wait_until("the compositor is ready", socket.is_socket)
        self.environment |= {"WAYLAND_DISPLAY": self.socket, "QT_QPA_PLATFORM": "wayland"}
        return manager

    def put_over(self, place):
        """Does nothing: all windows are put in the middle of the screen, over each other."""

    def options(self):
        """The compositor's own environment variables."""
        return {}

    def place(self, window):
        """Left, top, width and height of a window without its frame; None while it is not known."""
        size = extents(window)[2:]
        fitting = [(title, place) for title, place in self.windows() if place[2:] == size]
        fitting.sort(key=lambda found: name_of(window) not in found[0])
        return fitting[0][1] if fitting else None


class KWinWayland(WaylandDesktop):
    command = ["kwin_wayland"]
    shows_attention = True

    def spawn_manager(self, environment=()):
        # A copy has none of the capabilities, which a container may be unable to give.
        program = self.session.folder / "kwin_wayland"
        shutil.copyfile(shutil.which("kwin_wayland"), program)
        program.chmod(0o755)
        width, height = self.size.split("x")
        command = f"{program} --x11-display {self.environment['DISPLAY']} --socket {self.socket}"
        command += f" --width {width} --height {height} --no-lockscreen --no-global-shortcuts"
        return self.session.spawn("kwin_wayland", command.split(), self.environment | environment)

    def options(self):
        self._answers = count()
        return {"KWIN_COMPOSE": "Q", "QT_LOGGING_RULES": "js.debug=true"}

    def windows(self):
        sides = ("x", "y", "width", "height")
        return [
            (window["title"], tuple(round(window[side]) for side in sides))
            for window in self._windows()
        ]

    def minimise(self):
        self._script("workspace.activeClient.minimized = true")
        return True

    def asks_for_attention(self):
        return any(window["attention"] for window in self._windows())

    def _windows(self):
        return self._script(
            "workspace.clientList().map(client => ({ title: client.caption,"
            " attention: client.demandsAttention,"
            " x: client.bufferGeometry.x, y: client.bufferGeometry.y,"
            " width: client.bufferGeometry.width, height: client.bufferGeometry.height }))"
        )

    def _script(self, expression):
        """The value of an expression in the compositor."""
        name = f"answer-{next(self._answers)}"
        file = self.session.folder / f"{name}.js"
        file.write_text(f"print('{name}=' + JSON.stringify({expression}))")
        [number] = self._call("/Scripting", "Scripting.loadScript", str(file), name)
        self._call(f"/{number}", "Script.run")
        log = self.session.log("kwin_wayland")

        def answer():
            _, found, after = log.read_text(errors="replace").partition(f"js: {name}=")
            text, end, _ = after.partition("\n")
            return [text] if found and end else None

        [text] = wait_until("the compositor answers", answer)
        return json.loads(text) if text != "undefined" else None

    def _call(self, path, method, *texts):
        interface, _, method = f"org.kde.kwin.{method}".rpartition(".")
        arguments = GLib.Variant(f"({'s' * len(texts)})", texts)
        service = ("org.kde.KWin", path, interface, method, arguments, None)
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        return bus.call_sync(*service, Gio.DBusCallFlags.NONE, 10_000)


class Mutter(WaylandDesktop):
    """It does not tell where windows are, but puts each new one in the middle of the screen."""

    command = ["mutter", "--wayland", "--nested", "--no-x11", "--wayland-display=nested"]

    # The size of a window's title bar and borders, which the program draws.
    frame = {"left": 3, "top": 30, "right": 3, "bottom": 3}

    def options(self):
        folder = self.session.folder / "home/.config/glib-2.0/settings"
        folder.mkdir(parents=True)
        (folder / "keyfile").write_text(
            "[org/gnome/mutter]\ncenter-new-windows=true\n"
            "[org/gnome/desktop/interface]\nenable-animations=false\n"
        )
        return {"GSETTINGS_BACKEND": "keyfile", "MUTTER_DEBUG_DUMMY_MODE_SPECS": self.size}

    def place(self, window):
        screen_width, screen_height = (int(n) for n in self.size.split("x"))
        *_, width, height = extents(window)
        left = (screen_width - width - self.frame["left"] - self.frame["right"]) // 2
        top = (screen_height - height - self.frame["top"] - self.frame["bottom"]) // 2
        return left + self.frame["left"], top + self.frame["top"], width, height

    # Keys and clicks go to what was on screen when it was last drawn, which takes a while.

    def click(self, x, y):
        self._wait_for_rest()
        super().click(x, y)

    def press(self, *keys):
        self._wait_for_rest()
        super().press(*keys)

    def _wait_for_rest(self):
        """Waits until several pictures of the screen are equal: nothing tells when it is drawn."""
        before, now = (self.session.folder / f"{name}.ppm" for name in ("before", "now"))
        self.picture(now)
        equal = 0
        while equal < 3:
            # While a picture is taken, nothing is drawn.
            time.sleep(0.1)
            now.replace(before)
            self.picture(now)
            equal = equal + 1 if filecmp.cmp(before, now, shallow=False) else 0

    def minimise(self):
        self.press("super+h")
        return True


class Sway(WaylandDesktop):
    command = ["sway"]
    # It only shows the user which window asks.
    grants_requests = False
    # It chooses the name itself.
    socket = "wayland-1"

    def spawn_manager(self, environment=()):
        config = self.session.folder / "sway.conf"
        config.write_text(
            f"xwayland disable\noutput * resolution {self.size}\n"
            'for_window [app_id=".*"] floating enable\n'
        )
        command = ["sway", "--config", str(config)]
        if os.getuid() == 0:
            # It does not run as root; in a user namespace it is another user.
            command = ["unshare", "--user", "--map-user=1000", "--map-group=1000", *command]
        return self.session.spawn("sway", command, self.environment | environment)

    def options(self):
        self.environment["SWAYSOCK"] = str(self.session.folder / "runtime/sway.sock")
        return {"WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman"}

    def windows(self):
        return [(window["name"], _client_area(window)) for window in self._windows()]

    def minimise(self):
        return False

    def asks_for_attention(self):
        return any(window["urgent"] for window in self._windows())

    def _windows(self):
        """The program's windows, known by its desktop entry, which has their icon."""
        tree = json.loads(self.run("swaymsg", "--raw", "--type", "get_tree"))
        return [node for node in _nodes(tree) if node.get("app_id") == ENTRY]


def _nodes(node):
    yield node
    for child in node["nodes"] + node["floating_nodes"]:
        yield from _nodes(child)


def _client_area(window):
    frame, area = window["rect"], window["window_rect"]
    return frame["x"] + area["x"], frame["y"] + area["y"], area["width"], area["height"]
