"""The order of the rooms: what each source includes, read from the sources themselves.

A unit is a header with its source, such as "windowing/window". Layouts include the headers of the
controls that they are made of.
"""

import os
import re
from graphlib import CycleError, TopologicalSorter
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
ROOMS = os.environ["ZORVAN_ROOMS"].split()
INCLUDE = re.compile(r'^#include "([^"]+)"|<header>([^<]+)</header>', re.MULTILINE)


def unit(path):
    return str(Path(path).with_suffix(""))


def read_includes():
    units = {}
    for room in ROOMS:
        for file in (ROOT / room).rglob("*"):
            if file.suffix in (".h", ".cpp", ".ui"):
                name = unit(file.relative_to(ROOT))
                found = {one or other for one, other in INCLUDE.findall(file.read_text("utf-8"))}
                units.setdefault(name, set()).update(
                    unit(path) for path in found if not path.startswith("ui_")
                )
    return {name: included - {name} for name, included in units.items()}


INCLUDES = read_includes()


@pytest.mark.parametrize("room", ROOMS)
def test_a_room_includes_only_itself_and_what_is_below(room):
    below = ROOMS[: ROOMS.index(room) + 1]
    units = {name: included for name, included in INCLUDES.items() if name.startswith(room + "/")}
    assert units, f"there is nothing in {room}/"
    wrong = [
        f"{name} includes {other}"
        for name, included in units.items()
        for other in included
        if other.split("/")[0] not in below
    ]
    assert not wrong


def test_nothing_includes_itself_on_a_detour():
    try:
        TopologicalSorter(INCLUDES).prepare()
    except CycleError as error:
        pytest.fail("a circle: " + ", ".join(error.args[1]))


def test_what_is_included_is_there():
    wrong = [
        f"{name} includes {other}"
        for name, included in INCLUDES.items()
        for other in included
        if other not in INCLUDES
    ]
    assert not wrong


def test_what_tests_include_by_the_name_of_a_room_is_the_program():
    wrong = [
        f"{file.relative_to(ROOT)} includes {path}"
        for file in (ROOT / "tests").rglob("*.*")
        if file.suffix in (".h", ".cpp")
        for path, _ in INCLUDE.findall(file.read_text("utf-8"))
        if path.split("/")[0] in ROOMS and not (ROOT / path).exists()
    ]
    assert not wrong
