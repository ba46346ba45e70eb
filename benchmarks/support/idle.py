"""What the programs that measure idleness share: message buses, and what a process does meanwhile."""

import collections
import pathlib
import re
import signal
import subprocess
import time

CONFIGURATION = """<busconfig><type>custom</type><listen>unix:path={socket}</listen><policy context='default'>
<allow user='*'/><allow own='*'/><allow send_destination='*'/><allow receive_sender='*'/></policy></busconfig>"""


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
    tracer = subprocess.Popen(["strace", "-f", "-o", trace, "-p", str(process)], stderr=subprocess.DEVNULL)
    time.sleep(seconds)
    tracer.send_signal(signal.SIGINT)
    tracer.wait()
    # The calls that strace found it in, and left it in, are no wake-ups.
    lines = [line for line in trace.read_text().splitlines() if "<unfinished" not in line]
    return [line for line in lines if not re.search(r"resumed|detached|restart_syscall", line)]


def proportional_memory(process):
    text = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text()
    return int(re.search(r"^Pss: +(\d+) kB", text, re.MULTILINE).group(1))


def print_calls(process, seconds, trace):
    calls = calls_of(process, seconds, trace)
    print(f"{len(calls)} system calls in {seconds:.0f} s")
    for call, times in collections.Counter(re.sub(r"^\d+ +|\(.*", "", line) for line in calls).items():
        print(f"  {times} x {call}")
    print(f"PSS {proportional_memory(process)} kB at the end")
