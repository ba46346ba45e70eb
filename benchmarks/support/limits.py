"""The table of the figures that benchmarks report, benchmarks/limits.tsv, and the page that is made from it."""

import pathlib
import typing

PATH = pathlib.Path(__file__).resolve().parents[1] / "limits.tsv"

INTRODUCTION = """# Performance

`benchmarks/report` builds the programs in `benchmarks/`, runs them one after the other and prints one table; it fails
when a figure is past its limit. `benchmarks/report NAME…` runs only some. Beside what `scripts/setup --tests` installs
nothing is needed; without root, what wants a file system of its own is skipped and says so.

Most figures are ratios: both sides run in turn, and the median of the ratios is taken round by round, so that a busy or
a slow machine changes both sides alike. A ratio past its limit is measured once more, and both values are shown. Times,
memory and counts stand for themselves and want a machine that does nothing else; they are not repeated, as a worst
case that was seen once is true. A figure without a limit is only told. What a program does in detail is told at the
beginning of its source.

This page is made from `benchmarks/limits.tsv` by `scripts/update-performance`.

| Benchmark | Figure | Measured against | At most | Unit | Why |
|---|---|---|---|---|---|
"""


class Figure(typing.NamedTuple):
    benchmark: str
    name: str
    yardstick: str
    limit: float | None
    unit: str
    why: str

    def is_kept_by(self, value):
        return self.limit is None or value <= self.limit


def _figure(cells):
    if len(cells) != len(Figure._fields):
        raise ValueError(f"{len(cells)} cells instead of {len(Figure._fields)}")
    benchmark, name, yardstick, limit, unit, why = cells
    return Figure(benchmark, name, yardstick, None if limit == "-" else float(limit), unit, why)


def read(path=PATH):
    figures = {}
    lines = pathlib.Path(path).read_text(encoding="utf-8").splitlines()
    rows = [(number, line.split("\t")) for number, line in enumerate(lines, 1) if not line.startswith("#")]
    for number, cells in rows[1:]:  # below the names of the columns
        try:
            figure = _figure(cells)
        except ValueError as error:
            raise ValueError(f"{path}:{number}: {error}") from error
        if (figure.benchmark, figure.name) in figures:
            raise ValueError(f"{path}:{number}: there twice: {figure.benchmark}, {figure.name}")
        figures[figure.benchmark, figure.name] = figure
    return list(figures.values())


def document(figures):
    rows = [
        (f"`{figure.benchmark}`", figure.name, figure.yardstick,
         "-" if figure.limit is None else f"{figure.limit:g}", figure.unit, figure.why)
        for figure in figures
    ]
    return INTRODUCTION + "".join(f"| {' | '.join(cells)} |\n".replace("| - ", "| – ") for cells in rows)


if __name__ == "__main__":
    print(document(read()), end="")
