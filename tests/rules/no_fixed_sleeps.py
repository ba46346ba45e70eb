import re

import source_text

RULE = (
    "tests never sleep for a fixed time: wait for an event or a pipe, or ask for the condition up to a "
    "deadline (tests/support/WaitUntil.h, tests/package/fresh_system/waiting.py)."
)

# The places that may pause between two looks at a condition.
_WAITING_HELPERS = ("tests/support/WaitUntil.cpp", "tests/package/fresh_system/waiting.py")

_CPP = re.compile(
    r"""
      (?<![.\w])(?<!->)(?:u|m|nano|clock_nano)?sleep\s*\(  # an object may well have a sleep() of its own
    | \bsleep_(?:for|until)\b
    | \bqWait\s*\(
    | \bp?poll\s*\(\s*(?:nullptr|NULL|0)\s*,
    | \bselect\s*\(\s*0\s*,\s*(?:nullptr|NULL|0)\s*,
    """,
    re.VERBOSE,
)
_SCRIPT = re.compile(
    r"""
      \bsleep\s*\(
    | \bfrom\s+time\s+import\b.*\bsleep\b
    | (?:^|[;&|(]|\bdo\b|\bthen\b)\s*u?sleep\s+["$.0-9]
    """,
    re.VERBOSE,
)


def check(file, text):
    if str(file) in _WAITING_HELPERS:
        return
    in_cpp = file.suffix in source_text.CPP_SUFFIXES
    code, pattern = (source_text.cpp_code(text), _CPP) if in_cpp else (source_text.script_code(text), _SCRIPT)
    for line, content in enumerate(code.splitlines(), 1):
        match = pattern.search(content)
        if match:
            yield line, f"sleeps: {match.group().strip()}"


def _files(root):
    rules = root / "tests/rules"  # speaks of sleeping, tests nothing that runs
    for file in source_text.files_below(root, ["tests"], source_text.CPP_SUFFIXES + (".py", ".sh")):
        if rules not in (root / file).parents:
            yield file


if __name__ == "__main__":
    source_text.run(RULE, check, _files)
