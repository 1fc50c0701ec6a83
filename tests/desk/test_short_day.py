"""The short day that run.sh plays: ended on the way, it takes its laptop down, unless it is to stay."""
import os
import signal
import subprocess
import sys
import unittest

from laptop import Desk, folder_for, wait_for
from laptop.processes import gone
from tollbeam import BUNDLE

HERE = os.path.dirname(os.path.realpath(__file__))


class ShortDay(unittest.TestCase):
    def setUp(self):
        folder = folder_for(self)
        self.desk_folder, self.pictures = os.path.join(folder, 'desk'), os.path.join(folder, 'day')
        self.addCleanup(lambda: Desk(self.desk_folder).down())

    def interrupt(self, sign, *options):
        """Begins the day, ends it when the program runs, and returns the laptop's processes and the exit code."""
        day = subprocess.Popen([sys.executable, os.path.join(HERE, 'short_day.py'), BUNDLE, self.pictures, *options],
                               env=dict(os.environ, DESK_RUN=self.desk_folder), stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                               # A runner in the background may have been told to ignore it.
                               preexec_fn=lambda: signal.signal(signal.SIGINT, signal.default_int_handler))
        self.addCleanup(day.kill)
        wait_for(lambda: Desk(self.desk_folder).app_pid(), 'the program', 30)
        desk = Desk(self.desk_folder)
        pids = [pid for pid in map(desk.processes.pid, desk.processes.names()) if pid]
        self.assertGreater(len(pids), 6)
        day.send_signal(sign)
        day.communicate(timeout=30)
        return pids, day.returncode

    def test_ctrl_c_ends_the_laptop_too(self):
        pids, code = self.interrupt(signal.SIGINT)
        self.assertEqual(code, 130)
        self.assertEqual([pid for pid in pids if not gone(pid)], [])

    def test_being_ended_ends_the_laptop_too(self):
        pids, code = self.interrupt(signal.SIGTERM)
        self.assertEqual(code, 143)
        self.assertEqual([pid for pid in pids if not gone(pid)], [])

    def test_a_laptop_that_is_to_stay_stays(self):
        _, code = self.interrupt(signal.SIGINT, '--keep')
        self.assertEqual(code, 130)
        self.assertTrue(Desk(self.desk_folder).is_up())
        self.assertIsNotNone(Desk(self.desk_folder).app_pid())


if __name__ == '__main__':
    unittest.main()
