import re

import source_text

RULE = "core and worker stand without Qt and GLib; what needs a desktop comes in as an interface."

_FOREIGN = re.compile(r"^(Qt?[A-Z]|q[a-z]+\.h$|glib|gio/|gobject/|gmodule|gdk|gtk)")


def check(file, text):
    for line, _, included in source_text.includes(text):
        if _FOREIGN.match(included):
            yield line, f"includes {included}"


if __name__ == "__main__":
    source_text.run(RULE, check, lambda root: source_text.files_below(root, ["src/core", "src/worker"]))
