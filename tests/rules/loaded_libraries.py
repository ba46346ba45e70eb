"""Arguments: PROGRAM, --only or --never, and names of libraries as readelf prints them, or shell patterns."""

import fnmatch
import re
import subprocess
import sys

RULES = {
    "--only": "this program loads nothing but these libraries",
    "--never": "this program loads none of these libraries",
}


def needed_by(program):
    command = ["readelf", "--dynamic", "--wide", program]
    told = subprocess.run(command, capture_output=True, text=True, check=True)
    return re.findall(r"\(NEEDED\).*\[(.*)\]", told.stdout)


def unwanted(libraries, kind, patterns):
    def is_named(library):
        return any(fnmatch.fnmatchcase(library, pattern) for pattern in patterns)

    return [library for library in libraries if is_named(library) == (kind == "--never")]


def main():
    program, kind, *patterns = sys.argv[1:]
    libraries = needed_by(program)
    if not libraries and kind == "--never":
        sys.exit(f"{program}: readelf names no library at all; not even libc")
    found = unwanted(libraries, kind, patterns)
    if found:
        sys.exit(f"{program}: loads {', '.join(found)}\n\nThe rule: {RULES[kind]}: {', '.join(patterns)}")
    print(f"{program} loads {', '.join(libraries) or 'no library'}")


if __name__ == "__main__":
    main()
