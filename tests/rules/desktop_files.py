"""Arguments: the project's directory, the desktop entry and the bus service as they are installed."""

import configparser
import shutil
import subprocess
import sys
from pathlib import Path

import source_text

RULE = "the desktop entry is valid, and activation by the bus starts the program that the entry starts."


def parsed(file):
    parser = configparser.ConfigParser(interpolation=None, delimiters="=", strict=True)
    parser.optionxform = str
    parser.read(file, encoding="utf-8")
    return parser


def faults(project, entry_file, service_file):
    told = subprocess.run(["desktop-file-validate", entry_file], capture_output=True, text=True)
    if told.returncode != 0 or told.stdout or told.stderr:
        yield f"desktop-file-validate says {(told.stdout + told.stderr).strip()}"
    entry, service = parsed(entry_file)["Desktop Entry"], parsed(service_file)["D-BUS Service"]
    if entry.get("DBusActivatable") != "true":
        yield "the entry is not activated by the bus"
    if not (service["Name"] == entry_file.stem == service_file.stem == entry["Icon"]):
        yield "the names of entry, service, bus and icon differ"
    if not service["Exec"].startswith("/") or service["Exec"].split()[0] != entry["Exec"].split()[0]:
        yield f"{service['Exec']} is not the program of {entry['Exec']}"
    if "inode/" in entry["MimeType"]:
        yield "the program would open folders in place of the file manager"
    for icon in (entry["Icon"], f"{entry['Icon']}-symbolic"):
        if not (project / "resources" / "images" / f"{icon}.svg").is_file():
            yield f"there is no icon {icon}"
    for language in ("de", "es"):
        for key in ("GenericName", "Comment", "Keywords"):
            if f"{key}[{language}]" not in entry:
                yield f"{key} is not translated into {language}"


def main():
    project, entry, service = map(Path, sys.argv[1:])
    if not shutil.which("desktop-file-validate"):
        print("skipped: there is no desktop-file-validate (package desktop-file-utils)")
        sys.exit(source_text.SKIPPED)
    found = list(faults(project, entry, service))
    if found:
        sys.exit("\n".join(f"{entry.name}: {fault}" for fault in found) + f"\n\nThe rule: {RULE}")
    print(f"The rule is followed: {RULE}")


if __name__ == "__main__":
    main()
