"""Arguments: TARGET, and what CMake is told to link it with, as it is written there."""

import re
import sys

RULE = (
    "core and worker link neither Qt nor GLib; what needs a desktop comes in as an interface. cloakTraces alone links "
    "GLib."
)

_SEPARATORS = re.compile(r"[;:<>,$\s]+")
_FOREIGN = re.compile(r"(-l|lib)?(Qt\d[\w.]*|(glib|gio|gobject|gmodule|gdk|gtk)[\w.+-]*)", re.IGNORECASE)


def unwanted(arguments):
    names = [name for argument in arguments for name in _SEPARATORS.split(argument)]
    return [name for name in names if _FOREIGN.fullmatch(name)]


def main():
    target, *arguments = sys.argv[1:]
    found = unwanted(arguments)
    if found:
        sys.exit(f"{target}: links {', '.join(found)}\n\nThe rule: {RULE}")


if __name__ == "__main__":
    main()
