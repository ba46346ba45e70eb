"""The package archive that this machine's apt uses, and a base system from it."""

import hashlib
import os
import shutil
import subprocess

from requirements import NotHere

_FORMAT = "$(RELEASE) $(COMPONENT) $(REPO_URI) $(SIGNED_BY)"


def _output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def _release_name():
    with open("/etc/os-release", encoding="utf-8") as lines:
        values = dict(line.rstrip().split("=", 1) for line in lines if "=" in line)
    return values.get("VERSION_CODENAME", "").strip('"')


class Archive:
    """The sources of the release that this machine runs: what was built on it is installable on no other."""

    def __init__(self):
        self.release = _release_name()
        wanted = {self.release, f"{self.release}-updates", f"{self.release}-security"}
        targets = _output("apt-get", "indextargets", "--format", _FORMAT, "Created-By: Packages").splitlines()
        found = [target.split(" ", 3) for target in targets]
        self._sources = [row for row in found if row[0] in wanted and row[1] == "main"]
        self.mirror = next((uri for name, _, uri, _ in self._sources if name == self.release), None)
        if not self.mirror or not self.mirror.startswith("http"):
            raise NotHere(f"apt has no mirror of {self.release or 'a release without a name'} on this machine")

    def source_lines(self):
        return "".join(f"deb {self._options(key)}{uri} {name} {part}\n" for name, part, uri, key in self._sources)

    @staticmethod
    def settings():
        """Proxies and whatever else apt is told here of how to fetch."""
        return _output("apt-config", "dump", "--format", '%F "%v";%n', "Acquire")

    def keys(self):
        return {key for _, _, _, key in self._sources if key.startswith("/")}

    @staticmethod
    def _options(key):
        return f"[signed-by={key}] " if key.startswith("/") else ""


class BaseSystem:
    """Puts the base system into a folder: out of the cache, or by debootstrap."""

    def __init__(self, archive, cache):
        self._archive = archive
        self._downloads = os.path.join(cache, "base")  # so that a run that was cut short is not all in vain
        digest = hashlib.sha256((archive.source_lines() + archive.settings()).encode()).hexdigest()[:16]
        self._kept = os.path.join(cache, f"base-{archive.release}-{digest}.tar")

    def unpack(self, folder):
        """Whether it came out of the cache."""
        if os.path.exists(self._kept):
            subprocess.run(["tar", "-xf", self._kept, "-C", folder, "--numeric-owner"], check=True)
            return True
        self._bootstrap(folder)
        return False

    def keep(self, folder):
        unfinished = self._kept + ".unfinished"
        subprocess.run(["tar", "-cf", unfinished, "-C", folder, "--numeric-owner", "--one-file-system", "."], check=True)
        os.rename(unfinished, self._kept)
        shutil.rmtree(self._downloads, ignore_errors=True)

    def _bootstrap(self, folder):
        os.makedirs(self._downloads, exist_ok=True)
        command = ["debootstrap", "--variant=minbase", f"--cache-dir={self._downloads}"]
        command += [self._archive.release, folder, self._archive.mirror]
        environment = os.environ | self._proxy()
        outcome = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
        if outcome.returncode != 0:
            raise NotHere(f"debootstrap failed: {(outcome.stdout + outcome.stderr).strip().splitlines()[-1]}")

    # debootstrap fetches by itself and asks the environment alone.
    @staticmethod
    def _proxy():
        proxies = {}
        for scheme in ("http", "https"):
            set_by_apt = _output("apt-config", "shell", "proxy", f"Acquire::{scheme}::Proxy").strip()
            if set_by_apt:
                proxies[f"{scheme}_proxy"] = set_by_apt.removeprefix("proxy=").strip("'")
        return proxies
