"""Measures the program beside a window of ten plain widgets, and each step of a learner's way."""

import argparse
import json
import os
import signal
import statistics
import subprocess
import sys
import tempfile
import time
from contextlib import ExitStack, contextmanager
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[1] / "e2e"))

from display import Display
from processes import kibibytes, libraries, stripped_size, wait_until_still, wake_ups
from quizzes import SEEDS
from report import compare, describe_machine, header, row, spread
from session import Session, wait_until

OURS = "zorvan"
IDLE_SECONDS = 10
IDLE_COPIES = 5
TURNS = 50
# What start() measures: its name, its form, and the ratio that is wanted.
STARTS = (
    ("exec to first window on screen, ms", "{:.1f}", None),
    ("exec to all of it painted, ms", "{:.1f}", 1.25),
    ("processor time until then, ms", "{:.1f}", 1.3),
    ("peak memory, MiB", "{:.1f}", None),
    ("proportional memory at rest, MiB", "{:.1f}", 1.25),
    ("shared libraries mapped", "{:.0f}", 1),
)


def main():
    options = arguments()
    for number in (signal.SIGHUP, signal.SIGINT, signal.SIGTERM):
        signal.signal(number, lambda *_: sys.exit("The measurement was ended."))
    with Session() as session, Display(session, "1920x1080") as display:
        Bench(display, options).run()


def arguments():
    parser = argparse.ArgumentParser(prog="bench", description=__doc__)
    parser.add_argument("folder", type=Path, help=argparse.SUPPRESS)
    parser.add_argument("--rounds", type=int, default=100, help="how often each program is started")
    parser.add_argument("--attempts", type=int, default=1000, help="how many quizzes are taken")
    parser.add_argument("--main-tests", type=int, default=20, help="how many of 30 questions")
    parser.add_argument("--against", type=Path, help="another program in place of the ten widgets")
    return parser.parse_args()


class Bench:
    def __init__(self, display, options):
        self.display = display
        self.options = options
        self.tools = options.folder / "tests/bench"
        self.programs = {
            OURS: options.folder / "zorvan",
            str(options.against or "ten widgets"): options.against or self.tools / "tenwidgets",
        }

    def run(self):
        describe_machine()
        # No screen reader, and a runtime folder in memory, as desktops have it.
        os.environ.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON")
        os.environ |= self.display.environment
        memory = "/dev/shm" if os.path.isdir("/dev/shm") else None
        with tempfile.TemporaryDirectory(dir=memory) as os.environ["XDG_RUNTIME_DIR"]:
            self.compare_starts()
            self.compare_rest()
            self.time_steps()

    # The program beside the ten widgets

    def compare_starts(self):
        self.fill_store()
        starts = {name: [] for name in self.programs}
        for turn in range(self.options.rounds + 2):
            for name in list(self.programs)[:: 1 if turn % 2 == 0 else -1]:
                starts[name].append(self.start(self.programs[name]))

        print(f"{self.options.rounds} starts of each in turn, after two that are not counted\n")
        header("", *self.programs, "ratio", "wanted")
        for place, (label, form, wanted) in enumerate(STARTS):
            values = {name: [start[place] for start in starts[name][2:]] for name in self.programs}
            compare(label, values, form, wanted)
        sizes = {name: [stripped_size(program)] for name, program in self.programs.items()}
        compare("stripped binary, KiB", sizes, "{:.0f}", None)
        print("\nMedian (least to most); the ratio is the median of that of each turn.\n")

    def start(self, program):
        with self.running(program) as times:
            pid = times["pid"]
            wait_until_still(pid)
            return (
                times["mapped"] * 1e3,
                times["painted"] * 1e3,
                times["cpu"] * 1e3,
                kibibytes(pid, "status", "VmHWM") / 1024,
                kibibytes(pid, "smaps_rollup", "Pss") / 1024,
                len(libraries(pid)),
            )

    @contextmanager
    def running(self, *command):
        """Starts a program, waits until its window is painted, and yields when that was."""
        with self.tool(self.display, "firstpaint", *command) as (_, read):
            yield read()

    @contextmanager
    def tool(self, display, name, *options):
        """Yields a tool, which ends with its input, and a function that reads what it writes next."""
        log = display.session.log(name)
        with log.open("a") as errors, subprocess.Popen(
            [self.tools / name, *options],
            env=os.environ | display.environment,
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=errors,
            text=True,
        ) as process:

            def read():
                written = process.stdout.readline()
                if not written:
                    sys.exit(f"{name} has failed: {log.read_text()}")
                return json.loads(written)

            yield process, read

    # At rest

    def compare_rest(self):
        print(f"How often a program wakes up, a second, over {IDLE_SECONDS} seconds at rest\n")
        header("", "least", "median", "most", "wanted")
        for name, program in self.programs.items():
            self.watch_rest(f"{name}, {IDLE_COPIES} at once", [[program]] * IDLE_COPIES, "0")
        ours = [self.programs[OURS]]
        self.watch_rest(f"{OURS}, a quiz", [ours], "0", "ctrl+7")
        self.fill_store(timedQuizzes="yes")
        self.watch_rest(f"{OURS}, a quiz against the clock", [ours], "as below", "ctrl+7")
        self.watch_rest("ten widgets, one of them a clock", [[self.tools / "tenwidgets", "--tick"]])
        print()

    def watch_rest(self, label, commands, wanted="", *keys):
        with ExitStack() as stack:
            pids = [stack.enter_context(self.running(*command))["pid"] for command in commands]
            if keys:
                windows = len(self.display.windows())
                self.display.press(*keys)
                wait_until("a window opens", lambda: len(self.display.windows()) > windows)
            self.display.put_pointer_aside()
            time.sleep(2)
            before = [wake_ups(pid) for pid in pids]
            time.sleep(IDLE_SECONDS)
            after = [wake_ups(pid) for pid in pids]
        each = [(b - a) / IDLE_SECONDS for a, b in zip(before, after)]
        row(label, *(f"{of(each):.1f}" for of in (min, statistics.median, max)), wanted)

    # A learner's way

    def time_steps(self):
        self.fill_store()
        with self.learner(self.display) as take_quiz:
            attempts, costs = self.take_attempts(take_quiz)
            main_tests = [take_quiz(7) for _ in range(self.options.main_tests)]

        print("From a click until all that it changes is painted, in milliseconds\n")
        header("", "events", "least", "median", "95 of 100", "most", "disk commits", "wanted")
        every = attempts + main_tests
        for taken, key, label, wanted in (
            (every, "answer", "answer to verdict", "under 4"),
            (every, "next", "next-question button to question", ""),
            (every, "open", "quiz button to quiz window", "median under 8, 95 under 16"),
            (every, "end", "last answer to results and main menu", "median under 16, 95 under 33"),
            (main_tests, "whole", "the whole of quiz 7, as fast as it can be clicked", ""),
        ):
            steps = [step for attempt in taken for step in attempt[key]]
            if steps:
                times, commits, without_disk = zip(*steps)
                least_and_most = f"{min(commits)} to {max(commits)}"
                row(label, len(times), *spread(times), least_and_most, wanted)
                if any(commits):
                    row("the same without waiting for the disk", "", *spread(without_disk), "", "")

        print("\nWhat an attempt at quiz 5 costs as they go by in one process\n")
        header("attempts", "processor time, ms", "after 10", "ratio", "proportional, MiB", "heap, KiB")
        for place, cost in costs.items():
            attempt = attempts[place - 1]
            row(place, *cost, f"{attempt['pss'] / 1024:.1f}", f"{attempt['heap']:.0f}")
        print(
            f"\nThe time is the median of the {TURNS} attempts after, each in turn with one of a new"
            "\nprocess after its 10th; the ratio is the median of that of each turn."
            "\nWanted: after 1000 a ratio of at most 1.05, and sizes at most 1.05 times those after 10."
        )

    def take_attempts(self, take_quiz):
        """All attempts, and the processor time of one after so many, compared to one after 10."""
        attempts = [take_quiz(5)]
        costs = {1: (f"{attempts[0]['cpu']:.1f}", "", "")}
        for place in (10, 100, 1000):
            if place > self.options.attempts:
                break
            while len(attempts) < place:
                attempts.append(take_quiz(5))
            with Display(self.display.session) as display, self.learner(display) as take_new:
                for _ in range(10):
                    take_new(5)
                turns = [(take_quiz(5), take_new(5)) for _ in range(TURNS)]
            attempts += [here for here, _ in turns]
            times = [[attempt["cpu"] for attempt in process] for process in zip(*turns)]
            ratio = statistics.median(here / new for here, new in zip(*times))
            costs[place] = [f"{statistics.median(each):.1f}" for each in times] + [f"{ratio:.2f}"]
        return attempts, costs

    @contextmanager
    def learner(self, display):
        """Yields a function that takes a quiz with the program and returns how it went."""
        with self.tool(display, "attempts") as (process, read):

            def take_quiz(number):
                print(number, file=process.stdin, flush=True)
                return read() | {"pss": kibibytes(process.pid, "smaps_rollup", "Pss")}

            yield take_quiz

    def fill_store(self, **more):
        store = Path.home() / ".config/Zorvan/Zorvan.conf"
        store.parent.mkdir(parents=True, exist_ok=True)
        lines = [f"{key}={value}\n" for key, value in (SEEDS | more).items()]
        store.write_text("[General]\n" + "".join(lines))


if __name__ == "__main__":
    main()
