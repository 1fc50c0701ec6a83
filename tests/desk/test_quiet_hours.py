"""Quiet hours hold alerts back; what still holds at their end is told then."""
import unittest

from laptop import wait_for
from tollbeam import LOW, TIMER, ProgramTest, charge_limit, low

HOUR = 3600


class QuietHours(ProgramTest):
    start_time = '2030-05-06 21:50'
    quiet = {'quietEnabled': True, 'quietStart': 22 * 60, 'quietEnd': 7 * 60, 'lowPowerEnabled': False}

    def evening_with_an_alert(self):
        """Also shows that alerts come before the quiet hours."""
        self.charge_to(85)
        self.start(repeatReminder=False, longEnabled=False, **self.quiet)
        self.plug_in()
        self.assertEqual(self.alerts(), [charge_limit(85)])
        self.unplug()
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
        self.plug_in()
        self.pass_time(10 * HOUR)
        self.assertEqual(self.alerts(), [charge_limit(85)])

    def test_switching_them_off_lets_the_alert_come(self):
        self.evening_with_an_alert()
        self.discharge_to(15)
        self.assertEqual(self.alerts(), [charge_limit(85)])
        self.write_preferences(quietEnabled=False)
        # The next look at the battery after the file was noticed.
        wait_for(lambda: self.pass_time(TIMER) or self.posted(LOW), 'the alert')
        self.assertEqual(self.alerts(), [charge_limit(85), low(15)])


if __name__ == '__main__':
    unittest.main()
