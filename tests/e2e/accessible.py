"""What the accessibility bus knows of programs: items, their words, states and places."""

import re

import pyatspi
from gi.repository import Atspi, GLib

Role = Atspi.Role
State = Atspi.StateType


def ask(method, *arguments):
    """The program's answer; None if what is asked about is gone."""
    try:
        return method(*arguments)
    except GLib.Error:
        return None


def name_of(item):
    return ask(item.get_name) or ""


def fits(text, name):
    """Whether a text is a name, matches it as a pattern, or is one of several."""
    if isinstance(name, str):
        return text == name
    if isinstance(name, re.Pattern):
        return name.fullmatch(text) is not None
    return text in name


def title_of(window):
    """The window's name without the program's, which Qt adds from 6.11 on."""
    return name_of(window).removesuffix(" — Zorvan")


def description_of(item):
    return ask(item.get_description) or ""


def describe(item):
    """The item's role and name, for messages."""
    role = ask(item.get_role)
    return f'the {role.value_nick if role else "item"} "{name_of(item)}"'


def has(item, state):
    states = ask(item.get_state_set)
    return states is not None and states.contains(state)


def action_names(item):
    count = ask(Atspi.Action.get_n_actions, item) or 0
    return [ask(Atspi.Action.get_action_name, item, index) for index in range(count)]


def lines(item, depth=0):
    """An item and all that is inside it, one line for each."""
    states = ask(item.get_state_set)
    nicks = " ".join(state.value_nick for state in states.get_states()) if states else "gone"
    yield f'{"  " * depth}{describe(item)} "{description_of(item)}" {extents(item)} {nicks}'
    for child in children(item):
        yield from lines(child, depth + 1)


def children(item):
    count = ask(item.get_child_count) if item else None
    found = [ask(item.get_child_at_index, index) for index in range(count or 0)]
    return [child for child in found if child]


def shown(item):
    """All items inside `item` that are shown, in reading order."""
    for child in children(item):
        if has(child, State.SHOWING):
            yield child
            yield from shown(child)


def around(item):
    """What `item` is in, from the inside out, up to its window."""
    parent = ask(item.get_parent)
    while parent and ask(parent.get_role) != Role.APPLICATION:
        yield parent
        parent = ask(parent.get_parent)


def window_of(item):
    return [item, *around(item)][-1]


def extents(item):
    """Left, top, width and height, in pixels of the screen."""
    box = ask(item.get_extents, pyatspi.DESKTOP_COORDS)
    return (box.x, box.y, box.width, box.height) if box else None


def view_of(item):
    """The area in which `item` can be seen: what is around it may scroll."""
    first, *others = (extents(outer) for outer in around(item))
    for place in others:
        first = common(first, place)
    return first


def lies_within(place, area):
    return common(place, area) == place


def common(a, b):
    """The area that two rectangles have in common."""
    left, top = max(a[0], b[0]), max(a[1], b[1])
    right, bottom = min(a[0] + a[2], b[0] + b[2]), min(a[1] + a[3], b[1] + b[3])
    return left, top, right - left, bottom - top
