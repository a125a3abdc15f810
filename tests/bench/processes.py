"""What the system knows about a process."""

import re
import subprocess
import tempfile
import time
from pathlib import Path


def kibibytes(pid, file, field):
    text = Path(f"/proc/{pid}/{file}").read_text()
    return int(re.search(rf"^{field}:\s+(\d+) kB$", text, re.MULTILINE)[1])


def libraries(pid):
    maps = Path(f"/proc/{pid}/maps").read_text()
    return set(re.findall(r"(/\S+\.so[.\d]*)$", maps, re.MULTILINE))


def wake_ups(pid):
    """How often any of its threads has stopped to wait."""
    statuses = Path(f"/proc/{pid}/task").glob("*/status")
    pattern = re.compile(r"^voluntary_ctxt_switches:\s+(\d+)$", re.MULTILINE)
    return sum(int(pattern.search(status.read_text())[1]) for status in statuses)


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
