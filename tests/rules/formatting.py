"""Argument: ROOT. Skips without clang-format of the version that the style is written for."""

import re
import shutil
import subprocess
import sys
from pathlib import Path

import source_text

RULE = "clang-format has the last word: run clang-format -i on what you changed."
VERSION = "14"


def reason_to_skip():
    if shutil.which("clang-format") is None:
        return "clang-format is not installed"
    told = subprocess.run(["clang-format", "--version"], capture_output=True, text=True, check=True).stdout
    version = re.search(r"version (\d+)", told)
    if version is None or version.group(1) != VERSION:
        return f"formatting is checked with clang-format {VERSION}, this is {told.strip()}"
    return None


def findings(root, files):
    """clang-format's warnings on these files, "file:line:column: …" each."""
    command = ["clang-format", "--style=file", "--dry-run", "--ferror-limit=3", "--fno-color-diagnostics"]
    told = subprocess.run([*command, *files], cwd=root, capture_output=True, text=True, check=True)
    return [line for line in told.stderr.splitlines() if "clang-format-violations" in line]


def main():
    reason = reason_to_skip()
    if reason:
        print(f"skipped: {reason}")
        sys.exit(source_text.SKIPPED)
    root = Path(sys.argv[1])
    files = list(source_text.files_below(root, ["src", "tests", "benchmarks"]))
    if not files:
        sys.exit(f"{root}: the rule found no file to look at")
    found = findings(root, files)
    if found:
        print(*found, "", f"The rule: {RULE}", sep="\n")
        sys.exit(1)
    print(f"{len(files)} files are formatted")


if __name__ == "__main__":
    main()
