"""What a learner on Windows gets: the installer, the archive, and what the installer does and undoes."""

import re
import struct
import subprocess
import zipfile
from pathlib import Path

import pytest

from session import Stuck, wait_until

ROOT = Path(__file__).parents[2]
LIMIT = 20 * 1024 * 1024
UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zorvan"
PROGRESS_KEY = r"HKCU\Software\Zorvan\Zorvan"
SEEDS = {"currentTest": "0", "currentStatus": "0", "firstRun": "false"} | {
    f"quiz{quiz}": "0" for quiz in range(1, 8)
}
FAILED = "ended with 2:"
# The keys of the registry below which Wine notes its devices.
DEVICES = r"[System\\CurrentControlSet\\"
# The grounds of the installer's pages, and of the picture on its last one.
PAGE = "#F5F5F5"
LAST_PAGE = "#E6EAF8"


@pytest.fixture(scope="session")
def evidence(request):
    folder = request.config.getoption("--evidence")
    folder.mkdir(parents=True, exist_ok=True)
    return folder


@pytest.fixture(scope="session")
def version(build):
    config = (build / "CPackConfig.cmake").read_text("utf-8")
    return re.search(r'^set\(CPACK_PACKAGE_VERSION "(.+)"\)$', config, re.MULTILINE)[1]


@pytest.fixture(scope="session")
def setup(build, version):
    return build / f"zorvan-{version}-setup.exe"


@pytest.fixture(scope="session")
def archive(build, version):
    return build / f"zorvan-{version}-windows.zip"


@pytest.fixture(scope="session")
def archived(archive, version, tmp_path_factory):
    """The archive's one folder."""
    folder = tmp_path_factory.mktemp("archived")
    with zipfile.ZipFile(archive) as file:
        file.extractall(folder)
    assert [part.name for part in folder.iterdir()] == [f"zorvan-{version}"]
    return folder / f"zorvan-{version}"


@pytest.fixture(scope="session")
def older(build, tmp_path_factory):
    """The installer of an older version, with two files that the newer one does not have."""
    folder = tmp_path_factory.mktemp("older")
    for name in ("stale.dll", "plugins/styles/stale.dll"):
        file = folder / "files" / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text("Nothing needs this any more.", "utf-8")
    command = ["cpack", "--config", build / "CPackConfig.cmake", "-G", "NSIS", "-B", folder]
    definitions = {
        "CPACK_PACKAGE_VERSION": "0.0.1",
        "CPACK_INSTALLED_DIRECTORIES": f"{folder / 'files'};.",
    }
    for name, value in definitions.items():
        command += ["-D", f"{name}={value}"]
    subprocess.run(command, check=True, capture_output=True)
    return folder / "zorvan-0.0.1-setup.exe"


@pytest.fixture
def profile(wine):
    """The learner's folder."""
    (user,) = {path.name for path in wine.path(r"C:\users").iterdir()} - {"Public"}
    return rf"C:\users\{user}"


@pytest.fixture
def home(profile):
    """Where the program is installed if the learner does not choose another folder."""
    return profile + r"\AppData\Local\Programs\Zorvan"


@pytest.fixture
def shortcut(profile):
    """The entry in the start menu."""
    return profile + r"\AppData\Roaming\Microsoft\Windows\Start Menu\Programs\Zorvan.lnk"


def files(folder):
    """Each file below a folder, by its path in there."""
    return {str(path.relative_to(folder)): path for path in folder.rglob("*") if path.is_file()}


def contents(folder):
    return {name: path.read_bytes() for name, path in files(folder).items()}


def target_of(shortcut):
    """What a shortcut starts: the local path in its link information."""
    data = shortcut.read_bytes()
    header, flags = struct.unpack_from("<I16xI", data)
    has_item_list, has_link_information = flags & 1, flags & 2
    assert has_link_information
    start = header
    if has_item_list:
        start += 2 + struct.unpack_from("<H", data, start)[0]
    path = start + struct.unpack_from("<I", data, start + 16)[0]
    return data[path : data.index(b"\0", path)].decode("ascii")


def traces(wine):
    """Every file and every line of the registry, but for temporary files, times and what Wine notes of its
    devices.
    """
    wine.wait_for_end()
    found = {name for name in files(wine.folder / "drive_c") if "/Temp/" not in name}
    for hive in ("system.reg", "user.reg"):
        key = ""
        for line in (wine.folder / hive).read_text("utf-8", "replace").splitlines():
            if line.startswith("["):
                key = line.split("] ")[0]
            elif line and not line.startswith("#time=") and not key.startswith(DEVICES):
                found.add(f"{hive} {key}] {line}")
    return found


def windows(display):
    """Title and X id of each window, topmost first."""
    shown = [(display.attempt("xdotool", "getwindowname", window), window) for window in display.windows()]
    return [(done.stdout.strip(), window) for done, window in shown]


def wait_for_windows(display, *expected):
    """Waits until these titles are all there is, topmost first, and returns the windows' X ids."""
    wait_until(
        f"the windows are {expected}", lambda: [*expected] == [title for title, _ in windows(display)]
    )
    return [*display.windows()]


def wait_for_page(display, window, ground):
    """Waits until a window is painted, on a ground of that colour, and has the keyboard."""

    def is_ready():
        active = display.attempt("xdotool", "getactivewindow").stdout.strip()
        source = ("import", "-silent", "-window", window, "-depth", "8")
        histogram = display.run(*source, "-format", "%c", "histogram:info:")
        found = re.findall(r"(\d+): .*?(#[0-9A-F]{6})", histogram)
        counts = {colour: int(count) for count, colour in found}
        # What is not painted yet is black.
        is_painted = counts.get("#000000", 0) < sum(counts.values()) / 20
        return active == str(int(window, 16)) and ground in counts and is_painted

    wait_until(f"the window has a page on {ground}, and the keyboard", is_ready)


def start_from_menu(wine, shortcut):
    """Starts the program as the start menu does; what is returned ends when it ends."""
    return wine.start("zorvan", "start", "/wait", shortcut)


def press(display, window, key, ground="#FFFFFF"):
    """Presses a key in a window."""
    display.activate(window)
    wait_for_page(display, window, ground)
    display.press(key)


def close_greeting(display):
    """Goes on to the main menu, and returns it."""
    wait_for_windows(display, "Zorvan", "Zorvan")
    widths = {window: width for window, (_, _, width, _) in display.windows().items()}
    press(display, min(widths, key=widths.get), "Return")
    return wait_for_windows(display, "Zorvan")[0]


def wait_for_end(program, status=0):
    wait_until("the program has ended", lambda: program.poll() is not None)
    assert program.returncode == status


def progress(wine):
    stored = wine.registry(PROGRESS_KEY)
    return stored and {name: value for name, (_, value) in stored.items()}


def installed_version(wine):
    return wine.registry(UNINSTALL_KEY)["DisplayVersion"][1]


def uninstall(wine, folder):
    uninstaller = wine.path(folder + r"\uninstall.exe")
    wine.run(uninstaller, "/S")
    # It goes on as a copy of itself.
    wait_until("the uninstaller has removed itself", lambda: not uninstaller.exists())
    wine.wait_for_end()


def test_small_enough(setup, archive):
    assert setup.stat().st_size < LIMIT
    assert archive.stat().st_size < LIMIT


def test_installer_and_archive_hold_the_same(wine, setup, archived, home):
    wine.run(setup, "/S")
    installed = contents(wine.path(home))
    del installed["uninstall.exe"]
    assert installed == contents(archived)
    readme = installed["licences/README.txt"].decode("ascii")
    libraries = {name for name in installed if name.endswith(".dll")}
    assert libraries >= {"Qt6Core.dll", "Qt6Gui.dll", "Qt6Widgets.dll", "plugins/platforms/qwindows.dll"}
    for name in libraries:
        assert name.replace("/", "\\") in readme
    for name in re.findall(r"[\w-]+\.txt", readme):
        assert installed[f"licences/{name}"]


def test_hardened(archived):
    """The uninstaller and the installer are not among these: what NSIS makes is not relocatable."""
    programs = [path for path in archived.rglob("*") if path.suffix in (".exe", ".dll")]
    assert archived / "zorvan.exe" in programs
    for program in programs:
        subprocess.run([ROOT / "tools/hardened", program], check=True)


def test_life(wine, setup, older, version, home, shortcut):
    display = wine.display
    before = traces(wine)
    wine.run(older, "/S")
    assert installed_version(wine) == "0.0.1"
    assert wine.path(home + r"\stale.dll").exists()
    assert target_of(wine.path(shortcut)) == home + r"\zorvan.exe"
    # The learner keeps something else there.
    notes = wine.path(home + r"\plugins\notes.txt")
    notes.write_text("Arrays begin at 0.", "utf-8")
    program = start_from_menu(wine, shortcut)
    menu = close_greeting(display)
    assert progress(wine) == SEEDS
    press(display, menu, "ctrl+q")
    wait_for_end(program)
    wine.run("reg", "add", PROGRESS_KEY, "/v", "quiz1", "/d", "2", "/f")
    learnt = SEEDS | {"quiz1": "2"}

    wine.run(setup, "/S")
    assert installed_version(wine) == version
    assert progress(wine) == learnt
    assert not [name for name in files(wine.path(home)) if "stale" in name]
    assert target_of(wine.path(shortcut)) == home + r"\zorvan.exe"
    program = start_from_menu(wine, shortcut)
    (menu,) = wait_for_windows(display, "Zorvan")
    press(display, menu, "ctrl+q")
    wait_for_end(program)

    uninstall(wine, home)
    assert progress(wine) == learnt
    after = traces(wine)
    kept = {rf'user.reg [Software\\Zorvan\\Zorvan] "{name}"="{value}"' for name, value in learnt.items()}
    assert after - before == kept | {str(notes.relative_to(wine.folder / "drive_c"))}
    assert before - after == set()


def test_while_it_runs(wine, setup, older, version, home, shortcut, evidence):
    """Nothing changes while the program is in use; once it is closed, the installer goes on."""
    display = wine.display
    wine.run(older, "/S")
    program = start_from_menu(wine, shortcut)
    menu = close_greeting(display)
    before = contents(wine.path(home))

    with pytest.raises(Stuck, match=FAILED):
        wine.run(setup, "/S")
    with pytest.raises(Stuck, match=FAILED):
        # Run where it is, so that it says how it ends.
        wine.run(wine.path(home + r"\uninstall.exe"), "/S", f"_?={home}")

    def start_setup():
        installer = wine.start("setup", setup)
        page, _ = wait_for_windows(display, "Zorvan Setup", "Zorvan")
        wait_for_page(display, page, PAGE)
        display.press("Return")
        message, *_ = wait_for_windows(display, "Zorvan Setup", "Zorvan Setup", "Zorvan")
        wait_for_page(display, message, PAGE)
        return installer, message, page

    installer, message, _ = start_setup()
    display.picture(evidence / "installer-running.png", message)
    display.press("Escape")
    wait_for_end(installer, 2)
    _, message, page = start_setup()
    assert contents(wine.path(home)) == before
    assert installed_version(wine) == "0.0.1"
    assert wine.path(shortcut).exists()

    press(display, menu, "ctrl+q")
    wait_for_end(program)
    press(display, message, "Return", PAGE)
    wait_for_page(display, page, LAST_PAGE)
    assert installed_version(wine) == version


def test_pages(wine, setup, evidence):
    """In a folder of the learner's choice, which the next version keeps."""
    display = wine.display
    folder = r"C:\My lessons\Zorvan"
    installer = wine.start("setup", setup)
    (page,) = wait_for_windows(display, "Zorvan Setup")
    wait_for_page(display, page, PAGE)
    display.picture(evidence / "installer-folder.png", page)
    # In the place of the folder that is offered, which is selected.
    display.run("xdotool", "type", folder)
    display.press("Return")
    wait_for_page(display, page, LAST_PAGE)
    display.picture(evidence / "installer-finish.png", page)
    display.press("Return")
    press(display, close_greeting(display), "ctrl+q")
    wait_for_windows(display)
    wait_for_end(installer)

    (wine.path(folder) / "Qt6Core.dll").unlink()
    wine.run(setup, "/S")
    assert wine.path(folder + r"\Qt6Core.dll").exists()
    assert wine.registry(UNINSTALL_KEY)["InstallLocation"][1] == folder

    wine.start("uninstall", wine.path(folder + r"\uninstall.exe"))
    (page,) = wait_for_windows(display, "Zorvan Uninstall")
    wait_for_page(display, page, PAGE)
    display.picture(evidence / "uninstaller.png", page)
    display.press("Return")
    wait_until("the folder is gone", lambda: not wine.path(folder).exists())
    assert progress(wine) == SEEDS


def test_old_windows_is_refused(wine, setup, home):
    wine.run("winecfg", "-v", "win81")
    with pytest.raises(Stuck, match=FAILED):
        wine.run(setup, "/S")
    assert not wine.path(home).exists()
    assert wine.registry(UNINSTALL_KEY) is None


def test_nothing_is_left_of_a_failure(wine, setup, home, shortcut):
    # No file can be written in the place of a folder.
    obstacle = wine.path(home + r"\Qt6Gui.dll")
    obstacle.mkdir(parents=True)
    with pytest.raises(Stuck, match=FAILED):
        wine.run(setup, "/S")
    assert [*wine.path(home).rglob("*")] == [obstacle]
    assert wine.registry(UNINSTALL_KEY) is None
    assert not wine.path(shortcut).exists()
