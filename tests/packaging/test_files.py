"""What makes a desktop know the program, on Linux, macOS and Windows."""

import os
import plistlib
import re
import struct
import subprocess
import xml.etree.ElementTree as ElementTree
from pathlib import Path

import pytest

ID = "org.zorvan.Zorvan"
ROOT = Path(__file__).parents[2]
ICONS = ROOT / "resources/icons"
SIZES = (16, 24, 32, 48, 64, 128, 256, 512)


def run(*command):
    return subprocess.run(
        [str(part) for part in command],
        capture_output=True,
        text=True,
        env=os.environ | {"LC_ALL": "C.UTF-8", "MANWIDTH": "100"},
    )


def expect_no_complaint(*command):
    done = run(*command)
    assert (done.returncode, done.stderr) == (0, ""), done.stdout
    return done.stdout


def test_every_file_has_its_place(share):
    files = [file for file in share.parent.rglob("*") if file.is_file()]
    assert {str(file.relative_to(share.parent)) for file in files} == {
        "bin/zorvan",
        f"share/applications/{ID}.desktop",
        f"share/metainfo/{ID}.metainfo.xml",
        "share/man/man1/zorvan.1",
        f"share/icons/hicolor/scalable/apps/{ID}.svg",
    } | {f"share/icons/hicolor/{size}x{size}/apps/{ID}.png" for size in SIZES}


def test_the_desktop_entry_is_valid(share):
    file = share / f"applications/{ID}.desktop"
    assert expect_no_complaint("desktop-file-validate", file) == ""
    # The name by which the window manager knows the program's windows.
    assert "StartupWMClass=zorvan" in file.read_text("utf-8").splitlines()


def test_the_metainfo_is_valid(share):
    file = share / f"metainfo/{ID}.metainfo.xml"
    report = run("appstreamcli", "validate", "--no-net", "--no-color", file).stdout
    assert "Validation" in report
    # There is no homepage yet. Hints differ from version to version.
    found = set(re.findall(r"^[EW]: \S+ (\S+)", report, re.MULTILINE))
    assert found <= {"url-homepage-missing"}, report


def test_the_metainfo_names_the_version_and_the_entry(share, version):
    component = ElementTree.parse(share / f"metainfo/{ID}.metainfo.xml").getroot()
    assert component.findtext("id") == ID
    assert component.findtext("launchable") == f"{ID}.desktop"
    assert component.findtext("provides/binary") == "zorvan"
    assert [release.get("version") for release in component.iter("release")] == [version]


def test_the_changelog_has_the_version_and_its_date(share, version):
    component = ElementTree.parse(share / f"metainfo/{ID}.metainfo.xml").getroot()
    [date] = [release.get("date") for release in component.iter("release")]
    changelog = (ROOT / "CHANGELOG.md").read_text("utf-8")
    assert re.findall(r"^## \[(\d.*)\] - (.*)$", changelog, re.MULTILINE)[0] == (version, date)


def test_the_manual_page_is_set_without_warnings(share, version):
    page = share / "man/man1/zorvan.1"
    text = expect_no_complaint("man", "--warnings", "--local-file", page)
    assert f"Zorvan {version}" in text and "@" not in text


@pytest.mark.parametrize("size", SIZES)
def test_an_icon_has_the_size_of_its_folder(share, size):
    header = (share / f"icons/hicolor/{size}x{size}/apps/{ID}.png").read_bytes()[:24]
    assert header[:8] == b"\x89PNG\r\n\x1a\n"
    assert struct.unpack(">II", header[16:]) == (size, size)


def test_the_bundle_of_macos_says_what_it_is(build, version):
    plist = plistlib.loads((build / "packaging/Info.plist").read_bytes())
    assert plist["CFBundleIdentifier"] == ID
    assert plist["CFBundleDisplayName"] == "Zorvan"
    assert plist["CFBundleShortVersionString"] == plist["CFBundleVersion"] == version
    assert plist["LSApplicationCategoryType"] == "public.app-category.education"
    assert (ICONS / plist["CFBundleIconFile"]).is_file()


def test_the_icon_of_macos_has_every_size():
    data = (ICONS / "zorvan.icns").read_bytes()
    assert data[:4] == b"icns" and struct.unpack(">I", data[4:8]) == (len(data),)
    kinds, offset = set(), 8
    while offset < len(data):
        kind, length = struct.unpack(">4sI", data[offset : offset + 8])
        kinds.add(kind)
        offset += length
    # From 16 to 1024 pixels.
    assert kinds >= {b"is32", b"il32", b"ih32", b"it32", b"ic08", b"ic09", b"ic10"}


def pictures_of_windows():
    """Width and content of each picture in the icon."""
    data = (ICONS / "zorvan.ico").read_bytes()
    _, kind, count = struct.unpack("<HHH", data[:6])
    assert kind == 1
    for entry in range(count):
        width, *_, length, offset = struct.unpack("<BBBBHHII", data[6 + 16 * entry :][:16])
        yield width or 256, data[offset : offset + length]


def test_the_icon_of_windows_has_every_size():
    assert [width for width, _ in pictures_of_windows()] == [16, 24, 32, 48, 64, 128, 256]


def test_the_resource_of_windows_compiles(build, version, tmp_path):
    resource = tmp_path / "zorvan.res"
    expect_no_complaint(
        "x86_64-w64-mingw32-windres",
        "--preprocessor=cpp",
        "--output-format=res",
        build / "packaging/zorvan.rc",
        resource,
    )
    compiled = resource.read_bytes()
    for name, value in {"ProductName": "Zorvan", "ProductVersion": version}.items():
        name, value = (f"{text}\0".encode("utf-16-le") for text in (name, value))
        assert name in compiled and compiled.split(name)[1].lstrip(b"\0").startswith(value)
    major, minor, patch = (int(number) for number in version.split("."))
    assert struct.pack("<HHHH", minor, major, 0, patch) * 2 in compiled
    for width, picture in pictures_of_windows():
        assert picture in compiled, f"the picture of {width} pixels is missing"
