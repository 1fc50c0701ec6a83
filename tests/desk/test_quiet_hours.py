"""Quiet hours hold alerts back; what still holds at their end is told then."""
import unittest

from tollbeam import TIMER, ProgramTest, charge_limit, low

HOUR = 3600


class QuietHours(ProgramTest):
    start_time = '2030-05-06 21:50'
    quiet = {'quietEnabled': True, 'quietStart': 22 * 60, 'quietEnd': 7 * 60, 'lowPowerEnabled': False}

    def evening_with_an_alert(self):
        """Also shows that alerts come before the quiet hours."""
        self.laptop.percent(85)
        self.start(repeatReminder=False, longEnabled=False, **self.quiet)
        self.laptop.plug_in()
        self.power_becomes(State=1)
        self.assertEqual(self.alerts(), [charge_limit(85)])
        self.laptop.unplug()
        self.power_becomes(State=2)
        self.pass_time(15 * 60)

    def test_alert_waits_for_their_end(self):
        self.evening_with_an_alert()
        self.discharge_to(15)
        self.pass_time(8 * HOUR + 50 * 60)  # 06:55
        self.assertEqual(self.alerts(), [charge_limit(85)])
        self.discharge_to(14)
        self.pass_time(5 * 60 + TIMER)
        self.assertEqual(self.alerts(), [charge_limit(85), low(14)])

    def test_alert_whose_reason_has_gone_does_not_come(self):
        self.evening_with_an_alert()
        self.discharge_to(15)
        self.laptop.plug_in()
        self.power_becomes(State=1)
        self.pass_time(10 * HOUR)
        self.assertEqual(self.alerts(), [charge_limit(85)])

    def test_switching_them_off_lets_the_alert_come(self):
        self.evening_with_an_alert()
        self.discharge_to(15)
        self.assertEqual(self.alerts(), [charge_limit(85)])
        self.write_preferences(quietEnabled=False)
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [charge_limit(85), low(15)])


if __name__ == '__main__':
    unittest.main()
