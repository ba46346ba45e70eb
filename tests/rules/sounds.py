"""Argument: the project's directory."""

import pathlib
import subprocess
import sys
import tempfile


def main():
    project = pathlib.Path(sys.argv[1])
    kept = {file.name: file.read_bytes() for file in (project / "resources" / "sounds").iterdir()}
    with tempfile.TemporaryDirectory() as directory:
        subprocess.run([sys.executable, project / "scripts" / "make-sounds", directory], check=True)
        made = {file.name: file.read_bytes() for file in pathlib.Path(directory).iterdir()}
    differing = sorted(name for name in kept.keys() | made.keys() if kept.get(name) != made.get(name))
    if differing:
        sys.exit(
            f"resources/sounds: {', '.join(differing)}\n\n"
            "The rule: the sounds are what scripts/make-sounds makes; change that, and run it."
        )


if __name__ == "__main__":
    main()
