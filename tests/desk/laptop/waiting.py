"""Waiting for a condition, never for a fixed time."""
import sys
import time


# The exit code that a signal asked for.
_asked = []


def exit_at_next_wait(code):
    """For signal handlers. An exception that one raises is lost when the signal comes within a destructor."""
    _asked.append(code)


def exit_if_asked():
    """Only once, so that what runs on the way out may wait, too."""
    if _asked:
        sys.exit(_asked.pop())


# Catches what hangs, nothing else: on a busy machine everything may take many times as long.
PATIENCE = 60.0  # seconds


def wait_for(condition, what='', seconds=PATIENCE, every=0.03):
    """Calls `condition` until it gives something true, and returns that.

    Raises AssertionError with `what` when the time is over, so that a test fails and says why.
    """
    end = time.monotonic() + seconds
    while True:
        exit_if_asked()
        began = time.monotonic()
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError('waited %.0f s in vain for %s (last: %r)' % (seconds, what or condition, value))
        # A condition that takes long leaves the processor twice as long to what it waits for.
        time.sleep(max(every, 2 * (time.monotonic() - began)))
