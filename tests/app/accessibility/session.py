"""A desktop session of the test's own: a display, a message bus with the accessibility bus on it, a home with a
list of items, and the application."""

import ctypes
import json
import os
import pathlib
import shutil
import subprocess
import tempfile

NOT_AVAILABLE = 77
PASSWORD = "open-sesame"


class Missing(Exception):
    """What the test needs and this machine does not have."""


def lacking():
    """Why the test cannot run here; None where it can."""
    for program in ("/usr/bin/Xvfb", "/usr/bin/openbox", "/usr/bin/dbus-daemon", "/usr/libexec/at-spi-bus-launcher"):
        if not os.access(program, os.X_OK):
            return f"there is no {program}"
    try:
        import gi

        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi  # noqa: F401
    except (ImportError, ValueError) as trouble:
        return f"AT-SPI cannot be used from Python: {trouble}"
    return None


class Session:
    def __init__(self, programs, scratch):
        self.programs = pathlib.Path(programs)
        self.started = []
        pathlib.Path(scratch).mkdir(parents=True, exist_ok=True)
        protected = ("/tmp", "/var", "/usr", "/opt", "/run", "/dev", "/etc", "/boot")
        place = "/srv" if scratch.startswith(protected) else scratch
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="accessibility-", dir=place))
        self.log = open(self.home / "session.log", "w")
        os.environ.update(
            HOME=str(self.home),
            XDG_DATA_HOME=str(self.home / ".local/share"),
            XDG_CONFIG_HOME=str(self.home / ".config"),
            XDG_STATE_HOME=str(self.home / ".local/state"),
            XDG_CACHE_HOME=str(self.home / ".cache"),
            XDG_RUNTIME_DIR=str(self.home / "runtime"),
            DBUS_SYSTEM_BUS_ADDRESS="disabled:",
            QT_QPA_PLATFORM="xcb",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
            QT_STYLE_OVERRIDE="Fusion",
            NO_AT_BRIDGE="1",  # the launcher's own toolkit
            LC_ALL="C.UTF-8",
        )
        for other in ("WAYLAND_DISPLAY", "SESSION_MANAGER", "AT_SPI_BUS_ADDRESS", "LANGUAGE"):
            os.environ.pop(other, None)
        (self.home / "runtime").mkdir(mode=0o700)

    def start(self, *command, **settings):
        process = subprocess.Popen(command, stderr=self.log, **settings)
        self.started.append(process)
        return process

    def open(self):
        read, write = os.pipe()
        self.start("/usr/bin/Xvfb", "-displayfd", str(write), "-screen", "0", "1400x1000x24", "-nolisten", "tcp",
                   "-noreset", pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as number:
            os.environ["DISPLAY"] = ":" + number.readline().strip()
        if os.environ["DISPLAY"] == ":":
            raise Missing("Xvfb did not start")
        bus = self.start("/usr/bin/dbus-daemon", "--session", "--nofork", "--print-address", stdout=subprocess.PIPE,
                         text=True)
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        if not os.environ["DBUS_SESSION_BUS_ADDRESS"]:
            raise Missing("dbus-daemon cannot be started here")
        self.start_accessibility_bus()
        self.keyboard = Keyboard()
        self.start("/usr/bin/openbox", "--sm-disable", stdout=self.log)

    def start_accessibility_bus(self):
        """Started by its name, as desktops do; its bus has to answer before the application asks for it."""
        from gi.repository import Gio, GLib

        try:
            bus = Gio.bus_get_sync(Gio.BusType.SESSION)
            bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None,
                          GLib.VariantType("(s)"), Gio.DBusCallFlags.NONE, 20000, None)
        except GLib.Error as trouble:
            raise Missing(f"the accessibility bus does not start: {trouble.message}") from trouble

    def ctl(self, *arguments, text=None, status=0):
        run = subprocess.run([self.programs / "veilkeepctl", *arguments], input=text, text=True, capture_output=True)
        if run.returncode != status:
            raise AssertionError(f"veilkeepctl {' '.join(map(str, arguments))}: {run.stderr}")
        return run.stdout

    def make_list(self):
        """Items in each state, in two groups and in none; then a password."""
        docs = self.home / "Docs"
        docs.mkdir()
        names = ["agreement.txt", "budget & plan.txt", "contract.txt", "diary.txt", "gone.txt"]
        for name in names:
            (docs / name).write_text(name)
        (docs / "Letters").mkdir()
        (docs / "Letters" / "one.txt").write_text("one")
        self.ctl("add", *(docs / name for name in names + ["Letters"]))
        for group in ("Taxes", "R & D"):
            self.ctl("group", "add", group)
        self.ctl("move", "--group", "Taxes", docs / "contract.txt", docs / "diary.txt")
        self.ctl("hide", docs / "diary.txt", docs / "Letters")
        self.ctl("group", "autohide", "R & D", "on")
        (docs / "gone.txt").unlink()
        self.ctl("check", status=1)  # one is broken from now on
        states = sorted(item["state"] for item in json.loads(self.ctl("list", "--json")))
        assert states == ["broken", "hidden", "hidden", "visible", "visible", "visible"], states
        self.ctl("password", "set", "--password-stdin", text=PASSWORD + "\n")

    def start_application(self, *arguments):
        return self.start(self.programs / "Veilkeep", *arguments, stdout=self.log)

    def close(self):
        for process in reversed(self.started):
            process.terminate()
        for process in reversed(self.started):
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self.log.close()
        shutil.rmtree(self.home, ignore_errors=True)


class Keyboard:
    """Keys of the display itself, as a person presses them."""

    MODIFIERS = {"Ctrl": "Control_L", "Shift": "Shift_L", "Alt": "Alt_L"}

    def __init__(self):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.tests = ctypes.CDLL("libXtst.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XStringToKeysym.restype = ctypes.c_ulong
        self.x11.XKeysymToKeycode.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
        self.x11.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
        self.tests.XTestFakeKeyEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]
        self.display = self.x11.XOpenDisplay(None)
        if not self.display:
            raise Missing("the display cannot be opened")

    def has_window_manager(self):
        self.x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
        self.x11.XInternAtom.restype = ctypes.c_ulong
        self.x11.XGetSelectionOwner.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
        self.x11.XGetSelectionOwner.restype = ctypes.c_ulong
        return self.x11.XGetSelectionOwner(self.display, self.x11.XInternAtom(self.display, b"WM_S0", 0)) != 0

    def _send(self, name, is_down):
        code = self.x11.XKeysymToKeycode(self.display, self.x11.XStringToKeysym(name.encode()))
        assert code & 0xFF, f"no key {name}"
        self.tests.XTestFakeKeyEvent(self.display, code & 0xFF, is_down, 0)

    def press(self, keys):
        """ "Ctrl+Shift+Tab": the last is the name of a key symbol."""
        *modifiers, key = keys.split("+")
        modifiers = [self.MODIFIERS[modifier] for modifier in modifiers]
        for name in [*modifiers, key]:
            self._send(name, 1)
        for name in [key, *reversed(modifiers)]:
            self._send(name, 0)
        self.x11.XSync(self.display, 0)

    def type(self, text):
        for letter in text:
            self.press({"-": "minus", " ": "space"}.get(letter, letter))
