"""Prints the tests that a CTest run skipped and what each said, from CTest's JUnit file."""

import sys
import xml.etree.ElementTree


def reason(output):
    """GoogleTest's text below its "Skipped" line, else the last line of all."""
    lines = [line.strip() for line in output.splitlines() if line.strip()]
    for number, line in enumerate(lines):
        if line.endswith("Skipped") and number + 1 < len(lines):
            return lines[number + 1]
    return lines[-1] if lines else "no reason given"


def main():
    for test in xml.etree.ElementTree.parse(sys.argv[1]).iter("testcase"):
        if test.find("skipped") is not None:
            output = test.findtext("system-out") or ""
            print(f"skipped: {test.get('name')}: {reason(output).removeprefix('skipped: ')}")


main()
