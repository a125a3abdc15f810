"""A desktop without anything on it, in one colour.

    background.py COLOUR
"""

import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk


def main():
    style = Gtk.CssProvider()
    style.load_from_data(f"window {{ background: {sys.argv[1]}; }}".encode())
    window = Gtk.Window(title="Background", type_hint=Gdk.WindowTypeHint.DESKTOP)
    window.get_style_context().add_provider(style, Gtk.STYLE_PROVIDER_PRIORITY_APPLICATION)
    window.fullscreen()
    window.show()
    Gtk.main()


if __name__ == "__main__":
    main()
