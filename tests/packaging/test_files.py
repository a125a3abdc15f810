"""What makes a desktop know the program, on Linux, macOS and Windows."""

import plistlib
import re
import struct
import xml.etree.ElementTree as ElementTree
from configparser import RawConfigParser

from conftest import ICONS, ID, ROOT, pictures_of_windows

SIZES = (16, 24, 32, 48, 64, 128, 256, 512)


def test_every_file_has_its_place(prefix):
    installed = {str(file.relative_to(prefix)) for file in prefix.rglob("*") if file.is_file()}
    assert installed == {
        "bin/zorvan",
        f"share/applications/{ID}.desktop",
        f"share/metainfo/{ID}.metainfo.xml",
        "share/man/man1/zorvan.1",
        f"share/icons/hicolor/scalable/apps/{ID}.svg",
        f"share/icons/hicolor/symbolic/apps/{ID}-symbolic.svg",
    } | {f"share/icons/hicolor/{size}x{size}/apps/{ID}.png" for size in SIZES}


def test_the_desktop_entry_names_what_is_installed(prefix):
    parser = RawConfigParser()
    parser.read(prefix / f"share/applications/{ID}.desktop", "utf-8")
    entry = parser["Desktop Entry"]
    assert (prefix / "bin" / entry["Exec"]).is_file()
    assert (prefix / "bin" / entry["TryExec"]).is_file()
    assert (prefix / f"share/icons/hicolor/scalable/apps/{entry['Icon']}.svg").is_file()
    # Qt names the class of the windows after the program's file.
    assert (prefix / "bin" / entry["StartupWMClass"]).is_file()


def test_the_metainfo_names_what_is_installed(metainfo, prefix, version):
    assert metainfo.findtext("id") == ID
    assert (prefix / "share/applications" / metainfo.findtext("launchable")).is_file()
    assert (prefix / "bin" / metainfo.findtext("provides/binary")).is_file()
    [release] = metainfo.iter("release")
    changelog = (ROOT / "CHANGELOG.md").read_text("utf-8")
    newest, date = re.search(r"^## \[(\d.*)\] - (.*)$", changelog, re.MULTILINE).groups()
    assert release.attrib == {"version": version, "date": date}
    assert newest == version


def test_the_manual_tells_what_passes():
    manual = (ROOT / "packaging/linux/zorvan.1.in").read_text("utf-8")
    assert "With at least 80 % right you pass, and a quiz that you pass three times" in manual


def test_an_icon_has_the_size_of_its_folder(prefix):
    for size in SIZES:
        picture = prefix / f"share/icons/hicolor/{size}x{size}/apps/{ID}.png"
        assert size_of_png(picture.read_bytes()) == (size, size)


def test_the_symbolic_icon_is_filled_with_one_colour(prefix):
    file = prefix / f"share/icons/hicolor/symbolic/apps/{ID}-symbolic.svg"
    picture = ElementTree.parse(file).getroot()
    assert picture.attrib == {"width": "16", "height": "16", "viewBox": "0 0 16 16"}
    for shape in picture:
        # Desktops replace this colour, and leave strokes, styles and other elements as they are.
        assert shape.tag == "{http://www.w3.org/2000/svg}path"
        assert shape.attrib == {"fill": "#2e3436", "d": shape.get("d")}
    assert len(picture) > 0


def size_of_png(data):
    assert data[:8] == b"\x89PNG\r\n\x1a\n"
    return struct.unpack(">II", data[16:24])


def test_the_bundle_of_macos_says_what_it_is(build, version):
    plist = plistlib.loads((build / "packaging/Info.plist").read_bytes())
    assert plist["CFBundleIdentifier"] == ID
    assert plist["CFBundleDisplayName"] == "Zorvan"
    assert plist["CFBundleShortVersionString"] == plist["CFBundleVersion"] == version
    assert plist["LSApplicationCategoryType"] == "public.app-category.education"
    assert (ICONS / plist["CFBundleIconFile"]).is_file()


def test_the_icon_of_macos_has_every_size():
    data = (ICONS / "zorvan.icns").read_bytes()
    assert data[:8] == struct.pack(">4sI", b"icns", len(data))
    kinds, offset = set(), 8
    while offset < len(data):
        kind, length = struct.unpack_from(">4sI", data, offset)
        kinds.add(kind)
        offset += length
    # From 16 to 1024 pixels.
    assert kinds >= {b"is32", b"il32", b"ih32", b"it32", b"ic08", b"ic09", b"ic10"}


def test_the_icon_of_windows_has_every_size():
    assert list(pictures_of_windows()) == [16, 24, 32, 48, 64, 128, 256]
