"""A charger whose contact comes and goes is not news at every touch."""
import unittest

from tollbeam import LOW, TIMER, ProgramTest, low


class LooseContact(ProgramTest):
    def touch_once_a_second(self, pairs):
        for _ in range(pairs):
            self.laptop.plug_in()
            self.power_becomes(OnBattery=False, State=1)
            self.laptop.unplug()
            self.power_becomes(OnBattery=True, State=2)

    def test_half_a_minute_of_it_is_one_change_and_the_end(self):
        self.start(lowPowerEnabled=False)
        self.discharge_to(15)
        before = len(self.history() or [])
        self.touch_once_a_second(15)
        self.assertEqual(self.alerts(), [low(15)])
        self.pass_time(4)
        self.assertEqual(self.alerts(), [low(15), low(15)])
        self.assertLessEqual(len(self.history() or []) - before, 4)

    def test_it_is_seen_when_it_holds(self):
        self.start(lowPowerEnabled=False)
        self.discharge_to(15)
        self.touch_once_a_second(3)
        self.laptop.plug_in()
        self.power_becomes(OnBattery=False, State=1)
        self.pass_time(4)
        self.open_popover()
        self.popover_says('Charging')
        self.pass_time(TIMER)
        self.assertEqual([title for title, _ in self.alerts()], [LOW])


if __name__ == '__main__':
    unittest.main()
