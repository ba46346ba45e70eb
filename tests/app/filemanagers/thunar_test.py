"""The entries in the menu of a file manager, used as a person does: a real Thunar with real keys, which starts the
real program from a directory with an odd name.

usage: thunar_test.py BUNDLE INSTALL_ENTRIES SCRATCH"""

import json
import os
import pathlib
import shutil
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "accessibility"))
import session as own_session  # noqa: E402

THUNAR = "/usr/bin/thunar"
reason = own_session.lacking()
if not reason and not os.access(THUNAR, os.X_OK):
    reason = "there is no Thunar (package thunar)"
if reason:
    print(f"skipped: {reason}")
    sys.exit(own_session.NOT_AVAILABLE)

from tree import Application, Role, State, until  # noqa: E402

HIDE, SHOW = "Hide with Veilkeep", "Show in Veilkeep"
ODD_NAMES = [b"a b", b"new\nline", b"it's \"quoted\"", "\U0001f600 \u00fc".encode(), b"no text \xff", b"-rf", b"%20 %U",
             b"$HOME `id` \\", b"*", b"file:"]


def linked_or_copied(source, target):
    try:
        os.link(source, target)
    except OSError:
        shutil.copy2(source, target)


class Desktop:
    def __init__(self, session, bundle, install_entries):
        self.session, self.keyboard, self.install_entries = session, session.keyboard, install_entries
        until(self.keyboard.has_window_manager, "the window manager")
        self.bundle = session.home / "it's \"my\" $HOME 100% <&>" / "Veilkeep.app"
        shutil.copytree(bundle, self.bundle, copy_function=linked_or_copied)
        session.programs = self.bundle / "Contents" / "MacOS"
        self.cases = session.home / "cases"
        os.environ["NO_AT_BRIDGE"] = "0"

    def entries(self, action):
        run = subprocess.run([self.install_entries, action, self.bundle], capture_output=True, text=True)
        assert run.returncode == 0, run.stderr
        return run.stdout.splitlines()

    def folder(self, name, *names):
        folder = self.cases / name
        folder.mkdir(parents=True)
        for each in names:
            (pathlib.Path(os.fsdecode(os.fsencode(folder) + b"/" + each))).write_text("content")
        return folder

    def start_thunar(self):
        """As desktops do; from now on each start opens a window of it."""
        from gi.repository import Gio, GLib

        bus = Gio.bus_get_sync(Gio.BusType.SESSION)

        def is_there():
            owner = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner")
            return bus.call_sync(*owner, GLib.Variant("(s)", ("org.xfce.Thunar",)), None, Gio.DBusCallFlags.NONE, 5000,
                                 None).unpack()[0]

        self.session.start(THUNAR, "--daemon", stdout=self.session.log)
        until(is_there, "Thunar on the bus")
        self.thunar = None

    def choose(self, folder, entry):
        """What a person does: opens the folder, selects all of it, opens the menu by its key, and chooses."""
        subprocess.run([THUNAR, folder], check=True, timeout=30)
        self.thunar = self.thunar or Application("thunar")
        title = f"{folder.name} - Thunar"
        until(lambda: (window := self.thunar.window(title)) and window.has(State.ACTIVE), title)
        self.keyboard.press("Ctrl+a")
        self.keyboard.press("Shift+F10")
        item = self.thunar.wait_for(Role.MENU_ITEM, entry)
        item.accessible.do_action(0)
        until(lambda: not self.is_menu_open(), "the end of the menu")
        self.thunar_window = title

    def is_menu_open(self):
        return any(window.find(Role.MENU_ITEM, HIDE) for window in self.thunar.windows())

    def close_folder(self):
        until(lambda: (window := self.thunar.window(self.thunar_window)) and window.has(State.ACTIVE),
              self.thunar_window)
        self.keyboard.press("Ctrl+w")
        until(lambda: not self.thunar.window(self.thunar_window), "the end of the window")

    # --- The cases ---

    def hides_ten_odd_names_at_once(self):
        folder = self.folder("ten", *ODD_NAMES)
        self.choose(folder, HIDE)
        until(lambda: os.listdir(folder) == [".SYS_INDEX"], "ten hidden items")
        assert len(os.listdir(folder / ".SYS_INDEX")) == len(ODD_NAMES)
        self.close_folder()

    def shows_items_behind_the_password(self):
        self.session.ctl("password", "set", "--password-stdin", text=own_session.PASSWORD + "\n")
        self.session.start_application("--login")
        until(lambda: json.loads(self.session.ctl("status", "--json"))["owner"] == "application",
              "the application")
        folder = self.folder("shown", b"a b", b"new\nline")
        self.choose(folder, SHOW)
        application = Application()
        prompt = "Enter your Veilkeep password:"
        application.wait_for(Role.PASSWORD_TEXT, prompt)
        until(lambda: (window := application.window(prompt)) and window.has(State.ACTIVE), "the keyboard")
        self.keyboard.type(own_session.PASSWORD)
        self.keyboard.press("Return")

        def selected():
            window = application.window("Veilkeep")
            return [cell.name.split(",")[0] for cell in window.all()
                    if cell.role == Role.TABLE_CELL and cell.has(State.SELECTED)] if window else []

        until(lambda: selected() == ["a b", "new\\nline"], "the selected items")
        assert sorted(os.listdir(folder)) == ["a b", "new\nline"]


def run(bundle, install_entries, scratch):
    session = own_session.Session(pathlib.Path(bundle) / "Contents" / "MacOS", scratch)
    try:
        session.open()
        desktop = Desktop(session, bundle, install_entries)
        assert str(session.home / ".config/Thunar/uca.xml") in desktop.entries("install")
        desktop.start_thunar()
        for case in (desktop.hides_ten_odd_names_at_once, desktop.shows_items_behind_the_password):
            print(case.__name__.replace("_", " "), flush=True)
            case()
        desktop.entries("remove")
        actions = session.home / ".config/Thunar/uca.xml"
        assert not actions.exists() or "eilkeep" not in actions.read_text()
    except own_session.Missing as missing:
        print(f"skipped: {missing}")
        return own_session.NOT_AVAILABLE
    except Exception:
        print((session.home / "session.log").read_text()[-2000:])
        raise
    finally:
        session.close()
    return 0


if __name__ == "__main__":
    sys.exit(run(*sys.argv[1:]))
