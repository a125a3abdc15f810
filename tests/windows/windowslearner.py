"""A learner on Windows, where the store is in the registry."""

from dataclasses import dataclass
from types import SimpleNamespace

from accessible import extents, lines
from learner import Learner
from program import Program
from quizzes import SEEDS

COMPANY = r"HKCU\Software\Zorvan"
STORE = COMPANY + r"\Zorvan"


class WindowsProgram(Program):
    """A program under Wine, watched through a reader."""

    def __init__(self, wine, reader, name, *command):
        self.display = wine.display
        self.reader = reader
        self._others = reader.processes()
        self._log = self.display.session.log(name)
        self._log.unlink(missing_ok=True)
        self._process = wine.start(name, *command)
        self._number = None

    def place(self, item):
        return extents(item)

    def bring_to_front(self, window):
        window.activate()
        self.wait_for_keyboard(window)

    def picture(self, file, window=None):
        super().picture(file)
        if window:
            left, top, width, height = window.get_frame()
            crop = f"{width}x{height}+{left}+{top}"
            self.display.run("convert", file, "-crop", crop, "+repage", file)

    def tree(self):
        return "\n".join(line for window in self.windows() for line in lines(window))

    def _application(self):
        # The number by which Windows knows the program, as soon as it has a window.
        if self._number is None:
            self._number = next(iter(self.reader.processes() - self._others), None)
        windows = self.reader.windows(self._number)
        return SimpleNamespace(
            get_child_count=lambda: len(windows), get_child_at_index=lambda index: windows[index]
        )


@dataclass
class WindowsLearner(Learner):
    wine: object = None
    reader: object = None
    name: str = "program"
    starter: tuple = ()

    def start(self):
        command = (*self.starter, self.command)
        self.program = WindowsProgram(self.wine, self.reader, self.name, *command)
        self.log = ["Finished Starting"]

    def start_again(self, **settings):
        self.store = SEEDS | settings
        for key, value in self.store.items():
            self.wine.set(STORE, key, value)
        self.start()
        return self.program.wait_for_window("Zorvan")

    def expect_levels(self, menu):
        expect = super().expect_levels

        def in_words():
            try:
                expect(menu)
            except AssertionError:
                return False
            return True

        # The program puts levels into words only once it has nothing else to do.
        self.program.wait_until("the levels are in words", in_words)

    def stored(self):
        found = self.wine.registry(STORE) or {}
        assert {kind for kind, _ in found.values()} <= {"REG_SZ"}, found
        return {key: value for key, (_, value) in found.items()}
