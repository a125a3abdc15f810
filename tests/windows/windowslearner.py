"""A learner on Windows, where the store is in the registry."""

from dataclasses import dataclass
from types import SimpleNamespace

from accessible import extents, lines
from learner import Learner
from program import Program
from quizzes import SEEDS

STORE = r"HKCU\Software\Zorvan\Zorvan"


class WindowsProgram(Program):
    """A program under Wine, watched through a reader."""

    def __init__(self, wine, reader, command):
        self.display = wine.display
        self.reader = reader
        self._log = self.display.session.log("program")
        self._log.unlink(missing_ok=True)
        self._process = wine.start("program", command)
        self._number = None

    def x_window(self, window):
        name = f"{window.x_window():#x}"

        def in_place():
            return self.display.windows().get(name) == extents(window) and name

        return self.wait_until(f"{window.get_name()} is on screen where it says", in_place)

    def press(self, *keys):
        def is_told():
            active = self.windows()[0].x_window()
            return self.display.attempt("xdotool", "getwindowfocus").stdout.strip() == str(active)

        # A window of Wine is active before the X server gives it the keyboard.
        self.wait_until("the active window has the keyboard", is_told)
        super().press(*keys)

    def tree(self):
        return "\n".join(line for window in self.windows() for line in lines(window))

    def _application(self):
        if self._number is None:
            self._number = self._find_number()
        windows = self.reader.windows(self._number)
        return SimpleNamespace(
            get_child_count=lambda: len(windows), get_child_at_index=lambda index: windows[index]
        )

    def _find_number(self):
        """The number by which Windows knows the program's process, as soon as it has a window."""
        for number, x_window in {(key[0], item.x_window) for key, item in self.reader.items().items()}:
            # Wine gives its windows the process as Linux knows it.
            named = self.display.attempt("xprop", "-id", str(x_window), "_NET_WM_PID").stdout
            if named.strip().endswith(f" = {self._process.pid}"):
                return number
        return None


@dataclass
class WindowsLearner(Learner):
    wine: object = None
    reader: object = None

    def start(self):
        self.program = WindowsProgram(self.wine, self.reader, self.command)
        self.log = ["Finished Starting"]

    def start_again(self, **settings):
        self.store = SEEDS | settings
        for key, value in self.store.items():
            self.wine.run("reg", "add", STORE, "/v", key, "/d", value, "/f")
        self.start()
        return self.program.wait_for_window("Zorvan")

    def expect_levels(self, menu):
        # They are put into words a moment after the window is shown.
        self.program.wait_until(
            "the program has started", lambda: self.log[0] in self.program.log_lines()
        )
        super().expect_levels(menu)

    def stored(self):
        found = self.wine.registry(STORE) or {}
        assert {kind for kind, _ in found.values()} <= {"REG_SZ"}, found
        return {key: value for key, (_, value) in found.items()}
