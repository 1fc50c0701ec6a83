"""The recorder of battery traces writes what happens on the laptop that it runs on."""
import json
import os
import unittest

from laptop import Desk, folder_for, wait_for
from laptop.parts import PYTHON

RECORDER = os.path.join(os.path.dirname(os.path.realpath(__file__)), 'record.py')


class Record(unittest.TestCase):
    def setUp(self):
        self.desk = Desk(folder_for(self))
        self.addCleanup(self.desk.down)
        self.desk.up(panel='none', notify='none')
        self.trace = self.desk.path('laptop.trace')
        self.desk.start_app(PYTHON, RECORDER, self.trace)

    def lines(self):
        try:
            with open(self.trace) as f:
                return [json.loads(line) for line in f.read().split('\n')[:-1]]
        except FileNotFoundError:
            return []

    def line(self, what, **fields):
        """Waits for the newest line to have these fields, and returns it."""
        return wait_for(lambda: self.lines() and all(self.lines()[-1].get(k) == v for k, v in fields.items())
                        and self.lines()[-1], what)

    def charge(self, percent, **of_source):
        line = wait_for(lambda: [n for n in self.lines() if n.get('table') and n['table'][0]['Current Capacity'] == percent],
                        '%d %% in the trace' % percent)[-1]
        self.assertEqual({k: line['table'][0][k] for k in of_source}, of_source)
        return line

    def test_day_of_a_laptop(self):
        first = self.charge(80, **{'Power Source State': 'Battery Power', 'Time to Empty': 240, 'Is Charging': False})
        self.assertIs(first['lowPowerMode'], False)
        self.assertEqual(first['smartBattery'], {'DesignCapacity': 60000, 'AppleRawMaxCapacity': 50000, 'CycleCount': 123,
                                                 'Temperature': 3050, 'Voltage': 12000, 'Amperage': -833})
        self.desk.clock.advance(3600)
        self.desk.hardware.percent(55)
        self.assertGreaterEqual(self.charge(55)['t'], first['t'] + 3600)
        self.desk.profile('power-saver')
        self.line('Low Power Mode', do='powerState', lowPowerMode=True)
        self.desk.go_to_sleep()
        self.line('the sleep', do='willSleep')
        self.desk.wake_up(percent=54)
        self.charge(54)
        self.assertEqual([n.get('do') for n in self.lines()[-2:]], ['didWake', 'event'])
        self.desk.hardware.plug_in()
        self.line('the charger', do='event')
        wait_for(lambda: self.lines()[-1].get('smartBattery', {}).get('Amperage', 0) > 0, 'the current')
        self.desk.hardware.remove('BAT0')
        self.line('the empty bay', table=[], smartBattery=None, do='event')
        self.desk.stop_app()
        self.assertEqual(self.desk.app_log(), '')

    def test_nothing_happens(self):
        self.charge(80)
        for _ in range(3):
            self.desk.hardware.event('BAT0')
            self.desk.clock.advance(60)
        self.desk.hardware.percent(79)
        self.charge(79)
        self.assertEqual(len(self.lines()), 2)


if __name__ == '__main__':
    unittest.main()
