"""What the trial needs of this machine."""

import os
import shutil
import subprocess

_PROGRAMS = {
    "debootstrap": "debootstrap",
    "unshare": "util-linux",
    "setpriv": "util-linux",
    "dpkg-deb": "dpkg",
    "Xvfb": "xvfb",
    "openbox": "openbox",
    "xdotool": "xdotool",
}
_MEMORY = 2 * 1024 * 1024  # KiB; the system lies in memory


class NotHere(Exception):
    """The trial cannot be made on this machine; the text says why."""


def check():
    if os.geteuid() != 0:
        raise NotHere("needs root")
    for program, package in _PROGRAMS.items():
        if not shutil.which(program):
            raise NotHere(f"{program} is missing (package {package})")
    try:
        import dbus  # noqa: F401
        import dbusmock  # noqa: F401
    except ImportError as error:
        raise NotHere(f"{error.name} is missing (package python3-dbusmock)") from error
    if _field("/proc/self/status", "NoNewPrivs") == "1":
        raise NotHere("nothing may gain rights here")
    if int(_field("/proc/meminfo", "MemAvailable").split()[0]) < _MEMORY:
        raise NotHere(f"needs {_MEMORY // 1024} MiB of free memory")
    _check_namespaces()


# As root of a container may not do all of it.
def _check_namespaces():
    attempt = "mount -t tmpfs none /mnt && mknod /mnt/null c 1 3 && chown 1:1 /mnt/null"
    command = ["unshare", "--mount", "--pid", "--fork", "--mount-proc", "sh", "-c", attempt]
    outcome = subprocess.run(command, capture_output=True, text=True, check=False)
    if outcome.returncode != 0:
        raise NotHere(f"no system can be made in namespaces here: {outcome.stderr.strip()}")


def _field(file, name):
    with open(file, encoding="ascii") as lines:
        for line in lines:
            key, _, value = line.partition(":")
            if key == name:
                return value.strip()
    return "0"
