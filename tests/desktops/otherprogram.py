"""Another program: a window that notes each key it gets, and when it gets and loses the keyboard.

    otherprogram.py FILE LEFT TOP WIDTH HEIGHT
"""

import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk


def main():
    file, *numbers = sys.argv[1:]
    left, top, width, height = (int(number) for number in numbers)
    with open(file, "w", encoding="utf-8", buffering=1) as notes:

        def note(text):
            print(text, file=notes)

        window = Gtk.Window(title="Another program")
        window.set_default_size(width, height)
        # On Wayland only the desktop decides where windows are.
        window.move(left, top)
        window.connect("focus-in-event", lambda *_: note("has the keyboard"))
        window.connect("focus-out-event", lambda *_: note("has lost the keyboard"))
        window.connect("key-press-event", lambda _, event: note(event.string))
        window.show()
        Gtk.main()


if __name__ == "__main__":
    main()
