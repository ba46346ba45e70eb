"""Arguments: the project's directory, the build tree, the project's version, and the check.

is_made leaves the package in the folder "package" of the tree, where the others look at it.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path
from xml.etree import ElementTree

SKIPPED = 77
BUNDLE = "usr/lib/veilkeep/Veilkeep.app"
SIZES = (16, 22, 24, 32, 48, 64, 96, 128, 256, 512)


def need(*tools):
    for tool, package in tools:
        if not shutil.which(tool):
            print(f"skipped: there is no {tool} (package {package})")
            sys.exit(SKIPPED)


def output_of(*command, **options):
    """Standard output; what else is told, only where the command fails."""
    run = subprocess.run(command, capture_output=True, text=True, **options)
    if run.returncode != 0:
        sys.exit(f"{command[0]} failed with {run.returncode}:\n{run.stdout}{run.stderr}")
    return run.stdout


class Package:
    def __init__(self, project, tree, version):
        self.project, self.tree, self.version = Path(project), Path(tree), version
        self.folder = self.tree / "package"

    def make(self, folder, **options):
        need(("dpkg-buildpackage", "dpkg-dev"), ("dh", "debhelper"), ("rsvg-convert", "librsvg2-bin"))
        made = output_of(self.project / "scripts" / "package", "--of", self.tree, folder, **options)
        return Path(made.rstrip("\n"))

    def made(self):
        found = sorted(self.folder.glob("veilkeep_*.deb"))
        if not found:
            print("skipped: package.is_made has made no package")
            sys.exit(SKIPPED)
        return found[0]

    def unpacked(self, folder):
        output_of("dpkg-deb", "-R", self.made(), folder)
        return Path(folder)


def is_made(package):
    others = package.folder / "work" / "of others"
    others.parent.mkdir(parents=True, exist_ok=True)
    others.write_text("")
    made = package.make(package.folder)
    assert others.exists(), "what others keep in the folder is gone"
    shutil.rmtree(others.parent)
    left = sorted(path.name for path in package.folder.iterdir() if not path.name.startswith("veilkeep_"))
    assert not left, f"left behind: {left}"
    told = output_of("dpkg-deb", "-f", made, "Package", "Version")
    assert told == f"Package: veilkeep\nVersion: {package.version}\n", f"debian/changelog says {told}"


def follows_policy(package):
    need(("lintian", "lintian"))
    as_root = ["--allow-root"] if os.geteuid() == 0 else []
    output_of("lintian", *as_root, "--fail-on", "error,warning", package.made())


def describes_itself(package):
    need(("desktop-file-validate", "desktop-file-utils"), ("appstreamcli", "appstream"))
    with tempfile.TemporaryDirectory() as folder:
        share = package.unpacked(folder) / "usr" / "share"
        told = output_of("desktop-file-validate", share / "applications" / "com.ostrel.Veilkeep.desktop")
        assert not told, told
        metainfo = share / "metainfo" / "com.ostrel.Veilkeep.metainfo.xml"
        output_of("appstreamcli", "validate", "--no-net", "--pedantic", metainfo)
        component = ElementTree.parse(metainfo).getroot()
        release = component.find("releases/release").get("version")
        assert release == package.version, f"the newest release of the metainfo is {release}"
        for image in component.findall("screenshots/screenshot/image"):
            picture = package.project / "docs" / "images" / image.text.rpartition("/")[2]
            size = [int.from_bytes(picture.read_bytes()[at:at + 4], "big") for at in (16, 20)]  # of a PNG
            assert size == [int(image.get("width")), int(image.get("height"))], f"{picture} is {size}"


def programs_in(text):
    """The programs that an entry or a unit starts, as absolute paths."""
    return re.findall(r"^(?:Exec|TryExec|ExecStart)=(\S+)", text, re.MULTILINE)


def holds_what_it_promises(package):
    with tempfile.TemporaryDirectory() as folder:
        root = package.unpacked(folder)
        starting = ["applications/com.ostrel.Veilkeep.desktop", "dbus-1/services/com.ostrel.Veilkeep.service",
                    "kio/servicemenus/com.ostrel.Veilkeep.desktop",
                    "nemo/actions/com.ostrel.Veilkeep.hide.nemo_action",
                    "nemo/actions/com.ostrel.Veilkeep.show.nemo_action", "../lib/systemd/user/veilkeep-watch.service"]
        for file in starting:
            text = (root / "usr/share" / file).read_text(encoding="utf-8")
            programs = programs_in(text)
            assert programs and all(os.access(root / each[1:], os.X_OK) for each in programs), f"{file}: {programs}"
            assert "@" not in text, f"{file} is a template still"
        files = ["man/man1/veilkeep.1.gz", "man/man1/veilkeepctl.1.gz", "bash-completion/completions/veilkeepctl",
                 "fish/vendor_completions.d/veilkeepctl.fish", "zsh/vendor-completions/_veilkeepctl",
                 "polkit-1/actions/com.ostrel.Veilkeep.policy", "doc/veilkeep/copyright",
                 "icons/hicolor/scalable/apps/com.ostrel.Veilkeep.svg",
                 "icons/hicolor/symbolic/apps/com.ostrel.Veilkeep-symbolic.svg"]
        files += [f"icons/hicolor/{size}x{size}/apps/com.ostrel.Veilkeep.png" for size in SIZES]
        for file in files:
            assert (root / "usr/share" / file).is_file(), f"usr/share/{file} is missing"
        for program in ("veilkeep", "veilkeepctl"):
            told = output_of(root / "usr/bin" / program, "--version")
            assert told == f"{program} {package.version}\n", told
        manual = output_of("gzip", "-dc", root / "usr/share/man/man1/veilkeep.1.gz").replace("\\-", "-")
        for option in re.findall(r"(?<= -)-[a-z-]+", output_of(root / "usr/bin/veilkeep", "--help")):
            assert f"\n.It Fl {option}" in manual or f", {option}\n" in manual, f"the manual does not know -{option}"
        places = [str(package.project).encode(), str(package.tree).encode()]
        for file in filter(Path.is_file, root.rglob("*")):
            assert not any(place in file.read_bytes() for place in places), f"{file} names the place of the build"


def tells_how_items_come_back(package):
    """The commands are those of the README; an upgrade says nothing and no script ends a program or enters a home."""
    readme = (package.project / "README.md").read_text(encoding="utf-8")
    block = re.search(r"^## Without Veilkeep\n[^#]*?\n((?:    [^\n]*\n)+)", readme, re.MULTILINE).group(1)
    with tempfile.TemporaryDirectory() as folder:
        control = package.unpacked(folder) / "DEBIAN"
        told = output_of(control / "prerm", "remove")
        assert block in told and "veilkeepctl unhide --all" in told, told
        for arguments in (["upgrade", "9"], ["deconfigure"]):
            told = output_of(control / "prerm", *arguments)
            assert not told, f"prerm {arguments} says {told}"
        for script in ("preinst", "postinst", "prerm", "postrm"):
            if (control / script).exists():
                text = (control / script).read_text(encoding="utf-8")
                bad = re.findall(r"\b(?:kill|pkill|killall|rm|systemctl|deb-systemd-invoke|HOME|home)\b.*", text)
                assert not bad, f"{script}: {bad}"


def is_reproducible(package):
    first = package.made().read_bytes()
    with tempfile.TemporaryDirectory(dir=package.folder) as folder:
        surroundings = {**os.environ, "TZ": "Pacific/Auckland", "LC_ALL": "C", "HOME": "/nonexistent"}
        again = package.make(folder, env=surroundings, umask=0o077).read_bytes()
    assert first == again, "the same tree gives another package"


CHECKS = (is_made, follows_policy, describes_itself, holds_what_it_promises, tells_how_items_come_back, is_reproducible)

if __name__ == "__main__":
    *places, name = sys.argv[1:]
    try:
        next(check for check in CHECKS if check.__name__ == name)(Package(*places))
    except AssertionError as fault:
        sys.exit(f"package.{name}: {fault}")
