"""The five reminders, from the battery's files to the bubble on the screen."""
import unittest

from laptop import wait_for
from tollbeam import (CHARGE_LIMIT, HEALTH, LOW, LOW_POWER, SNOOZE, STEADY, TIMER, TOO_LONG, ProgramTest, charge_limit, low,
                      low_power)

HOUR = 3600


class Alerts(ProgramTest):
    def test_low_battery_and_low_power_mode_on_the_way_down(self):
        self.start()
        self.discharge_to(30)
        self.assertEqual(self.alerts(), [])
        self.discharge_to(29)
        self.assertEqual(self.alerts(), [low_power(29)])
        self.discharge_to(21)
        self.assertEqual(self.alerts(), [low_power(29)])
        self.discharge_to(20)
        self.discharge_to(12)
        self.assertEqual(self.alerts(), [low_power(29), low(20)])

    def test_charge_limit(self):
        self.charge_to(79)
        self.plug_in()
        self.start()
        self.assertEqual(self.alerts(), [])
        self.charge_to(80)
        self.assertEqual(self.alerts(), [charge_limit(80)])

    def test_charge_limit_of_the_user(self):
        self.charge_to(58)
        self.plug_in()
        self.start(limit=60)
        self.charge_to(59)
        self.assertEqual(self.alerts(), [])
        self.charge_to(61)
        self.assertEqual(self.alerts(), [charge_limit(61)])

    def test_plugged_in_but_held_by_the_firmware_is_plugged_in(self):
        self.charge_to(85)
        self.start()
        self.laptop.plug_in('Not charging')
        self.wait_for_alert(CHARGE_LIMIT)

    def test_bubble_is_on_the_screen_with_its_button(self):
        self.start()
        self.laptop.percent(20)
        note = self.wait_for_alert(LOW)
        self.assertEqual(note['hints']['desktop-entry'], 'org.tollbeam.Tollbeam')
        self.assertIn(SNOOZE, note['actions'])
        for text in ('Low battery', 'Battery is at 20%. Plug in soon.', SNOOZE):
            self.screen.find('xfce4-notifyd', text)

    def test_low_power_mode_that_is_on_needs_no_suggestion(self):
        self.desk.profile('power-saver')
        self.start(lowEnabled=False)
        self.discharge_to(25)
        self.assertEqual(self.alerts(), [])
        self.desk.profile('balanced')
        self.wait_for_alert(LOW_POWER)
        self.assertEqual(self.alerts(), [low_power(25)])

    def test_low_power_mode_switched_on_takes_the_suggestion_back(self):
        self.start()
        self.laptop.percent(29)
        note = self.wait_for_alert(LOW_POWER)
        self.desk.profile('power-saver')
        self.desk.wait_for_note('closed', id=note['id'])
        self.desk.profile('balanced')
        self.wait_for_alert(LOW_POWER, 2)

    def test_plugged_in_for_too_long(self):
        self.charge_to(85)
        self.start(limitEnabled=False)
        self.plug_in()
        self.pass_time(8 * HOUR - 30)
        self.assertEqual(self.alerts(), [])
        self.pass_time(30 + TIMER)
        body = 'Plugged in for over 8 h at 85%. Unplug it to let the battery rest.'
        self.assertEqual(self.alerts(), [(TOO_LONG, body)])
        self.pass_time(3 * HOUR)
        self.assertEqual(self.alerts(), [(TOO_LONG, body)])

    def test_plugged_in_for_too_long_counts_whole_hours(self):
        self.charge_to(85)
        self.start(limitEnabled=False, longHours=2)
        self.plug_in('Not charging')
        self.pass_time(4 * HOUR - TIMER)
        self.assertEqual(self.alerts(),
                         [(TOO_LONG, 'Plugged in for over 3 h at 85%. Unplug it to let the battery rest.')])

    def test_worn_battery(self):
        self.start()
        self.laptop.set('BAT0', energy_full=47700000)  # 79.5 % of its design
        self.pass_time(TIMER)
        body = 'Battery health has fallen to 80% of its original capacity.'
        self.assertEqual(self.alerts(), [(HEALTH, body)])
        self.assertIs(self.preferences()['healthAlertSent'], True)
        self.pass_time(TIMER)
        self.stop()
        self.start()
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [(HEALTH, body)])

    def test_battery_as_good_as_new_is_worn_anew(self):
        self.start()
        for energy_full in (47700000, 49200000, 46000000):
            self.laptop.set('BAT0', energy_full=energy_full)
            self.pass_time(TIMER)
            self.alerts()
        self.assertEqual([body for _, body in self.alerts()], [
            'Battery health has fallen to %d%% of its original capacity.' % n for n in (80, 77)])

    def test_switched_off_alerts_do_not_come(self):
        self.start(lowEnabled=False, lowPowerEnabled=False, limitEnabled=False, longEnabled=False, healthEnabled=False)
        self.discharge_to(10)
        self.laptop.set('BAT0', energy_full=40000000)
        self.laptop.plug_in()
        self.charge_to(100)
        self.pass_time(9 * HOUR)
        self.assertEqual(self.alerts(), [])

    def test_bubbles_go_when_their_reason_has_gone(self):
        self.start()
        self.laptop.percent(15)
        notes = [self.wait_for_alert(LOW), self.wait_for_alert(LOW_POWER)]
        self.laptop.plug_in()
        for note in notes:
            self.desk.wait_for_note('closed', id=note['id'])
        wait_for(lambda: not self.screen.bubbles(), 'an empty screen')

    def test_each_episode_alerts_once(self):
        self.start(lowPowerEnabled=False)
        for percent in (20, 21, 19, 22, 20):
            self.discharge_to(percent)
            self.alerts()  # one whose reason has gone before it is posted would not come
        # Above the threshold the episode is over: 20, then 19 and 20 again.
        self.assertEqual(self.alerts(), [low(20), low(19), low(20)])

    def test_flapping_charger_contact_makes_no_storm(self):
        self.start(lowPowerEnabled=False)
        self.laptop.percent(15)
        self.wait_for_alert(LOW)
        for _ in range(40):
            for change in (self.laptop.plug_in, self.laptop.unplug):
                change()
                self.power_becomes()
        self.pass_time(STEADY)
        self.power_becomes(OnBattery=True, State=2)
        # One when it is low, and one when it is again after the contact's first touch.
        self.assertLessEqual(len(self.alerts()), 2)
        self.laptop.plug_in()
        self.open_popover()
        self.popover_says('Charging')

    def test_charger_that_is_out_again_at_once_is_no_charger(self):
        self.start()
        self.laptop.plug_in()
        wait_for(lambda: self.upower_says('State') == 1, 'the charger')
        self.system_bus_round_trip()
        # The popover reads the battery as it opens, before the change has settled.
        self.activate()
        self.laptop.unplug()
        self.power_becomes(OnBattery=True, State=2)
        self.pass_time(STEADY)
        self.popover_says('On battery')

    def test_charger_that_is_out_is_no_power_whatever_the_firmware_says(self):
        self.charge_to(85)
        self.start()
        for status, state in (('Not charging', 5), ('Full', 4)):
            self.laptop.status(status)
            self.power_becomes(OnBattery=False, State=state)
            self.pass_time(TIMER)
            self.assertEqual(self.alerts(), [])


if __name__ == '__main__':
    unittest.main()
