"""What the house rules share: finding the files they look at, reading them as code, telling what is wrong."""

import re
import sys
from pathlib import Path

CPP_SUFFIXES = (".h", ".cpp")
SKIPPED = 77  # CTest's SKIP_RETURN_CODE for these tests

_CPP_TOKEN = re.compile(
    r"""
      //[^\n]*(?:\\\n[^\n]*)*                       # comment to the end of the line
    | /\*.*?(?:\*/|\Z)                              # comment
    | (?P<raw>(?:u8|[uUL])?R"(?P<tag>[^()\\\s"]{0,16})\(.*?\)(?P=tag)")
    | "(?:\\.|[^"\\\n])*"
    | (?P<number>\b\d[\w.]*(?:'\w+)*)               # 1'000 opens no character literal
    | '(?:\\.|[^'\\\n])+'
    """,
    re.VERBOSE | re.DOTALL,
)


def _blanked(text):
    return re.sub(r"[^\n]", " ", text)


def cpp_code(text, keep_strings=False):
    """The text with comments, and string and character literals unless kept, blanked out."""

    def replacement(match):
        token = match.group()
        kept = match.group("number") or (keep_strings and not token.startswith("/"))
        return token if kept else _blanked(token)

    return _CPP_TOKEN.sub(replacement, text)


def script_code(text):
    """Python or shell text with comments to the end of a line turned to blanks. Strings are kept."""
    return re.sub(r"(^|\s)#[^\n]*", lambda match: _blanked(match.group()), text)


def includes(text):
    """(line number, "<" or a double quote, included file) of each include directive."""
    directive = re.compile(r'^\s*#\s*include\s*([<"])([^>"\n]+)[>"]')
    for number, line in enumerate(cpp_code(text, keep_strings=True).splitlines(), 1):
        match = directive.match(line)
        if match:
            yield number, match.group(1), match.group(2)


def files_below(root, folders, suffixes=CPP_SUFFIXES):
    """Each file of these folders of the root with such a suffix, as a path relative to the root."""
    for folder in folders:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in suffixes and path.is_file():
                yield path.relative_to(root)


def run(rule, check, files_of):
    """The whole of a rule's program: ROOT as argument, files_of(root) looked at with check(file, text)."""
    root = Path(sys.argv[1])
    files = list(files_of(root))
    if not files:
        sys.exit(f"{root}: the rule found no file to look at")
    findings = []
    for file in files:
        text = (root / file).read_text(encoding="utf-8", errors="surrogateescape")
        findings += [f"{file}:{line}: {what}" for line, what in check(file, text)]
    if findings:
        print(*findings, "", f"The rule: {rule}", sep="\n")
        sys.exit(1)
    print(f"{len(files)} files follow the rule: {rule}")
