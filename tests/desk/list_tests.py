#!/usr/bin/python3
"""Prints the name of every desk test, one a line, for run_test.py."""
import os
import unittest


def names(suite):
    for test in suite:
        if isinstance(test, unittest.TestSuite):
            yield from names(test)
        else:
            yield test.id()


here = os.path.dirname(os.path.realpath(__file__))
for name in names(unittest.defaultTestLoader.discover(here, 'test_*.py')):
    print(name)
