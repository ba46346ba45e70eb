import source_text

RULE = "includes point one way only, as docs/architecture.md draws the layers, and are written from src/ on."

# From the top down; a layer may include itself and those that come after it.
_CORE = tuple(
    "core/" + folder
    for folder in "rescue protocol storage records tracking names log environment filesystem process base".split()
)
_WIDGETS = tuple("widgets/" + folder for folder in "mainwindow groupedit grouplist filetable preferences dialogs preview controls images".split())
_ORDER = (
    ("app",) + _WIDGETS + ("wiring", "requests", "session", "prefs", "groups", "filelist", "alerts", "platform", "format") + _CORE
)


def _at_and_below(layer):
    return set(_ORDER[_ORDER.index(layer) :])


ALLOWED = {layer: _at_and_below(layer) for layer in _ORDER}
ALLOWED["app"] |= {"platform/linux"}
for _folder in _WIDGETS:
    ALLOWED[_folder] -= {"wiring", "requests"}
ALLOWED["ctl"] = {"ctl", "platform/linux"} | _at_and_below("wiring")
ALLOWED["wiring"] |= {"platform/linux"}
ALLOWED["platform/linux"] = {"platform/linux"} | _at_and_below("platform")
ALLOWED["worker"] = {"worker", *_CORE}
ALLOWED["worker/traces"] = {"worker/traces", *_CORE}


def layer_of(path):
    """The layer that a path below src/ belongs to, None where it is none of ours."""
    parts = str(path).split("/")
    if len(parts) > 2 and "/".join(parts[:2]) in ALLOWED:
        return "/".join(parts[:2])
    return parts[0] if len(parts) > 1 and parts[0] in ALLOWED else None


def check(file, text):
    layer = layer_of(file.relative_to("src"))
    if layer is None:
        yield 1, "lies in a folder that is no layer: give it a place in include_direction.py"
        return
    for line, opener, included in source_text.includes(text):
        target = layer_of(included)
        if target is None and (opener == '"' or included.startswith((".", "tests/", "benchmarks/"))):
            yield line, f"includes {included}, which is no path from src/ on"
        elif target is not None and target not in ALLOWED[layer]:
            may_use = ", ".join(sorted(ALLOWED[layer]))
            yield line, f"{layer} includes {included} of {target}; it may use {may_use}"


if __name__ == "__main__":
    source_text.run(RULE, check, lambda root: source_text.files_below(root, ["src"]))
