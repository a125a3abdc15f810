"""Windows, as far as Wine is one, on a virtual display."""

import os
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

from display import KEY_CODES, Display
from session import PATIENCE, Stuck

WINE = "/usr/lib/wine/wine64"
SERVER = "/usr/lib/wine/wineserver64"


# Whether programs are light there.
THEMES = {"light": 1, "dark": 0}


class Screen(Display):
    """A virtual X server without a window manager: it and Wine may each give the keyboard to
    another window.
    """

    def start_manager(self):
        return None

    def __exit__(self, *_):
        self.session.end(self._server)

    def press(self, *keys):
        # As long as a finger does: a release is lost that comes before another window has taken
        # the place of the one that the key closed, and Qt takes the next press for a repetition.
        milliseconds = 100
        names = (KEY_CODES.get(key, key) for key in keys)
        self.run("xdotool", "key", "--delay", milliseconds, *names)


class Wine:
    """A Windows of its own, in a `with` block, which ends what was started in it.

    folder       its files; drive C is the folder drive_c in there
    environment  for programs that are started in it
    """

    def __init__(self, display, folder):
        self.display = display
        self.folder = folder
        self.environment = display.environment | {
            "WINEPREFIX": str(folder),
            # Its own messages off, and no offer to get what it lacks.
            "WINEDEBUG": "-all",
            "WINEDLLOVERRIDES": "mscoree,mshtml,winemenubuilder.exe=",
        }
        self.environment.pop("QT_QPA_PLATFORM", None)

    def __enter__(self):
        self.run("wineboot", "--init")
        # The oldest that Qt supports.
        self.run("winecfg", "-v", "win10")
        self.wait_for_end()
        return self

    def __exit__(self, *_):
        self._serve("--kill")

    def use_desktop(self):
        """Has Wine manage the windows itself from now on, as Windows does, on a Screen, and gives it
        fonts in place of those of Windows.
        """
        # The marks on title bars.
        shutil.copy("/usr/share/wine/fonts/marlett.ttf", self.path(r"C:\windows\Fonts"))
        # Wine's own font for texts lacks characters, and its bold is not.
        substitutes = r"HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes"
        self.set(substitutes, "MS Shell Dlg", "DejaVu Sans")
        self.set(r"HKCU\Software\Wine\Fonts\Replacements", "Consolas", "DejaVu Sans Mono")
        desktop = r"HKCU\Control Panel\Desktop"
        self.set(desktop, "FontSmoothing", "2")
        self.set(desktop, "FontSmoothingType", 2)
        key = r"HKCU\Software\Wine\Explorer"
        self.set(key, "Desktop", "Default")
        self.set(key + r"\Desktops", "Default", self.display.size)
        self.wait_for_end()

    def turn(self, theme):
        """Has programs be light or dark from now on, as Windows' settings do."""
        key = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Themes\Personalize"
        self.set(key, "AppsUseLightTheme", THEMES[theme])

    def scale(self, percent):
        """Has everything be that large from now on."""
        self.set(r"HKCU\Control Panel\Desktop", "LogPixels", 96 * percent // 100)
        self.wait_for_end()

    def set(self, key, name, value):
        """Sets a text or a number in the registry."""
        kind = "REG_SZ" if isinstance(value, str) else "REG_DWORD"
        self.run("reg", "add", key, "/v", name, "/t", kind, "/d", value, "/f")

    def start(self, name, *command, **options):
        """Starts a program, whose output goes into the session's log of that name."""
        command = [str(part) for part in command]
        return self.display.session.spawn(name, [WINE, *command], self.environment, **options)

    def run(self, *command):
        """What a program writes; raises Stuck if it fails."""
        # Not through pipes: these would stay open as long as what Wine starts in the background.
        with tempfile.TemporaryFile() as output:
            done = subprocess.run(
                [WINE, *(str(part) for part in command)],
                env=os.environ | self.environment,
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=output,
                timeout=PATIENCE,
            )
            output.seek(0)
            text = output.read().decode("utf-8", "replace").replace("\r\n", "\n")
        if done.returncode != 0:
            raise Stuck(f"{command[0]} ended with {done.returncode}: {text}")
        return text

    def wait_for_end(self):
        """Waits until nothing runs any more; what was written to the registry is in files then."""
        self._serve("--wait")

    def path(self, windows_path):
        """The file of that name, such as "C:\\users"."""
        return Path(self.folder, "drive_c", *windows_path.split("\\")[1:])

    def registry(self, key):
        """The names in a key of the registry with their kinds and values; None if there is no such key."""
        try:
            lines = self.run("reg", "query", key).splitlines()
        except Stuck:
            return None
        found = (re.fullmatch(r"    (.+?)    (REG_\w+)    ?(.*)", line) for line in lines)
        return {match[1]: (match[2], match[3]) for match in found if match}

    def _serve(self, option):
        subprocess.run([SERVER, option], env=os.environ | self.environment, timeout=PATIENCE, check=False)
