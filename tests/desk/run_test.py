#!/usr/bin/python3
"""run_test.py [--patience SECONDS] NAME...: runs desk tests, each on a desk of its own; without a name, all of them."""
import argparse
import os
import signal
import sys
import unittest

HERE = os.path.dirname(os.path.realpath(__file__))


class Result(unittest.TextTestResult):
    """A test that hangs fails where it does, so that its desk is taken down."""

    patience = 0
    ended = False  # by a signal: unittest takes that for one more error and would go on

    def startTest(self, test):
        super().startTest(test)
        signal.alarm(self.patience)

    def stopTest(self, test):
        signal.alarm(0)
        super().stopTest(test)
        if self.ended:
            self.stop()


def lose_patience(*_):
    raise AssertionError('this took more than %d s' % Result.patience)


def end(*_):
    """A runner that loses patience ends us with SIGTERM: the desk must still be taken down."""
    Result.ended = True
    sys.exit(143)


def load(names):
    loader = unittest.TestLoader()
    return loader.loadTestsFromNames(names) if names else loader.discover(HERE, 'test_*.py')


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--patience', type=int, default=800)
    parser.add_argument('names', nargs='*')
    options = parser.parse_args()
    Result.patience = options.patience
    signal.signal(signal.SIGALRM, lose_patience)
    signal.signal(signal.SIGTERM, end)
    sys.path.insert(0, HERE)

    result = unittest.TextTestRunner(verbosity=2, resultclass=Result).run(load(options.names))
    # 77 is what the runner of all tests is told to count as skipped.
    return 1 if not result.wasSuccessful() else 77 if result.skipped else 0


sys.exit(main())
