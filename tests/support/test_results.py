"""Prints of a CTest run, from its JUnit file, the tests that were skipped and what each said, or the end of
what each failed one printed.

usage: test_results.py skipped|failed FILE
"""

import sys
import xml.etree.ElementTree

LINES_OF_A_FAILURE = 40


def reason(output):
    """GoogleTest's text below its "Skipped" line, else the last line of all."""
    lines = [line.strip() for line in output.splitlines() if line.strip()]
    for number, line in enumerate(lines):
        if line.endswith("Skipped") and number + 1 < len(lines):
            return lines[number + 1]
    return lines[-1] if lines else "no reason given"


def print_skipped(name, output):
    print(f"skipped: {name}: {reason(output).removeprefix('skipped: ')}")


def print_failed(name, output):
    print(f"failed: {name}")
    for line in output.splitlines()[-LINES_OF_A_FAILURE:]:
        print(f"    {line}")


def main():
    element, show = {"skipped": ("skipped", print_skipped), "failed": ("failure", print_failed)}[sys.argv[1]]
    for test in xml.etree.ElementTree.parse(sys.argv[2]).iter("testcase"):
        if test.find(element) is not None:
            show(test.get("name"), test.findtext("system-out") or "")


main()
