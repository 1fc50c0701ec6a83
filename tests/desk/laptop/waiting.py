"""Waiting for a condition, never for a fixed time."""
import time


# Catches what hangs, nothing else: on a busy machine everything may take many times as long.
PATIENCE = 60.0  # seconds


def wait_for(condition, what='', seconds=PATIENCE, every=0.03):
    """Calls `condition` until it gives something true, and returns that.

    Raises AssertionError with `what` when the time is over, so that a test fails and says why.
    """
    end = time.monotonic() + seconds
    while True:
        began = time.monotonic()
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError('waited %.0f s in vain for %s (last: %r)' % (seconds, what or condition, value))
        # A condition that takes long leaves the processor twice as long to what it waits for.
        time.sleep(max(every, 2 * (time.monotonic() - began)))
