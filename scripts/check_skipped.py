#!/usr/bin/python3
"""check_skipped.py RESULTS.xml ALLOWED: fails when a test was skipped that ALLOWED does not name.

ALLOWED holds one test a line: its name, in which * stands for anything, then the reason.
"""
import fnmatch
import sys
import xml.etree.ElementTree as xml

results, allowed_file = sys.argv[1:]
with open(allowed_file) as f:
    lines = [line.split(None, 1) for line in f if line.strip() and not line.startswith('#')]
allowed = {words[0] for words in lines if len(words) == 2}
skipped = [case.get('name') for case in xml.parse(results).getroot().iter('testcase')
           if case.get('status') in ('notrun', 'disabled')]
bad = sorted({name for name in skipped if not any(fnmatch.fnmatchcase(name, a) for a in allowed)})
if bad:
    print('Skipped without a reason in %s: %s' % (allowed_file, ', '.join(bad)), file=sys.stderr)
sys.exit(1 if bad else 0)
