"""Argument: ROOT. Every program and script in benchmarks/ has rows in its table of limits, and reports them."""

import importlib.util
import re
import sys
from pathlib import Path

import source_text

RULE = (
    "each benchmark has its figures in benchmarks/limits.tsv and reports each of them, and"
    " docs/performance.md is what scripts/update-performance writes."
)
NO_BENCHMARKS = {"empty_window", "report"}  # the yardstick of the others, and what runs them
LIMITS = "benchmarks/limits.tsv"


def limits_of(root):
    """The project's own reader of the table."""
    specification = importlib.util.spec_from_file_location("limits", root / "benchmarks/support/limits.py")
    module = importlib.util.module_from_spec(specification)
    specification.loader.exec_module(module)
    return module


def benchmarks(root):
    """The source of each program that CMake builds and of each script, by name."""
    directory = root / "benchmarks"
    built = re.findall(r"^(?:veilkeep_add_benchmark|add_executable)\((\w+)",
                       (directory / "CMakeLists.txt").read_text(encoding="utf-8"), re.MULTILINE)
    sources = {name: directory / f"{name}.cpp" for name in built}
    sources |= {path.stem: path for path in directory.glob("*.cpp")}
    sources |= {path.name: path for path in directory.iterdir() if path.is_file() and path.stat().st_mode & 0o111}
    return {name: path for name, path in sorted(sources.items()) if name not in NO_BENCHMARKS}


def code_of(path):
    text = path.read_text(encoding="utf-8")
    return source_text.cpp_code(text, keep_strings=True) if path.suffix == ".cpp" else source_text.script_code(text)


def findings(root, figures):
    sources = benchmarks(root)
    for name, path in sources.items():
        own = [figure for figure in figures if figure.benchmark == name]
        code = code_of(path)
        if not own:
            yield f"{LIMITS}: has no row for {name}"
        if not re.search(r"\bReport\b", code):
            yield f"benchmarks/{path.name}: reports nothing"
        for figure in own:
            if f'"{figure.name}"' not in code:
                yield f"benchmarks/{path.name}: does not report {figure.name}"
    for name in sorted({figure.benchmark for figure in figures} - set(sources)):
        yield f"{LIMITS}: there is no benchmark {name}"


def document_findings(root, made):
    document = root / "docs" / "performance.md"
    written = document.read_text(encoding="utf-8") if document.exists() else ""
    if made != written:
        lacking = [line for line in made.splitlines() if line not in written.splitlines()]
        yield from (f"docs/performance.md: lacks {line}" for line in lacking or ["a line in its place"])


def main():
    root = Path(sys.argv[1])
    limits = limits_of(root)
    figures = limits.read()
    found = [*findings(root, figures), *document_findings(root, limits.document(figures))]
    if found:
        print(*found, "", f"The rule: {RULE}", sep="\n")
        sys.exit(1)
    print(f"{len(figures)} figures follow the rule: {RULE}")


if __name__ == "__main__":
    main()
