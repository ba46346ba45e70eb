"""What every trial works with."""

import os
from dataclasses import dataclass

import snapshots
from desktop import Desktop, Screen
from fresh_system import FreshSystem, User
from packages import Apt, Package
from waiting import wait_until


@dataclass
class World:
    system: FreshSystem
    apt: Apt
    package: Package
    user: User
    screen: Screen
    desktop: Desktop
    scratch: str
    before_package: dict  # all outside of homes, before the package was there for the first time

    def ctl(self, *arguments, **options):
        return self.desktop.ctl(*arguments, **options)

    def outside(self, inside):
        """The path by which this program reaches what has that path in the system."""
        return self.system.path(inside)

    def make_file(self, path, text="content\n", owner=None):
        """A file of the user's, whose time and mode are unusual enough to be missed."""
        outside = self.outside(path)
        number = self.user.number if owner is None else owner
        self._make_folders(os.path.dirname(path), number)
        with open(outside, "w", encoding="utf-8") as file:
            file.write(text)
        os.chown(outside, number, number)
        os.chmod(outside, 0o640)
        os.utime(outside, ns=(10**18, 10**18 + 123456789))
        return path

    def hidden_path(self, path):
        """By the rule that the guide tells: the name reversed, its extension left in place."""
        folder, name = os.path.split(path)
        stem, extension = os.path.splitext(name)
        return f"{folder}/.SYS_INDEX/{stem[::-1]}{extension}"

    def is_hidden(self, path):
        return not os.path.lexists(self.outside(path)) and os.path.lexists(self.outside(self.hidden_path(path)))

    def is_visible(self, path):
        hidden = os.path.lexists(self.outside(self.hidden_path(path)))
        return os.path.lexists(self.outside(path)) and not hidden

    def await_hidden(self, path):
        wait_until(f"{path} is hidden", lambda: self.is_hidden(path))

    def await_visible(self, path):
        wait_until(f"{path} is visible", lambda: self.is_visible(path))

    def await_listed(self, path):
        wait_until(f"{path} is listed", lambda: path in self.ctl("list", "-0").split("\0"))

    def must_be_as(self, before, path):
        snapshots.must_be_equal(before, self.state_of(path), path)

    def state_of(self, path):
        return snapshots.snapshot(self.outside(path))

    def _make_folders(self, path, owner):
        if not os.path.isdir(self.outside(path)):
            self._make_folders(os.path.dirname(path), owner)
            os.mkdir(self.outside(path))
            os.chown(self.outside(path), owner, owner)
