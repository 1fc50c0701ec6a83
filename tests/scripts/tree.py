"""A copy of the scripts in a folder of their own, with stand-ins for the tools that they call.

The folder's name and the home's hold a space, as a user's may. What is not stood in for is the
machine's own; the package list is always complete, so that no test installs anything.
"""
import os
import shutil
import stat
import subprocess
import tempfile
import unittest

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.realpath(__file__))))


class TreeTest(unittest.TestCase):
    """A test on a tree of its own that holds `files`, each with what it has in the real one."""

    files = ()
    home_name = 'my home'

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix='tollbeam tree ')
        self.addCleanup(folder.cleanup)
        self.folder = os.path.realpath(folder.name)
        self.top = self.path('the tree')
        self.home = self.path(self.home_name)
        for place in (self.top, self.home, self.path('bin')):
            os.makedirs(place)
        for name in self.files:
            source, target = os.path.join(TOP, name), os.path.join(self.top, name)
            os.makedirs(os.path.dirname(target), exist_ok=True)
            (shutil.copytree if os.path.isdir(source) else shutil.copy)(source, target)
        self.stand_in('dpkg-query', 'echo installed')

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    def write(self, name, text):
        """A file of the tree."""
        file = os.path.join(self.top, name)
        os.makedirs(os.path.dirname(file), exist_ok=True)
        with open(file, 'w') as f:
            f.write(text)
        return file

    def stand_in(self, name, script):
        """What runs instead of the tool; a name with a slash is a script of the tree."""
        file = os.path.join(self.top, name) if '/' in name else self.path('bin', name)
        os.makedirs(os.path.dirname(file), exist_ok=True)
        with open(file, 'w') as f:
            f.write('#!/bin/bash\n' + script)
        os.chmod(file, os.stat(file).st_mode | stat.S_IXUSR)

    def run_script(self, name, *words, **env):
        """Runs a script of the tree to its end; `output` is all it said."""
        result = subprocess.run([os.path.join(self.top, name), *words], env=self.environment(**env), cwd=self.folder,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        result.output = result.stdout
        return result

    def environment(self, **env):
        """Nothing of the caller's session: no test may reach its screen, buses or folders."""
        return {'HOME': self.home, 'PATH': self.path('bin') + ':' + os.environ['PATH'], 'LC_ALL': 'C.UTF-8', **env}
