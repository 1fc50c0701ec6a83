"""Firmware that wakes up after the program: what it then tells held already, and is not news."""
import unittest

from laptop import wait_for
from tollbeam import BURST, NAME, TIMER, ProgramTest, low


class GlitchAtLaunch(ProgramTest):
    def start_in_a_glitch(self):
        self.desk.clock.start_at(self.start_time)
        # However busy the machine: no more time passes than each test lets pass.
        self.desk.clock.hold()
        self.write_preferences(lowPowerEnabled=False)
        self.start_only()
        wait_for(lambda: self.desk.session.owner(NAME), 'the program')
        self.system_bus_round_trip()
        # By now the patience with a daemon that says nothing would be over.
        self.pass_time(3)
        self.assertFalse(self.follows_the_item_list(), 'the launch did not wait')

    def let_the_battery_glitch(self):
        self.laptop.set('BAT0', status='Unknown', capacity=0, energy_now=0)
        self.power_becomes(Percentage=0.0)

    def wake_the_battery(self, percent):
        self.laptop.set('BAT0', status='Discharging', capacity=percent, energy_now=percent * 500000)

    def launches_before_its_limit(self):
        """Ten seconds. Before the first reading counts, one burst settles after another."""
        for _ in range(3):
            self.pass_time(BURST)
        self.wait_until_launched()

    def low_battery_is_not_news(self):
        self.desk.clock.release()
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [])
        self.open_popover()
        self.popover_says('15%')

    def test_low_battery_that_is_told_late_is_not_told_to_the_user(self):
        self.let_the_battery_glitch()
        self.start_in_a_glitch()
        self.wake_the_battery(15)
        self.power_becomes(Percentage=15.0, State=2)
        self.launches_before_its_limit()
        self.low_battery_is_not_news()
        self.plug_in()
        self.unplug()
        self.assertEqual(self.alerts(), [low(15)])

    def test_kernels_first_word_ends_the_wait_when_there_is_no_daemon(self):
        self.desk.kill('upowerd')
        self.laptop.set('BAT0', status='Unknown', capacity=0, energy_now=0)
        self.start_in_a_glitch()
        self.wake_the_battery(15)
        # What the kernel has sent is read.
        self.round_trip()
        self.round_trip()
        self.launches_before_its_limit()
        self.low_battery_is_not_news()

    def test_battery_that_does_not_wake_up_does_not_stop_the_launch(self):
        self.let_the_battery_glitch()
        self.start_in_a_glitch()
        self.pass_time(8)
        self.wait_until_launched()
        self.desk.clock.release()
        self.pass_time(TIMER)
        self.open_popover()
        self.popover_says('No battery found')
        self.assertEqual(self.alerts(), [])
        self.assertIn(self.history(), (None, []))
        self.wake_the_battery(78)
        self.power_becomes(Percentage=78.0)
        self.popover_says('78%')
        self.discharge_to(20)
        self.assertEqual(self.alerts(), [low(20)])


if __name__ == '__main__':
    unittest.main()
