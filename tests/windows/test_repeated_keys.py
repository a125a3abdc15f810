"""Keys that are held down, which Windows repeats in its own way."""

import pytest

from test_held_keys import test_a_held_key_acts_once
from test_journey import reader, wine
from wine import Screen

__all__ = ["reader", "test_a_held_key_acts_once", "wine"]


@pytest.fixture(scope="module")
def display(session):
    # They repeat sooner and faster than on a learner's keyboard.
    with Screen(session, options="-ardelay 100 -arinterval 10") as display:
        yield display
