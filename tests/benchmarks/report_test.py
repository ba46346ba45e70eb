"""Tries benchmarks/report, the argument, with programs that only pretend to measure."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

REPORT = sys.argv.pop(1)
TELL = 'tell() { printf "figure\\t%s\\t%s\\ta detail\\n" "$1" "$2" >>"$VEILKEEP_BENCHMARK_RESULTS"; }\n'
# What a program with the figures "speed" (a ratio, at most 2) and "size" (MB, at most 50) does; what its rows say,
# and the exit status of the report.
ROWS = {
    "good": ("tell speed 1.5; tell size 50", [["speed", "1.500", "good"], ["size", "50.0", "good"]], 0),
    "late": ("tell speed 2.5; tell size 1; exit 1", [["speed", "2.500, then 2.500", "PAST LIMIT", "2nd try"]], 1),
    "large": ("tell speed 1; tell size 51; exit 1", [["speed", "1.000"], ["size", "  51.0 ", "PAST LIMIT"]], 1),
    "moody": ("if mkdir tried; then tell speed 3; tell size 1; exit 1; fi; tell speed 1.9; tell size 1",
              [["speed", "3.000, then 1.900", "good", "2nd try"], ["size", "  1.0 ", "good"]], 0),
    "large later": ("if mkdir later; then tell speed 3; tell size 1; exit 1; fi; tell speed 1; tell size 99; exit 1",
                    [["speed", "good"], ["size", "1.0, then 99.0", "PAST LIMIT"]], 1),
    "fallen later": ("if mkdir fell; then tell speed 3; tell size 1; exit 1; fi; tell speed 1; kill -SEGV $$",
                     [["speed", "good"], ["size", "1.0, then -", "FAILED", "crashed: SIGSEGV"]], 1),
    "fallen": ("tell speed 1; kill -SEGV $$", [["speed", "good"], ["size", "FAILED", "crashed: SIGSEGV"]], 1),
    "fallen at the end": ("tell speed 1; tell size 1; kill -SEGV $$", [["FAILED", "crashed: SIGSEGV"]], 1),
    "gone wrong": ("echo the reason >&2; exit 2", [["speed", "FAILED", "ended with 2: the reason"]], 1),
    "silent": ("exit 0", [["speed", "FAILED", "not reported"], ["size", "FAILED", "not reported"]], 1),
    "rubbish": ("tell speed soon; tell size nan; echo x >>$VEILKEEP_BENCHMARK_RESULTS",
                [["not understood: x"], ["not understood: figure", "soon"], ["size", "FAILED"]], 1),
    "unknown": ("tell speed 1; tell size 1; tell beauty 1", [["FAILED", "no row in the table: beauty"]], 1),
    "two minds": ("tell speed 1; tell size 1; exit 1", [["FAILED", "ended with 1, 0 was expected"]], 1),
    "without tools": (r'printf "skipped\t*\tno display\n" >$VEILKEEP_BENCHMARK_RESULTS; exit 77',
                      [["speed", "skipped", "no display"], ["size", "skipped", "no display"]], 0),
    "in part": (r'tell speed 1; printf "skipped\tsize\tno root\n" >>$VEILKEEP_BENCHMARK_RESULTS',
                [["speed", "good"], ["size", "skipped", "no root"]], 0),
    "absent": (None, [["speed", "FAILED", "No such file"]], 1),
}


class Report(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.place = Path(directory.name)
        self.limits = self.place / "limits.tsv"
        lines = ["# a comment", "benchmark\tfigure\tyardstick\tlimit\tunit\twhy"]
        for name, (body, _, _) in ROWS.items():
            lines += [f"{name}\tspeed\tanother\t2\tratio\twhy", f"{name}\tsize\t-\t50\tMB\twhy"]
            if body is not None:
                program = self.place / name
                program.write_text(f"#!/bin/bash\n{TELL}{body}\n")
                program.chmod(0o755)
        self.limits.write_text("\n".join(lines) + "\n")

    def report(self, *arguments):
        command = [REPORT, "--programs", self.place, "--limits", self.limits, *arguments]
        return subprocess.run(command, capture_output=True, text=True, check=False)

    def test_judges_each_program(self):
        for name, (_, wanted, status) in ROWS.items():
            with self.subTest(name):
                ended = self.report(name)
                self.assertEqual(ended.returncode, status, ended.stdout + ended.stderr)
                rows = [line for line in ended.stdout.splitlines() if line.startswith(f"{name}  ")]
                for words in wanted:
                    self.assertTrue(any(all(word in row for word in words) for row in rows), f"{words}: {rows}")

    def test_runs_all_where_none_is_named(self):
        ended = self.report()
        self.assertEqual(ended.returncode, 1)
        told = [line.split("  ")[0] for line in ended.stdout.splitlines()]
        self.assertEqual([name for name in ROWS if name not in told], [])

    def test_tells_what_was_asked_wrongly(self):
        for arguments, told in (["nothing"], "no benchmark nothing"), (["good", "--fast"], "--fast"), (
                ["--limits", "/nowhere"], "/nowhere"):
            ended = self.report(*arguments)
            self.assertEqual(ended.returncode, 2)
            self.assertIn(told, ended.stderr)

    def test_does_not_take_a_damaged_table(self):
        good = self.limits.read_text()
        for line in "good\tspeed\t-\tsoon\tMB\twhy", "good\tspeed", "good\tspeed\t-\t3\tMB\twhy":
            self.limits.write_text(f"{good}{line}\n")
            ended = self.report("good")
            self.assertEqual(ended.returncode, 2)
            self.assertIn(f"limits.tsv:{len(good.splitlines()) + 1}: ", ended.stderr)


if __name__ == "__main__":
    unittest.main()
