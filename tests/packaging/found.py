"""Looks the installed program up as a desktop does: its entry by words, its icon by sizes."""

import gi

gi.require_version("Gtk", "3.0")

from gi.repository import Gio, Gtk

ID = "org.zorvan.Zorvan"
ICONS = "/usr/share/icons/hicolor"

entry = Gio.DesktopAppInfo.new(f"{ID}.desktop")
assert entry.should_show()
assert "Education" in entry.get_categories().split(";")
for word in ("zorvan", "php", "quiz"):
    found = sum(Gio.DesktopAppInfo.search(word), [])
    assert f"{ID}.desktop" in found, f'"{word}" finds {found}'

theme = Gtk.IconTheme()
theme.set_custom_theme("hicolor")
wanted = {size: f"{size}x{size}/apps/{ID}.png" for size in (16, 24, 32, 48, 64, 128, 256, 512)}
# A size that no picture has.
wanted[100] = f"scalable/apps/{ID}.svg"
for size, file in wanted.items():
    icon = theme.lookup_by_gicon(entry.get_icon(), size, Gtk.IconLookupFlags(0))
    assert icon.get_filename() == f"{ICONS}/{file}", f"{size} pixels: {icon.get_filename()}"
symbolic = theme.lookup_icon(f"{ID}-symbolic", 16, Gtk.IconLookupFlags(0))
assert symbolic.is_symbolic()
assert symbolic.get_filename() == f"{ICONS}/symbolic/apps/{ID}-symbolic.svg"
print("Found by its entry and its icons")
