"""What the tools of desktops and platforms say of the files."""

import os
import re
import struct
import subprocess

from conftest import ID, pictures_of_windows


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


def test_the_desktop_entry_is_valid(prefix):
    file = prefix / f"share/applications/{ID}.desktop"
    assert expect_no_complaint("desktop-file-validate", file) == ""


def test_the_metainfo_is_valid(prefix):
    file = prefix / f"share/metainfo/{ID}.metainfo.xml"
    report = run("appstreamcli", "validate", "--no-net", "--no-color", file).stdout
    assert "Validation" in report
    # There is no homepage yet. Hints differ from version to version.
    found = set(re.findall(r"^[EW]: \S+ (\S+)", report, re.MULTILINE))
    assert found <= {"url-homepage-missing"}, report


def test_the_manual_page_is_set_without_warnings(prefix, version):
    page = prefix / "share/man/man1/zorvan.1"
    text = expect_no_complaint("man", "--warnings", "--local-file", page)
    assert f"Zorvan {version}" in text and "@" not in text


def test_the_resource_of_windows_compiles(build, version, tmp_path):
    resource = tmp_path / "zorvan.res"
    windres = ("x86_64-w64-mingw32-windres", "--preprocessor=cpp", "--output-format=res")
    expect_no_complaint(*windres, build / "packaging/zorvan.rc", resource)
    compiled = resource.read_bytes()
    for name, value in {"ProductName": "Zorvan", "ProductVersion": version}.items():
        name, value = (f"{text}\0".encode("utf-16-le") for text in (name, value))
        assert name in compiled and compiled.split(name)[1].lstrip(b"\0").startswith(value)
    major, minor, patch = (int(number) for number in version.split("."))
    assert struct.pack("<HHHH", minor, major, 0, patch) * 2 in compiled
    for width, picture in pictures_of_windows().items():
        assert picture in compiled, f"the picture of {width} pixels is missing"
