"""A screen, buses and the application in the fresh system.

The screen and what types and clicks on it run outside of that system, so that nothing is installed in it but the
package and what it depends on. The buses are the system's own.
"""

import os
import shutil
import subprocess

from fresh_system import ROOT
from waiting import wait_until

_SOCKETS = "/tmp/.X11-unix"


class Screen:
    """An X server with a window manager, a keyboard and a mouse. What it writes lies below `scratch`."""

    def __init__(self, system, scratch):
        self._frame = scratch
        self._variables = {"PATH": os.environ["PATH"], "HOME": scratch}
        system.bind(system.path(_SOCKETS), "/tmp/.X11-unix")
        os.makedirs(_SOCKETS, exist_ok=True)
        subprocess.run(["mount", "--bind", system.path(_SOCKETS), _SOCKETS], check=True)
        os.chmod(_SOCKETS, 0o1777)
        readable, writable = os.pipe()
        options = ["-nolisten", "tcp", "-ac", "-noreset", "-screen", "0", "1280x800x24", "-fbdir", scratch]
        command = ["Xvfb", "-displayfd", str(writable), *options]
        self._helper(command, pass_fds=[writable])
        os.close(writable)
        with os.fdopen(readable) as told:
            self.display = ":" + told.readline().strip()
        self._variables["DISPLAY"] = self.display
        self._helper(["openbox"])
        wait_until("a window manager", lambda: self._tool("get_num_desktops").stdout.strip() not in ("", "0"))

    def windows_of(self, process):
        return self._tool("search", "--onlyvisible", "--pid", str(process), "--name", ".").stdout.split()

    def window_of(self, process):
        """The one that has the keyboard."""
        return wait_until("a window with the keyboard", lambda: self._focused_of(process))

    def key(self, *names):
        self._must("key", *names)

    def type(self, text):
        self._must("type", text)

    def click(self, window, x, y):
        """At a place in the window."""
        self._must("mousemove", "--window", window, str(x), str(y), "click", "1")

    def keep_picture(self, file):
        shutil.copy(os.path.join(self._frame, "Xvfb_screen0"), file)

    def _focused_of(self, process):
        focused = self._tool("getactivewindow").stdout.strip()
        return focused if focused and focused in self.windows_of(process) else None

    def _tool(self, *arguments):
        return subprocess.run(
            ["xdotool", *arguments], env=self._variables, capture_output=True, text=True, check=False
        )

    def _must(self, *arguments):
        outcome = self._tool(*arguments)
        if outcome.returncode != 0:
            raise AssertionError(f"xdotool {' '.join(arguments)}: {outcome.stderr}")

    def _helper(self, command, **options):
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        subprocess.Popen(command, env=self._variables, cwd=self._frame, **quiet, **options)


class Desktop:
    """One user's session: both buses, and the application on the screen."""

    def __init__(self, system, screen, user):
        self.system, self.screen, self.user = system, screen, user
        runtime = f"/run/user/{user.number}"
        os.makedirs(system.path(runtime), 0o700)
        os.chown(system.path(runtime), user.number, user.number)
        self.system_bus = f"unix:path={system.path('/run/dbus/system_bus_socket')}"
        self.variables = {
            "DISPLAY": screen.display,
            "XDG_RUNTIME_DIR": runtime,
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={runtime}/bus",
        }
        os.makedirs(system.path("/run/dbus"), exist_ok=True)
        self._start_bus(ROOT, "/run/dbus/system_bus_socket", "--system")
        self._start_bus(user, f"{runtime}/bus", "--session", f"--address=unix:path={runtime}/bus")

    def start_application(self, *arguments):
        return Application(self, arguments)

    def ctl(self, *arguments, status=0, text=None):
        """What veilkeepctl prints. It says nothing on standard error while all goes well."""
        told = self.system.run("veilkeepctl", *arguments, user=self.user, variables=self.variables, text=text)
        if told.status != status or (status == 0 and told.errors):
            raise AssertionError(told)
        return told.output if status == 0 else told.errors

    def _start_bus(self, user, socket, *arguments):
        self.system.start("dbus-daemon", "--nofork", "--nopidfile", *arguments, user=user, stderr=subprocess.DEVNULL)
        wait_until(f"a message bus at {socket}", lambda: os.path.exists(self.system.path(socket)))


class Application:
    """The desktop application as its user starts it. Standard error is kept: a sound program writes nothing there."""

    def __init__(self, desktop, arguments):
        self._desktop = desktop
        self._told = os.path.join(desktop.system.path("/tmp"), "application.errors")
        with open(self._told, "wb") as told:
            self._process = desktop.system.start(
                "veilkeep", *arguments, user=desktop.user, variables=desktop.variables, stderr=told
            )

    @property
    def number(self):
        return self._process.pid

    def window(self):
        return self._desktop.screen.window_of(self.number)

    def has_windows(self):
        return bool(self._desktop.screen.windows_of(self.number))

    def is_running(self):
        return self._process.poll() is None

    def errors(self):
        with open(self._told, encoding="utf-8", errors="replace") as told:
            return told.read()

    def end(self):
        self._process.terminate()
        status = self._process.wait()
        if status != 0 or self.errors():
            raise AssertionError(f"the application ended with status {status} and said: {self.errors()}")
