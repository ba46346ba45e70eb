import re

import source_text

RULE = (
    "core and worker stand without Qt and GLib; what needs a desktop comes in as an interface. worker/traces alone "
    "uses GLib."
)

_QT = re.compile(r"^(Qt?[A-Z]|q[a-z]+\.h$)")
_GTK = re.compile(r"^(gdk|gtk)")
_GLIB = re.compile(r"^(glib|gio/|gobject/|gmodule)")


def _is_foreign(included, file):
    may_use_glib = str(file).startswith("src/worker/traces/")
    return _QT.match(included) or _GTK.match(included) or (_GLIB.match(included) and not may_use_glib)


def check(file, text):
    for line, _, included in source_text.includes(text):
        if _is_foreign(included, file):
            yield line, f"includes {included}"


if __name__ == "__main__":
    source_text.run(RULE, check, lambda root: source_text.files_below(root, ["src/core", "src/worker"]))
