"""Installing and removing packages in the fresh system."""

import os
import shutil
import subprocess

from requirements import NotHere

NAME = "veilkeep"
_QUIET = {"DEBIAN_FRONTEND": "noninteractive"}


class Package:
    """A .deb that lies in the fresh system's /tmp."""

    def __init__(self, system, file):
        self.inside = f"/tmp/{os.path.basename(file)}"
        shutil.copy(file, system.path(self.inside))
        self._file = file

    def field(self, name):
        return subprocess.run(
            ["dpkg-deb", "--field", self._file, name], capture_output=True, text=True, check=True
        ).stdout.strip()

    def older(self, system, scratch):
        """The same, repacked as a version that came before."""
        tree, version = os.path.join(scratch, "older"), self.field("Version") + "~before"
        subprocess.run(["dpkg-deb", "--raw-extract", self._file, tree], check=True)
        control = os.path.join(tree, "DEBIAN/control")
        with open(control, encoding="utf-8") as file:
            text = file.read().replace(f"Version: {self.field('Version')}\n", f"Version: {version}\n")
        with open(control, "w", encoding="utf-8") as file:
            file.write(text)
        repacked = os.path.join(scratch, f"{NAME}_{version}.deb")
        subprocess.run(["dpkg-deb", "-Znone", "--build", tree, repacked], check=True, stdout=subprocess.DEVNULL)
        return Package(system, repacked)


class Apt:
    """apt in the fresh system. It installs what packages depend on, and nothing that they recommend."""

    def __init__(self, system):
        self._system = system

    def set_up(self, archive):
        self._system.write("/etc/apt/sources.list", archive.source_lines())
        self._system.write("/etc/apt/apt.conf.d/90fetching", archive.settings() + 'APT::Sandbox::User "root";\n')
        self._system.write("/usr/sbin/policy-rc.d", "#!/bin/sh\nexit 101\n", 0o755)  # no service starts by itself
        for file in (*archive.keys(), "/etc/resolv.conf", "/etc/hosts"):
            self._system.copy_from_host(file)

    def update(self):
        outcome = self._apt("update", "--error-on=any")
        if outcome.status != 0:
            raise NotHere(f"the archive is out of reach: {outcome.errors.strip().splitlines()[-1]}")

    def satisfy(self, dependencies):
        """Lists that are too old for the archive are fetched once more."""
        command = ("satisfy", "--yes", "--no-install-recommends", dependencies)
        if self._apt(*command).status != 0:
            self.update()
            self._must(*command)

    def what_would_come(self, package):
        told = self._must("install", "--simulate", "--no-install-recommends", package.inside).output
        return sorted(line.split()[1] for line in told.splitlines() if line.startswith("Inst "))

    def install(self, package):
        return self._must("install", "--yes", "--no-install-recommends", package.inside)

    def remove(self):
        return self._must("remove", "--yes", NAME)

    def purge(self):
        return self._must("purge", "--yes", NAME)

    def installed_version(self):
        asked = ("dpkg-query", "--show", "--showformat", "${db:Status-Status} ${Version}", NAME)
        status, _, version = self._system.run(*asked).output.partition(" ")
        return version if status == "installed" else None

    def files_of_packages(self):
        return set(self._system.succeed("sh", "-c", "cat /var/lib/dpkg/info/*.list").output.splitlines())

    def _apt(self, *arguments):
        return self._system.run("apt-get", "-o", "Dpkg::Use-Pty=0", *arguments, variables=_QUIET)

    def _must(self, *arguments):
        outcome = self._apt(*arguments)
        if outcome.status != 0:
            raise AssertionError(outcome)
        return outcome
