"""The facts of a machine and a build that figures depend on."""

import datetime
import os
import pathlib
import platform
import re
import subprocess


def _first_match(pattern, path):
    match = re.search(pattern, path.read_text(encoding="utf-8"), re.MULTILINE) if path.exists() else None
    return match.group(1).strip() if match else "unknown"


def _first_line_of(*command):
    try:
        told = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    except (OSError, subprocess.CalledProcessError):
        return "unknown"
    return told.splitlines()[0] if told else "unknown"


def load():
    return " ".join(f"{average:.2f}" for average in os.getloadavg())


def facts(root, build):
    """(name, text) of each."""
    cache = build / "CMakeCache.txt"
    compiler = _first_match(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", cache)
    return [
        ("date", datetime.datetime.now().astimezone().strftime("%Y-%m-%d %H:%M %z")),
        ("revision", _first_line_of("git", "-C", root, "describe", "--always", "--dirty")),
        ("processor", _first_match(r"^model name\s*: (.*)$", pathlib.Path("/proc/cpuinfo"))),
        ("cores", f"{len(os.sched_getaffinity(0))} of {os.cpu_count()}"),
        ("memory", _first_match(r"^MemTotal: +(.*)$", pathlib.Path("/proc/meminfo"))),
        ("kernel", f"{platform.system()} {platform.release()} {platform.machine()}"),
        ("compiler", _first_line_of(compiler, "--version")),
        ("build", _first_match(r"^CMAKE_BUILD_TYPE:\w+=(.*)$", cache)),
        ("user", "root" if os.geteuid() == 0 else "an ordinary one"),
        ("load at the start", load()),
    ]
