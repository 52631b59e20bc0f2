"""A GTK application that copies and pastes, told by lines on standard input.

    text FILE           copies the text in a file
    picture FILE        copies the picture in a file
    read FILE           pastes text into a file
    read-picture FILE   pastes a picture into a PNG file
    targets             lists what the clipboard offers

Answers each line with "done", and what was asked for.
"""

import sys
from pathlib import Path

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GdkPixbuf, GLib, Gtk  # noqa: E402

clipboard = Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD)


def text(name):
    clipboard.set_text(Path(name).read_text(encoding="utf-8"), -1)


def picture(name):
    clipboard.set_image(GdkPixbuf.Pixbuf.new_from_file(name))


def read(name):
    pasted = clipboard.wait_for_text()
    if pasted is None:
        return "nothing"
    Path(name).write_text(pasted, encoding="utf-8")
    return None


def read_picture(name):
    pasted = clipboard.wait_for_image()
    if pasted is None:
        return "nothing"
    pasted.savev(name, "png", [], [])
    return f"{pasted.get_width()}x{pasted.get_height()}"


def targets():
    is_there, atoms = clipboard.wait_for_targets()
    return " ".join(atom.name() for atom in atoms) if is_there else "nothing"


COMMANDS = {"text": text, "picture": picture, "read": read, "read-picture": read_picture,
            "targets": targets}


def obey(_source, _condition):
    line = sys.stdin.readline()
    if not line:
        Gtk.main_quit()
        return False
    command, *arguments = line.split()
    answer = COMMANDS[command](*arguments)
    print("done" if answer is None else f"done {answer}", flush=True)
    return True


GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, obey)
print("done", flush=True)
Gtk.main()
