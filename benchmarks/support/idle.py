"""What the programs that measure idleness share: buses, what a process does meanwhile, and reporting it."""

import collections
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from support import limits, results

CONFIGURATION = """<busconfig><type>custom</type><listen>unix:path={socket}</listen><policy context='default'>
<allow user='*'/><allow own='*'/><allow send_destination='*'/><allow receive_sender='*'/></policy></busconfig>"""


class Report:
    """Tells figures as support/Report.h does."""

    def __init__(self):
        self.benchmark = pathlib.Path(sys.argv[0]).name
        path = os.environ.get("VEILKEEP_BENCHMARK_LIMITS", limits.PATH)
        self.figures = {figure.name: figure for figure in limits.read(path) if figure.benchmark == self.benchmark}
        self.is_good = True

    def tell(self, name, value, detail=""):
        figure = self.figures[name]
        self.is_good = self.is_good and figure.is_kept_by(value)
        limit = "" if figure.limit is None else f"; at most {figure.limit:g} wanted"
        print(f"{name}: {value:g} {figure.unit} ({detail}{limit})", flush=True)
        self._append("figure", name, f"{value:g}", detail)

    def skip_all(self, why):
        print(f"skipped: {why}")
        self._append("skipped", "*", why)
        sys.exit(results.SKIPPED_STATUS)

    def end(self):
        sys.exit(0 if self.is_good else 1)

    def _append(self, *cells):
        if path := os.environ.get("VEILKEEP_BENCHMARK_RESULTS"):
            with open(path, "a", encoding="utf-8") as told:
                told.write("\t".join(cells) + "\n")


def why_missing(*programs):
    """What is not there of these programs and of what measuring needs; empty where all is."""
    lacking = [program for program in ("dbus-daemon", "strace", *programs) if not shutil.which(program)]
    if lacking:
        return f"there is no {', '.join(lacking)}"
    mock = subprocess.run(["/usr/bin/python3", "-c", "import dbusmock"], stderr=subprocess.PIPE, text=True, check=False)
    return mock.stderr.strip().splitlines()[-1] if mock.returncode else ""


def scratch_directory():
    """Outside of what Veilkeep protects."""
    place = "/srv" if os.access("/srv", os.W_OK) else pathlib.Path.cwd()
    return tempfile.TemporaryDirectory(dir=place)


def start_bus(directory, kind, environment):
    socket = directory / f"{kind}.socket"
    configuration = directory / f"{kind}.conf"
    configuration.write_text(CONFIGURATION.format(socket=socket))
    bus = subprocess.Popen(
        ["dbus-daemon", "--nofork", "--print-address", f"--config-file={configuration}"],
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    bus.stdout.readline()
    environment[f"DBUS_{kind.upper()}_BUS_ADDRESS"] = f"unix:path={socket}"
    return bus


def calls_of(process, seconds, trace):
    tracer = subprocess.Popen(["strace", "-f", "-o", trace, "-p", str(process)], stderr=subprocess.PIPE, text=True)
    time.sleep(seconds)
    if tracer.poll() is not None:
        sys.exit(f"strace ended too early: {tracer.stderr.read().strip()}")
    tracer.send_signal(signal.SIGINT)
    tracer.wait()
    # The calls that strace found it in, and left it in, are no wake-ups, and ends of threads no calls.
    lines = [line for line in trace.read_text().splitlines() if "<unfinished" not in line and "+++" not in line]
    return [line for line in lines if not re.search(r"resumed|detached|restart_syscall", line)]


def proportional_memory(process):
    """In MB."""
    text = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text()
    return int(re.search(r"^Pss: +(\d+) kB", text, re.MULTILINE).group(1)) / 1024


def tell_calls(report, name, process, seconds, trace):
    calls = calls_of(process, seconds, trace)
    kinds = collections.Counter(re.sub(r"^\d+ +|\(.*", "", line) for line in calls)
    report.tell(name, len(calls), ", ".join(f"{times} {call}" for call, times in kinds.items()))
