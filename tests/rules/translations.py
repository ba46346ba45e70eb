"""Arguments: the project's directory, lupdate."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
from pathlib import Path

RULE = (
    "every text is a literal in tr() and has a finished translation with the same placeholders, ellipses and line "
    "breaks; scripts/update-translations has nothing to do."
)
LANGUAGES = ("de", "es")
PLACEHOLDER = re.compile(r"%(?:L?n|L?\d+|i)")
# Q_DECLARE_TR_FUNCTIONS and the like name tr without calling it.
NO_LITERAL = re.compile(r"(?:\btr|QCoreApplication::translate)\(\s*(?![\s\"])")


def ellipses(text):
    return text.replace("...", "…").count("…")


def unlike(source, form, is_plural):
    wanted, found = PLACEHOLDER.findall(source), PLACEHOLDER.findall(form)
    if sorted(wanted) != sorted(found):
        yield "other placeholders"
    if is_plural and not {"%n", "%Ln"} & set(found):
        yield "no number"
    if ellipses(source) != ellipses(form) or "..." in form:
        yield "another ellipsis"
    if source.count("\n") != form.count("\n") or source.endswith("\n") != form.endswith("\n"):
        yield "other line breaks"
    if form.endswith(" ") or (is_plural and source[:1].isspace() != form[:1].isspace()):
        yield "other blanks"


def faults_in(file):
    for context in ET.parse(file).getroot().iter("context"):
        for message in context.iter("message"):
            source, translation = message.findtext("source"), message.find("translation")
            is_plural = message.get("numerus") == "yes"
            forms = [form.text for form in translation.iter("numerusform")] if is_plural else [translation.text]
            faults = ["not finished"] if translation.get("type") or not all(forms) else []
            for form in filter(None, forms):
                faults += unlike(source, form, is_plural)
            for fault in faults:
                yield f"{file.name}: {context.findtext('name')}: {fault}: {source!r}"


def out_of_date(project, lupdate):
    folder = project / "resources" / "translations"
    with tempfile.TemporaryDirectory() as scratch:
        for language in LANGUAGES:
            shutil.copy(folder / f"veilkeep_{language}.ts", scratch)
        subprocess.run([project / "scripts" / "update-translations", scratch], check=True, stdout=subprocess.DEVNULL,
                       env=dict(os.environ, LUPDATE=lupdate))
        for language in LANGUAGES:
            name = f"veilkeep_{language}.ts"
            if (folder / name).read_bytes() != (Path(scratch) / name).read_bytes():
                yield f"{name}: out of date with the source"


def without_literal(project):
    for file in sorted((project / "src").rglob("*.cpp")) + sorted((project / "src").rglob("*.h")):
        text = file.read_text(encoding="utf-8")
        for match in NO_LITERAL.finditer(text):
            yield f"{file.relative_to(project)}:{text.count(chr(10), 0, match.start()) + 1}: no literal"


def main():
    project, lupdate = Path(sys.argv[1]), sys.argv[2]
    found = list(without_literal(project))
    for language in LANGUAGES:
        found += faults_in(project / "resources" / "translations" / f"veilkeep_{language}.ts")
    found += out_of_date(project, lupdate)
    if found:
        sys.exit("\n".join(found) + f"\n\nThe rule: {RULE}")
    print(f"The rule is followed: {RULE}")


if __name__ == "__main__":
    main()
