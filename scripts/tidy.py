#!/usr/bin/python3
"""tidy.py BUILD: clang-tidy over the sources in App/, two at a time.

A file that passed is remembered by a hash of what the compiler sees of it and of the rules, so that
the second time costs only the preprocessing.
"""
import concurrent.futures
import hashlib
import json
import os
import shlex
import subprocess
import sys

TOP = os.path.dirname(os.path.dirname(os.path.realpath(__file__)))
BUILD = os.path.abspath(sys.argv[1])
COMMANDS = os.path.join(BUILD, 'tidy')
CACHE = os.path.join(TOP, '.cache', 'tidy')


def sources():
    """The compiler's commands for App/, without the precompiled headers: a source includes what it uses."""
    with open(os.path.join(BUILD, 'compile_commands.json')) as f:
        for entry in json.load(f):
            if entry['file'].startswith(TOP + '/App/'):
                words = shlex.split(entry.pop('command'))
                # A path may hold spaces, so the words are told apart before any is left out.
                if '-Winvalid-pch' in words:
                    at = words.index('-Winvalid-pch')
                    assert words[at + 1] == '-include', words
                    del words[at:at + 3]
                yield dict(entry, arguments=words)


def fingerprint(entry, rules):
    """None when the file cannot even be preprocessed: clang-tidy then says why."""
    words = entry['arguments']
    command = words[:words.index('-o')] + ['-E', entry['file']]
    seen = subprocess.run(command, cwd=entry['directory'], capture_output=True)
    return hashlib.sha256(rules + seen.stdout).hexdigest() if seen.returncode == 0 else None


def check(entry, rules):
    """None when the file is clean, else what clang-tidy says."""
    mark = fingerprint(entry, rules)
    if mark and os.path.exists(os.path.join(CACHE, mark)):
        return None
    result = subprocess.run(['clang-tidy', '--quiet', '-p', COMMANDS, entry['file']], capture_output=True, text=True)
    if result.returncode != 0:
        return result.stdout + result.stderr
    if mark:
        open(os.path.join(CACHE, mark), 'w').close()
    return None


def main():
    os.makedirs(CACHE, exist_ok=True)
    with open(os.path.join(TOP, '.clang-tidy'), 'rb') as f:
        rules = f.read() + subprocess.run(['clang-tidy', '--version'], capture_output=True).stdout
    entries = list(sources())
    if not entries:
        sys.exit('no source of App/ in ' + BUILD)
    os.makedirs(COMMANDS, exist_ok=True)
    with open(os.path.join(COMMANDS, 'compile_commands.json'), 'w') as f:
        json.dump(entries, f)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        complaints = [text for text in pool.map(lambda e: check(e, rules), entries) if text]
    for text in complaints:
        print(text)
    print('%d files, %d with complaints' % (len(entries), len(complaints)))
    sys.exit(1 if complaints else 0)


main()
