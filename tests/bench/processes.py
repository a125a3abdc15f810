"""What the system knows about a process."""

import re
import subprocess
import tempfile
import time
from pathlib import Path


def kibibytes(pid, file, field):
    return number_in(Path(f"/proc/{pid}/{file}"), field)


def libraries(pid):
    maps = Path(f"/proc/{pid}/maps").read_text()
    return set(re.findall(r"(/\S+\.so[.\d]*)$", maps, re.MULTILINE))


def wake_ups(pid):
    """How often any of its threads has stopped to wait."""
    statuses = Path(f"/proc/{pid}/task").glob("*/status")
    return sum(number_in(status, "voluntary_ctxt_switches") for status in statuses)


def number_in(file, field):
    return int(re.search(rf"^{field}:\s+(\d+)", file.read_text(), re.MULTILINE)[1])


def wait_until_still(pid):
    """Returns when the process has not woken up for a third of a second."""
    before = None
    while before != (before := wake_ups(pid)):
        time.sleep(0.3)


def stripped_size(program):
    with tempfile.TemporaryDirectory() as folder:
        stripped = Path(folder) / "stripped"
        subprocess.run(["strip", "-o", stripped, program], check=True)
        return stripped.stat().st_size / 1024
