import os

import snapshots

# What the system itself changes, and what belongs to users.
_NOT_THE_PACKAGES = ["dev", "home", "proc", "run", "sys", "tmp", "var/cache/apt", "var/lib/apt", "var/lib/dpkg", "var/log"]
_OF_PROGRAMS = [".cache", ".config", ".local"]


def outside_homes(system):
    return snapshots.snapshot(system.root, without=_NOT_THE_PACKAGES)


def run(world):
    """Removed and purged it loses nothing, says how items come back, and leaves nothing outside of homes"""
    home = world.outside(world.user.home)
    letter = world.make_file(f"{world.user.home}/Documents/letter.odt")  # the one that the removal speaks of
    world.make_file(f"{world.user.home}/Musik/Lied.ogg")
    others = [world.make_file(f"{world.user.home}/Documents/Straße nach Süden.tar.gz"), f"{world.user.home}/Musik"]
    items = snapshots.snapshot(home, without=_OF_PROGRAMS)
    world.ctl("hide", letter, *others)
    hidden = snapshots.snapshot(home)

    told = world.apt.remove().output
    snapshots.must_be_equal(hidden, snapshots.snapshot(home), "the home after the removal")
    _follow(world, told)
    assert os.path.exists(world.outside(letter)), f"{letter} did not come back"
    one_back = snapshots.snapshot(home)

    world.apt.purge()
    snapshots.must_be_equal(one_back, snapshots.snapshot(home), "the home after the purge")
    snapshots.must_be_equal(world.before_package, outside_homes(world.system), "what the package left")

    world.apt.install(world.package)
    told = world.ctl("check")
    assert told == f"{letter}\n", f"found elsewhere than listed: {told}"
    assert world.ctl("list", "--state", "hidden", "-0").split("\0")[:-1] == sorted(others), world.ctl("list")
    world.ctl("unhide", "--all")
    snapshots.must_be_equal(items, snapshots.snapshot(home, without=_OF_PROGRAMS), "the items at the end")


def _follow(world, told):
    """Runs the shell's commands that the removal printed, as they stand."""
    commands = [line.strip() for line in told.splitlines() if line.startswith("    ")]
    begin = next((number for number, line in enumerate(commands) if line.startswith("find ")), None)
    assert begin is not None, f"the removal does not say how to bring items back: {told}"
    world.system.run("bash", "-c", "\n".join(commands[begin:]), user=world.user)
