"""Tries the package on a machine that has only a base system, which is made in a folder for that.

All that is mounted and started lives in namespaces of its own and goes with them, however this ends. Only what was
fetched is kept, for the next time.
"""

import argparse
import glob
import os
import subprocess
import sys
import time

import requirements
import try_administrator
import try_hiding
import try_leaving
import try_removal
import try_upgrade
import try_window
from archive import Archive, BaseSystem
from desktop import Desktop, Screen
from fresh_system import FreshSystem
from packages import NAME, Apt, Package
from requirements import NotHere
from world import World

_SKIPPED = 77  # CTest's SKIP_RETURN_CODE
_TRIALS = [try_hiding, try_window, try_leaving, try_administrator, try_upgrade, try_removal]


class Steps:
    """Says what is done, and how long it took."""

    def __init__(self):
        self._begin = time.monotonic()

    def __call__(self, what):
        print(f"[{time.monotonic() - self._begin:5.1f} s] {what}", flush=True)


def prepare(arguments, say):
    place = os.path.join(arguments.work, "place")
    subprocess.run(["mount", "-t", "tmpfs", "-o", "mode=0755", "none", place], check=True)
    root, scratch = os.path.join(place, "system"), os.path.join(place, "scratch")
    os.mkdir(root)
    os.mkdir(scratch)
    system, archive = FreshSystem(root), Archive()
    base, apt = BaseSystem(archive, arguments.work), Apt(system)
    say(f"making a base system of {archive.release}")
    is_kept = base.unpack(root)
    if not is_kept:
        apt.set_up(archive)
        apt.update()
        base.keep(root)
    return system, archive, apt, scratch


def made_package(folder):
    found = glob.glob(os.path.join(folder, f"{NAME}_*.deb"))
    if not found:
        raise NotHere("no package was made")
    return found[0]


def make_world(arguments, say):
    system, archive, apt, scratch = prepare(arguments, say)
    system.mount()
    system.bind(os.path.join(arguments.work, "archives"), "/var/cache/apt/archives")
    apt.set_up(archive)
    package = Package(system, made_package(arguments.packages))
    say("installing what the package depends on")
    apt.satisfy(package.field("Depends"))
    user = system.add_user("karla")
    before_package = try_removal.outside_homes(system)
    say("installing the package")
    assert apt.what_would_come(package) == [NAME], apt.what_would_come(package)
    apt.install(package)
    screen = Screen(system, scratch)
    desktop = Desktop(system, screen, user)
    return World(system, apt, package, user, screen, desktop, scratch, before_package)


def try_all(arguments):
    say = Steps()
    world = make_world(arguments, say)
    for trial in _TRIALS:
        say(trial.run.__doc__)
        try:
            trial.run(world)
        except Exception:
            world.screen.keep_picture(os.path.join(arguments.work, "failure.xwd"))
            raise
    say("all of it works")


def in_namespaces(arguments):
    """This program once more, in namespaces that end with it."""
    own_end = ["setpriv", "--pdeathsig", "KILL"]
    namespaces = ["unshare", "--mount", "--pid", "--fork", "--mount-proc", "--kill-child"]
    again = [sys.executable, "-B", os.path.abspath(__file__), "--inside", arguments.packages, arguments.work]
    return subprocess.run([*own_end, *namespaces, *again], check=False).returncode


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--inside", action="store_true", help="the namespaces are there already")
    parser.add_argument("packages", help="folder that holds the .deb")
    parser.add_argument("work", help="folder for what is kept for the next time")
    arguments = parser.parse_args()
    arguments.work = os.path.abspath(arguments.work)
    try:
        if arguments.inside:
            try_all(arguments)
            return 0
        requirements.check()
        os.makedirs(os.path.join(arguments.work, "place"), exist_ok=True)
        return in_namespaces(arguments)
    except NotHere as reason:
        print(f"skipped: {reason}")
        return _SKIPPED


if __name__ == "__main__":
    sys.exit(main())
