"""desk.py COMMAND...: runs a command with a Windows of its own, on a screen that is larger than any
window.
"""

import os
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[1] / "e2e"))

from session import Session
from wine import Screen, Wine

with (
    Session() as session,
    Screen(session, "3840x2160") as screen,
    Wine(screen, session.folder / "wine") as wine,
):
    wine.use_desktop()
    screen.put_pointer_aside()
    ended = subprocess.run(sys.argv[1:], env=os.environ | wine.environment, check=False)
sys.exit(ended.returncode)
