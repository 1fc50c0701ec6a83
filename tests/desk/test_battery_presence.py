"""Batteries go and come, and there may be two of them."""
import unittest

from laptop import wait_for
from tollbeam import TIMER, ProgramTest, low


# What tells how much a pack holds.
AMOUNTS = ('energy_now', 'energy_full', 'energy_full_design', 'power_now', 'cycle_count', 'temp')


class OneBattery(ProgramTest):
    options = {'panel': 'xfce', 'notify': 'xfce'}

    def test_battery_taken_out_and_put_back(self):
        self.start(lowPowerEnabled=False)
        self.screen.press_tray('left')
        self.popover_says('80%')
        self.laptop.remove('BAT0')
        self.popover_says('No battery found')
        self.assertNotIn('0%', ' '.join(self.popover()).split())
        self.pass_time(TIMER)
        self.laptop.add('BAT0')
        self.popover_says('On battery')
        self.popover_says('80%')
        self.assertEqual(self.alerts(), [])
        self.discharge_to(20)
        self.assertEqual(self.alerts(), [low(20)])

    def test_bay_that_says_it_is_empty(self):
        self.start(lowPowerEnabled=False)
        self.screen.press_tray('left')
        self.popover_says('80%')
        self.laptop.set('BAT0', present=0, capacity=0, energy_now=0, status='Unknown')
        self.popover_says('No battery found')
        self.pass_time(TIMER)
        self.laptop.set('BAT0', present=1, capacity=80, energy_now=40000000, status='Discharging')
        self.popover_says('80%')
        self.assertEqual(self.alerts(), [])

    def test_taking_it_out_begins_a_new_episode(self):
        self.start(lowPowerEnabled=False)
        self.discharge_to(15)
        self.assertEqual(self.alerts(), [low(15)])
        self.laptop.remove('BAT0')
        self.power_becomes(IsPresent=False)
        self.laptop.add('BAT0', capacity=15, energy_now=7500000)
        self.power_becomes(IsPresent=True, Percentage=15.0)
        self.assertEqual(self.alerts(), [low(15), low(15)])

    def test_machine_without_a_battery(self):
        self.laptop.remove('BAT0')
        self.start()
        self.screen.press_tray('left')
        self.popover_says('No battery found')
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [])
        self.assertIn(self.history(), (None, []))


class TwoBatteries(ProgramTest):
    options = {'panel': 'xfce', 'notify': 'xfce'}

    def setUp(self):
        super().setUp()
        self.laptop.add('BAT1', energy_full=30000000, energy_full_design=60000000, energy_now=24000000, cycle_count=7)
        wait_for(lambda: self.desk.upower('Energy') == 64, 'the second battery')

    def test_they_are_one_charge(self):
        self.start()
        self.laptop.percent(20, 'BAT0')
        self.laptop.percent(100, 'BAT1')
        self.screen.press_tray('left')
        self.popover_says('50%')  # 10 and 30 of 80 Wh
        self.popover_says('67%')  # health: 80 of 120 Wh
        self.popover_says('123')  # the cycles of the older one

    def test_one_empty_pack_alone_is_no_alert(self):
        self.start(lowPowerEnabled=False, healthEnabled=False)
        self.laptop.percent(5, 'BAT0')
        self.power_becomes(Percentage=33.125)
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [])
        self.laptop.percent(40, 'BAT1')
        self.power_becomes(Percentage=18.125)
        self.assertEqual(self.alerts(), [low(18)])

    def test_dead_bay_and_mouse_are_no_packs_without_upowerd(self):
        self.laptop.remove('BAT1')
        self.start(lowPowerEnabled=False)
        self.discharge_to(38)
        for name, attributes in (('BAT1', dict(capacity=0, status='Unknown')),
                                 ('hidpp_battery_0', dict(capacity=0, model_name='M705'))):
            self.laptop.add(name, **dict(attributes, **{a: None for a in AMOUNTS}))
        self.desk.kill('upowerd')
        wait_for(lambda: not self.desk.system.owner('org.freedesktop.UPower'), 'the end of upowerd')
        self.system_bus_round_trip()
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [])
        self.screen.press_tray('left')
        self.popover_says('38%')
        self.popover_says('83%')  # health: 50 of 60 Wh

    def test_one_pack_that_is_taken_out_is_no_loss_of_the_battery(self):
        self.start(lowPowerEnabled=False, healthEnabled=False)
        self.screen.press_tray('left')
        self.popover_says('80%')
        self.laptop.percent(50, 'BAT0')
        self.laptop.remove('BAT1')
        self.popover_says('50%')
        self.assertEqual(self.alerts(), [])


if __name__ == '__main__':
    unittest.main()
