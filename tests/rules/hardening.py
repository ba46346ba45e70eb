"""Arguments: a directory's name that no program may hold, a program, and the object files made for it alone.

Those objects tell of control-flow protection: a whole program has its mark only where libc has it as well. With
--no-checked-calls in front the program calls nothing of libc that has a checked version.
"""

import re
import subprocess
import sys
from pathlib import Path

RULE = "the programs that are shipped have every protection that compiler and linker offer, and no path of the build."

CHECKED_CALLS = "checked library calls (-D_FORTIFY_SOURCE)"
CONTROL_FLOW_MARKS = {"X86-64": ("IBT", "SHSTK"), "AArch64": ("BTI", "PAC")}


def told_by_readelf(file, *options):
    command = ["readelf", "--wide", *options, file]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def missing_from_program(program):
    told = told_by_readelf(program, "--file-header", "--program-headers", "--dynamic", "--symbols")
    stack = re.search(r"^\s*GNU_STACK\s.*\s([RWE]{1,3}) +0x", told, re.MULTILINE)
    properties = {
        "position independence (-pie)": re.search(r"\(FLAGS_1\).*\bPIE\b", told),
        "binding at the start (-z now)": re.search(r"\((FLAGS|FLAGS_1)\).*\b(BIND_)?NOW\b", told),
        "what is read-only after the start (-z relro)": re.search(r"^\s*GNU_RELRO\s", told, re.MULTILINE),
        "a stack that runs no code (-z noexecstack)": stack and "E" not in stack[1],
        "guarded stack frames (-fstack-protector-strong)": re.search(r"\b__stack_chk_fail\b", told),
        CHECKED_CALLS: re.search(r"\s__[a-z]+_chk\b", told),
    }
    return [name for name, found in properties.items() if not found]


def lacks_control_flow_mark(object_file):
    told = told_by_readelf(object_file, "--file-header", "--notes")
    marks = next((marks for machine, marks in CONTROL_FLOW_MARKS.items() if machine in told), ())
    return not all(re.search(rf"feature:.*\b{mark}\b", told) for mark in marks)


def faults(directory, program, objects):
    for name in missing_from_program(program):
        yield f"{program}: lacks {name}"
    for object_file in filter(lacks_control_flow_mark, objects):
        yield f"{object_file}: lacks control-flow protection (-fcf-protection, -mbranch-protection)"
    if directory.encode() in Path(program).read_bytes():
        yield f"{program}: holds the path {directory} (-ffile-prefix-map)"


def main():
    arguments = sys.argv[1:]
    has_checked_calls = arguments[0] != "--no-checked-calls"
    directory, program, *objects = arguments if has_checked_calls else arguments[1:]
    if not objects:
        sys.exit(f"{program}: no object file was named")
    found = [fault for fault in faults(directory, program, objects) if has_checked_calls or CHECKED_CALLS not in fault]
    if found:
        sys.exit("\n".join(found) + f"\n\nThe rule: {RULE}")
    print(f"{program} follows the rule: {RULE}")


if __name__ == "__main__":
    main()
