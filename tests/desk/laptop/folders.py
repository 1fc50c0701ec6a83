"""A folder for the desk of one test."""
import shutil
import tempfile

from .waiting import wait_for


def folder_for(test):
    """Makes a folder that goes with the test."""
    folder = tempfile.mkdtemp(prefix='desk-')
    test.addCleanup(wait_for, lambda: _is_removed(folder), 'an end of what is written to ' + folder)
    return folder


def _is_removed(folder):
    """What the bus had started ends a moment after it, and may write its settings at its end."""
    try:
        shutil.rmtree(folder)
    except OSError:
        return False
    return True
