#!/usr/bin/python3
"""run_test.py NAME...: runs desk tests, each on a desk of its own; without a name, all of them."""
import os
import signal
import sys
import unittest

# A runner that loses patience ends us with SIGTERM: the desk must still be taken down.
signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
here = os.path.dirname(os.path.realpath(__file__))
sys.path.insert(0, here)
loader = unittest.defaultTestLoader
suite = loader.loadTestsFromNames(sys.argv[1:]) if sys.argv[1:] else loader.discover(here, 'test_*.py')
result = unittest.TextTestRunner(verbosity=2).run(suite)
# 77 is what the runner of all tests is told to count as skipped.
sys.exit(1 if not result.wasSuccessful() else 77 if result.skipped else 0)
