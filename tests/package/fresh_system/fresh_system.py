"""A system in a folder of its own, and commands in it."""

import os
import shutil
import subprocess
from dataclasses import dataclass

_LIMIT = 300  # seconds for one command; apt with all that a package depends on takes the longest
_PATH = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"


@dataclass(frozen=True)
class User:
    name: str
    number: int
    home: str


ROOT = User("root", 0, "/root")


@dataclass(frozen=True)
class Outcome:
    command: str
    status: int
    output: str
    errors: str

    def __str__(self):
        return f"{self.command}: status {self.status}\n{self.output}{self.errors}"


class FreshSystem:
    """Lies below `root`. Runs in a mount namespace of its own, with which its mounts go."""

    def __init__(self, root):
        self.root = root

    def path(self, inside):
        return self.root + inside

    def mount(self):
        for kind, place, options in [
            ("proc", "/proc", "nosuid,nodev,noexec"),
            ("sysfs", "/sys", "ro,nosuid,nodev,noexec"),
            ("devpts", "/dev/pts", "newinstance,ptmxmode=0666,mode=0620"),
            ("tmpfs", "/dev/shm", "mode=1777"),
            ("tmpfs", "/run", "mode=0755"),
            ("tmpfs", "/tmp", "mode=1777"),
        ]:
            os.makedirs(self.path(place), exist_ok=True)
            subprocess.run(["mount", "-t", kind, "-o", options, "none", self.path(place)], check=True)

    def bind(self, outside, inside):
        for folder in (outside, self.path(inside)):
            os.makedirs(folder, exist_ok=True)
        subprocess.run(["mount", "--bind", outside, self.path(inside)], check=True)

    def write(self, inside, text, mode=0o644):
        os.makedirs(os.path.dirname(self.path(inside)), exist_ok=True)
        with open(self.path(inside), "w", encoding="utf-8") as file:
            file.write(text)
        os.chmod(self.path(inside), mode)

    def copy_from_host(self, path):
        if os.path.exists(path):
            os.makedirs(os.path.dirname(self.path(path)), exist_ok=True)
            shutil.copy(path, self.path(path))

    def add_user(self, name):
        self.succeed("useradd", "--create-home", "--shell", "/bin/bash", name)
        entry = self.succeed("getent", "passwd", name).output.split(":")
        return User(name, int(entry[2]), entry[5])

    def run(self, *command, user=ROOT, variables=None, text=None):
        streams = {"input": text or "", "capture_output": True, "encoding": "utf-8", "errors": "surrogateescape"}
        environment = self._environment(user, variables)
        done = subprocess.run(
            self._command(command, user), env=environment, timeout=_LIMIT, check=False, **streams
        )
        return Outcome(" ".join(command), done.returncode, done.stdout, done.stderr)

    def succeed(self, *command, **options):
        outcome = self.run(*command, **options)
        if outcome.status != 0:
            raise AssertionError(outcome)
        return outcome

    def start(self, *command, user=ROOT, variables=None, **streams):
        streams.setdefault("stdin", subprocess.DEVNULL)
        return subprocess.Popen(self._command(command, user), env=self._environment(user, variables), **streams)

    # The user's home is where he begins, as after a login.
    def _command(self, command, user):
        as_user = f"{user.number}:{user.number}"
        go_home = ["sh", "-c", 'cd && exec "$@"', "sh"]
        return ["chroot", f"--userspec={as_user}", "--groups=", self.root, *go_home, *command]

    @staticmethod
    def _environment(user, variables):
        environment = {"PATH": _PATH, "LANG": "C.UTF-8", "SHELL": "/bin/bash"}
        environment |= {"HOME": user.home, "USER": user.name, "LOGNAME": user.name}
        return environment | (variables or {})
