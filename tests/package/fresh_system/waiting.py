"""Waiting for what other processes do."""

import time

PATIENCE = 60  # seconds; nothing that is waited for takes long, but the machine may be busy
_PAUSE = 0.05


def wait_until(what, condition):
    """The first true answer of the condition; an AssertionError names what did not come."""
    deadline = time.monotonic() + PATIENCE
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {PATIENCE} s in vain: {what}")
        time.sleep(_PAUSE)
