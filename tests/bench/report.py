"""What is printed."""

import os
import re
import statistics
import subprocess
from pathlib import Path


def describe_machine():
    cpu = re.search(r"^model name\s*: (.*)$", Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    qt = subprocess.getoutput("qmake6 -query QT_VERSION")
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    print(
        f"{os.cpu_count()} processors, {cpu[1] if cpu else os.uname().machine}; {memory:.0f} GiB;"
        f" Linux {os.uname().release}; Qt {qt}\n"
    )


def header(*titles):
    row(*titles)
    row("---", *("--:" for _ in titles[1:]))


def row(*cells):
    print("| " + " | ".join(str(cell) for cell in cells) + " |", flush=True)


def compare(label, values, form, wanted):
    """A row with the medians, and the median ratio of the values measured in the same turn."""
    cells = []
    for each in values.values():
        spread = f" ({form} to {form})".format(min(each), max(each)) if len(each) > 1 else ""
        cells.append(form.format(statistics.median(each)) + spread)
    ratio = statistics.median(ours / other for ours, other in zip(*values.values()))
    row(label, *cells, f"{ratio:.2f}", f"at most {wanted}" if wanted else "")


def spread(times):
    near_most = sorted(times)[int(len(times) * 0.95)]
    figures = [min(times), statistics.median(times), near_most, max(times)]
    return (f"{figure:.2f}" for figure in figures)
