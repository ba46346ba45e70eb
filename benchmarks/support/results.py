"""Runs a benchmark, reads the figures that it reported and holds them against the table of the limits."""

import dataclasses
import math
import os
import pathlib
import signal
import subprocess
import sys
import tempfile

GOOD, PAST, FAILED, SKIPPED, TOLD = "good", "PAST LIMIT", "FAILED", "skipped", "no limit"
BAD = (PAST, FAILED)
SECONDS = 1800  # that a benchmark may take
SKIPPED_STATUS = 77


@dataclasses.dataclass
class Outcome:
    """What one run reported: of figures value and detail, of skipped ones the reason; "*" is all that is left."""

    figures: dict = dataclasses.field(default_factory=dict)
    skipped: dict = dataclasses.field(default_factory=dict)
    rubbish: list = dataclasses.field(default_factory=list)
    status: int | None = None  # None: it did not end in time
    errors: str = ""

    def read(self, line):
        match line.split("\t"):
            case ["figure", name, value, detail] if _number(value) is not None:
                self.figures[name] = (_number(value), detail)
            case ["skipped", name, why]:
                self.skipped[name] = why
            case _:
                self.rubbish.append(line)

    def end(self):
        if self.status is None:
            return f"did not end within {SECONDS} s"
        if self.status < 0:
            return f"crashed: {signal.Signals(-self.status).name}{self._last_error()}"
        return f"ended with {self.status}{self._last_error()}"

    def _last_error(self):
        lines = [line.strip() for line in self.errors.splitlines() if line.strip()]
        return f": {lines[-1]}" if lines else ""


@dataclasses.dataclass
class Row:
    """A row of the report."""

    benchmark: str
    figure: str
    yardstick: str = "-"
    measured: str = "-"
    limit: str = "-"
    unit: str = "-"
    verdict: str = FAILED
    remark: str = ""


def _number(text):
    try:
        value = float(text)
    except ValueError:
        return None
    return value if math.isfinite(value) else None


def run(command, limits, seconds=SECONDS):
    """In the working directory that the benchmark is to use: its standard output goes to the report's errors."""
    with tempfile.TemporaryDirectory() as name:
        results, errors = pathlib.Path(name, "results"), pathlib.Path(name, "errors")
        environment = {**os.environ, "LC_ALL": "C.UTF-8", "VEILKEEP_BENCHMARK_RESULTS": str(results),
                       "VEILKEEP_BENCHMARK_LIMITS": str(limits)}
        outcome = Outcome()
        with errors.open("wb") as told:
            try:
                program = subprocess.Popen(command, cwd=pathlib.Path(command[0]).parent, env=environment,
                                           stdin=subprocess.DEVNULL, stdout=sys.stderr, stderr=told,
                                           start_new_session=True)
            except OSError as error:
                outcome.status, outcome.errors = 2, str(error)
                return outcome
            outcome.status = _status_of(program, seconds)
        outcome.errors = errors.read_text(encoding="utf-8", errors="replace")
        sys.stderr.write(outcome.errors)
        if results.exists():
            for line in results.read_text(encoding="utf-8", errors="replace").splitlines():
                outcome.read(line)
        return outcome


def _status_of(program, seconds):
    try:
        return program.wait(seconds)
    except subprocess.TimeoutExpired:
        return None
    finally:
        if program.returncode is None:
            os.killpg(program.pid, signal.SIGKILL)
            program.wait()


def _row(figure, outcome):
    limit = "-" if figure.limit is None else f"{figure.limit:g}"
    row = Row(figure.benchmark, figure.name, figure.yardstick, limit=limit, unit=figure.unit)
    why = outcome.skipped.get(figure.name, outcome.skipped.get("*"))
    if figure.name in outcome.figures:
        value, row.remark = outcome.figures[figure.name]
        row.measured = f"{value:.3f}" if figure.unit == "ratio" else f"{value:.1f}"
        row.verdict = TOLD if figure.limit is None else GOOD if figure.is_kept_by(value) else PAST
    elif why is not None:
        row.verdict, row.remark = SKIPPED, why
    else:
        row.remark = f"not reported; the program {outcome.end()}"
    return row


def rows_of(benchmark, figures, outcome):
    """A row for each figure of the benchmark, and one for each other trouble with the program."""
    rows = [_row(figure, outcome) for figure in figures]
    names = {figure.name for figure in figures}
    troubles = [f"not understood: {line}" for line in outcome.rubbish]
    troubles += [f"has no row in the table: {name}" for name in outcome.figures if name not in names]
    expected = 1 if any(row.verdict == PAST for row in rows) else 0
    skips_all = outcome.status == SKIPPED_STATUS and "*" in outcome.skipped
    if outcome.status != expected and not skips_all and not any(row.verdict == FAILED for row in rows):
        troubles.append(f"the program {outcome.end()}, {expected} was expected")
    return rows + [Row(benchmark, "-", remark=trouble) for trouble in troubles]


def may_be_repeated(row):
    """A ratio may have met a busy machine. A worst case or a size that was seen once is true."""
    return row.verdict == PAST and row.unit == "ratio"


def with_second_try(first, second):
    """The rows of the first run; what was repeated, or was seen to be bad only now, has both values."""
    again = {row.figure: row for row in second}
    rows = []
    for row in first:
        other = again.get(row.figure)
        is_bad_now = other and other.verdict in BAD and not may_be_repeated(other)
        if is_bad_now or (other and may_be_repeated(row) and other.verdict != SKIPPED):
            row = dataclasses.replace(other, measured=f"{row.measured}, then {other.measured}",
                                      remark=f"2nd try: {other.remark}")
        rows.append(row)
    return rows + [row for row in second if row.figure == "-"]
