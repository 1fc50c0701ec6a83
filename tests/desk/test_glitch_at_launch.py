"""Firmware that wakes up after the program: what it then tells held already, and is not news."""
import unittest

from laptop import wait_for
from tollbeam import TIMER, ProgramTest, low


class GlitchAtLaunch(ProgramTest):
    def start_in_a_glitch(self):
        self.desk.clock.start_at(self.start_time)
        self.laptop.set('BAT0', status='Unknown', capacity=0, energy_now=0)
        self.power_becomes(Percentage=0.0)
        self.write_preferences(lowPowerEnabled=False)
        self.start_only()
        # It has asked, and its patience with a daemon that says nothing would be over by now.
        wait_for(lambda: self.desk.system.names_of(self.desk.app_pid()), 'its connection')
        self.pass_time_until_asked()

    def pass_time_until_asked(self):
        wait_for(lambda: self.desk.session.owner('org.tollbeam.Tollbeam'), 'the program')
        self.system_bus_round_trip()
        self.pass_time(3)
        self.assertFalse(self.follows_the_item_list(), 'the launch did not wait')

    def test_low_battery_that_is_told_late_is_not_told_to_the_user(self):
        self.start_in_a_glitch()
        self.laptop.set('BAT0', status='Discharging', capacity=15, energy_now=7500000)
        self.power_becomes(Percentage=15.0, State=2)
        self.wait_until_launched()
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [])
        self.open_popover()
        self.popover_says('15%')
        self.plug_in()
        self.unplug()
        self.assertEqual(self.alerts(), [low(15)])

    def test_battery_that_never_wakes_up_does_not_stop_the_launch(self):
        self.start_in_a_glitch()
        self.pass_time(8)
        self.wait_until_launched()
        self.open_popover()
        self.popover_says('No battery found')
        self.assertEqual(self.alerts(), [])


if __name__ == '__main__':
    unittest.main()
