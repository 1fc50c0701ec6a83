"""Daemons, notification servers and panels that die, hang, or come late: the program goes on."""
import os
import signal
import unittest

from laptop import wait_for
from tollbeam import BUNDLE, BURST, CHARGE_LIMIT, LOW, NAME, PATH, TIMER, ProgramTest, charge_limit, low

FULL = 4  # a state of upowerd's

# A call that blocks on a frozen daemon returns after D-Bus's own 25 seconds.
UNBLOCKED = 20


class Upowerd(ProgramTest):
    def kill(self):
        self.desk.kill('upowerd')
        wait_for(lambda: not self.desk.system.owner('org.freedesktop.UPower'), 'the end of upowerd')
        self.system_bus_round_trip()
        self.pass_time(TIMER)

    def test_its_restart_alerts_nothing_again(self):
        self.start(lowPowerEnabled=False)
        self.discharge_to(15)
        self.kill()
        self.desk.start('upowerd')
        self.power_becomes(Percentage=15.0)
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [low(15)])

    def test_its_restart_does_not_interrupt_being_plugged_in(self):
        self.charge_to(85)
        self.start(limitEnabled=False)
        self.plug_in()
        self.pass_time(5 * 3600)
        self.kill()
        self.desk.start('upowerd')
        self.power_becomes(Percentage=85.0)
        self.pass_time(3 * 3600)
        self.assertEqual([body for _, body in self.alerts()],
                         ['Plugged in for over 8 h at 85%. Unplug it to let the battery rest.'])

    def test_battery_is_known_while_it_is_away(self):
        self.start(lowPowerEnabled=False)
        self.kill()
        self.laptop.percent(20)
        self.wait_for_alert(LOW)
        self.laptop.plug_in()
        self.open_popover()
        self.popover_says('Charging')

    def test_alerts_come_after_its_restart(self):
        self.start(lowPowerEnabled=False)
        self.kill()
        self.desk.start('upowerd')
        self.discharge_to(20)
        self.assertEqual(self.alerts(), [low(20)])

    def test_it_comes_only_after_the_program(self):
        self.desk.kill('upowerd')
        self.laptop.percent(70)
        self.start(lowPowerEnabled=False)
        self.open_popover()
        self.popover_says('70%')
        self.desk.start('upowerd')
        self.discharge_to(20)
        self.assertEqual(self.alerts(), [low(20)])


class PowerSupplyMonitor(ProgramTest):
    """The kernel's events reach the program by way of libudev, which only the desk can make it hear."""

    def start_full_on_the_charger(self):
        self.laptop.plug_in('Full')
        wait_for(lambda: self.upower_says('State') == FULL, 'the full battery')
        self.start()
        wait_for(self.history, 'the first sample')

    def has_seen_the_charger_go(self):
        return not self.history()[-1]['a']

    def test_charger_that_goes_while_the_firmware_says_full_is_noticed_at_once(self):
        self.start_full_on_the_charger()
        self.laptop.set('AC', online=0)
        # Less than the minute after which the timer would notice it.
        wait_for(self.has_seen_the_charger_go, 'the sample without the charger', UNBLOCKED)
        self.assertEqual(self.upower_says('State'), FULL)
        self.assertFalse(self.upower_says('OnBattery'))

    def test_events_of_a_battery_are_left_to_upowerd(self):
        self.start_full_on_the_charger()
        self.laptop.set_silently('AC', online=0)
        self.laptop.event('BAT0')
        self.power_becomes(State=FULL)
        self.assertFalse(self.has_seen_the_charger_go())
        self.laptop.event('AC')
        wait_for(self.has_seen_the_charger_go, 'the sample without the charger')

    def test_an_event_is_heard_without_upowerd(self):
        self.desk.kill('upowerd')
        self.start(lowPowerEnabled=False)
        self.pass_time(BURST)
        self.laptop.percent(20, silently=True)
        self.pass_time(BURST)
        self.assertEqual(self.alerts(), [])
        self.laptop.event('BAT0')
        self.wait_for_alert(LOW)
        self.assertEqual(self.alerts(), [low(20)])

    def test_each_battery_that_comes_and_goes_is_heard_without_upowerd(self):
        self.desk.kill('upowerd')
        self.start(lowPowerEnabled=False)
        self.open_popover()
        self.laptop.remove('BAT0')
        self.popover_says('No battery found')
        self.laptop.add('BAT0', capacity=40, energy_now=20000000)
        self.popover_says('40%')


class FrozenUpowerd(ProgramTest):
    options = {'panel': 'xfce', 'notify': 'xfce'}

    def freeze(self):
        pid = self.desk.processes.pid('upowerd')
        os.kill(pid, signal.SIGSTOP)
        self.addCleanup(os.kill, pid, signal.SIGCONT)
        wait_for(lambda: self.state_of(pid) == 'T', 'upowerd to freeze')
        return pid

    @staticmethod
    def state_of(pid):
        with open('/proc/%d/stat' % pid) as f:
            return f.read().rsplit(')', 1)[1].split()[0]

    def test_click_is_answered_at_once(self):
        self.start()
        self.screen.tray_item()
        pid = self.freeze()
        # The event makes whoever follows the battery ask upowerd.
        self.laptop.percent(60)
        for _ in range(3):
            self.round_trip(seconds=UNBLOCKED)
        self.screen.press_tray('left')
        wait_for(self.popover, 'the popover', UNBLOCKED)
        os.kill(pid, signal.SIGCONT)
        self.popover_says('60%')

    def test_alerts_come_from_the_kernel_meanwhile(self):
        self.start(lowPowerEnabled=False)
        pid = self.freeze()
        self.laptop.percent(4)
        for _ in range(5):
            self.pass_time(TIMER)
        self.wait_for_alert(LOW)
        self.assertEqual(self.alerts(), [low(4)])
        self.laptop.plug_in()
        self.open_popover()
        self.popover_says('Charging')
        os.kill(pid, signal.SIGCONT)
        self.power_becomes(OnBattery=False, Percentage=4.0)
        self.assertEqual(self.alerts(), [low(4)])

    def test_program_starts_beside_it(self):
        self.freeze()
        self.start()
        self.screen.press_tray('left')
        self.popover_says('80%')

    def test_second_start_is_answered(self):
        self.start()
        self.freeze()
        self.desk.session.call(NAME, PATH, 'org.freedesktop.Application', 'Activate', '(a{sv})', {}, seconds=UNBLOCKED)


class NotificationServer(ProgramTest):
    options = {'panel': 'none', 'notify': 'xfce'}

    def restart_server(self):
        self.desk.kill('notify')
        wait_for(lambda: not self.desk.session.owner('org.freedesktop.Notifications'), 'the end of the server')
        self.desk.start('notify')

    def at_the_limit(self):
        self.charge_to(85)
        self.start()
        self.laptop.plug_in()
        return self.wait_for_alert(CHARGE_LIMIT)

    def test_alerts_come_after_its_restart(self):
        self.at_the_limit()
        self.restart_server()
        self.pass_time(290 + TIMER)
        note = self.wait_for_alert(CHARGE_LIMIT, 2)
        self.assertEqual(note['replaces'], 0)
        wait_for(self.screen.bubbles, 'the bubble')

    def test_its_restart_alerts_nothing_again(self):
        self.start(lowPowerEnabled=False)
        self.discharge_to(15)
        self.wait_for_alert(LOW)
        self.restart_server()
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [low(15)])

    def test_bubble_of_a_stranger_is_not_replaced_at_the_new_server(self):
        old = self.at_the_limit()['id']
        self.restart_server()
        stranger = self.post_stranger('a stranger')
        self.assertEqual(stranger, old, 'the new server does not count from the beginning')
        self.pass_time(290 + TIMER)
        self.assertNotEqual(self.wait_for_alert(CHARGE_LIMIT, 2)['id'], stranger)
        self.screen.find('xfce4-notifyd', 'a stranger')
        self.assertEqual(self.closed(stranger), [])

    def test_bubble_of_a_stranger_is_not_taken_down_at_the_new_server(self):
        old = self.at_the_limit()['id']
        self.restart_server()
        self.assertEqual(self.post_stranger('a stranger'), old)
        self.unplug()
        self.alerts()
        self.assertEqual([n for n in self.desk.notes('close-call') if n['id'] == old], [])
        self.screen.find('xfce4-notifyd', 'a stranger')

    def test_button_of_a_strangers_bubble_does_not_snooze(self):
        number = self.at_the_limit()['id']
        self.restart_server()
        stranger = self._ask('org.freedesktop.Notifications', '/org/freedesktop/Notifications',
                             'org.freedesktop.Notifications', 'Notify', '(susssasa{sv}i)', 'stranger', 0, '', 'hello', '',
                             ['SNOOZE', 'Doze'], {}, -1)[0]
        self.assertEqual(stranger, number)
        self.screen.press_bubble('Doze')
        self.desk.wait_for_note('action', id=stranger)
        self.round_trip()
        self.assertNotIn('snoozeUntil', self.preferences())

    def test_alert_that_is_due_without_a_server_waits_for_one(self):
        self.desk.kill('notify')
        self.start(lowPowerEnabled=False)
        self.discharge_to(20)
        self.assertEqual(self.alerts(), [])
        self.desk.start('notify')
        self.wait_for_alert(LOW)
        self.assertEqual(self.alerts(), [low(20)])

    def test_alert_that_is_over_before_a_server_comes_is_not_shown(self):
        self.desk.kill('notify')
        self.start(lowPowerEnabled=False)
        self.discharge_to(20)
        self.assertEqual(self.alerts(), [])
        self.plug_in()
        self.desk.start('notify')
        self.charge_to(80)
        self.assertEqual(self.alerts(), [charge_limit(80)])

    def test_newest_reminder_alone_waits_for_a_server(self):
        self.charge_to(80)
        self.desk.kill('notify')
        self.start()
        self.plug_in()
        self.pass_time(290 + TIMER)
        self.charge_to(82)
        self.pass_time(290 + TIMER)
        self.desk.start('notify')
        self.wait_for_alert(CHARGE_LIMIT)
        self.assertEqual(self.alerts(), [charge_limit(82)])


class SystemBus(ProgramTest):
    def restart(self):
        self.desk.lose_bus('system')
        self.desk.restore_bus('system')
        # The program tries again after a pause.
        self.desk.clock.advance(TIMER)
        wait_for(lambda: self.desk.system.names_of(self.desk.app_pid()), 'the program on the bus')
        self.system_bus_round_trip()

    def test_kernels_charge_is_shown_at_once_without_it(self):
        self.start()
        self.laptop.percent(60, silently=True)
        self.open_popover()
        self.popover_says('80%')
        self.desk.lose_bus('system')
        self.popover_says('60%')

    def test_alerts_come_without_it(self):
        self.start(lowPowerEnabled=False)
        self.desk.lose_bus('system')
        self.laptop.percent(20)
        self.wait_for_alert(LOW)
        self.assertEqual(self.alerts(), [low(20)])

    def test_daemons_charge_is_back_after_its_restart(self):
        self.start(lowPowerEnabled=False)
        self.restart()
        self.discharge_to(20)
        self.assertEqual(self.alerts(), [low(20)])

    def test_its_restart_alerts_nothing_again(self):
        self.start(lowPowerEnabled=False)
        self.discharge_to(15)
        self.restart()
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [low(15)])

    def test_sleep_waits_for_the_program_after_its_restart(self):
        self.start()
        self.restart()
        wait_for(lambda: self.desk.inhibitors('Tollbeam'), 'the lock')
        self.desk.go_to_sleep()
        self.assertEqual(self.desk.inhibitors('Tollbeam'), [])

    def test_low_power_mode_is_followed_after_its_restart(self):
        self.start(lowEnabled=False)
        self.restart()
        self.desk.profile('power-saver')
        self.system_bus_round_trip()
        self.discharge_to(25)
        self.assertEqual(self.alerts(), [])


class SessionBus(ProgramTest):
    options = {'panel': 'lxqt', 'notify': 'xfce', 'wm': 'openbox'}

    def restore(self):
        self.desk.restore_bus('session')
        self.desk.clock.advance(TIMER)
        self.desk.session.wait_name(NAME)

    def test_item_is_back_after_its_restart(self):
        self.start()
        self.screen.tray_item()
        self.desk.lose_bus('session')
        self.restore()
        self.screen.tray_item()
        self.assertIn('Open Tollbeam', self.screen.menu_labels())

    def test_alert_that_is_due_without_it_is_shown_on_the_next(self):
        self.start(lowPowerEnabled=False)
        self.desk.lose_bus('session')
        self.laptop.percent(20)
        wait_for(lambda: self.upower_says('Percentage') == 20, 'upowerd')
        self.desk.clock.advance(TIMER)
        self.restore()
        self.wait_for_alert(LOW)
        self.assertEqual(self.alerts(), [low(20)])
        wait_for(self.screen.bubbles, 'the bubble')

    def test_second_start_finds_the_first_after_its_restart(self):
        self.start()
        self.desk.lose_bus('session')
        first = self.desk.app_pid()
        self.restore()
        self.assertFalse(self.screen.windows('"Tollbeam": \\("tollbeam"'))
        self.assertEqual(self.desk.run_app(BUNDLE), 0)
        # Not by what it says: the list of accessible programs has gone with the bus.
        wait_for(lambda: self.screen.windows('"Tollbeam": \\("tollbeam"'), 'the popover')
        self.assertEqual(self.desk.app_pid(), first)


class PowerProfiles(ProgramTest):
    def test_low_power_mode_outlives_its_daemon(self):
        self.desk.profile('power-saver')
        self.start(lowEnabled=False)
        self.desk.kill('profiles')
        wait_for(lambda: not self.desk.system.owner('net.hadess.PowerProfiles'), 'the end of the daemon')
        self.discharge_to(25)
        self.assertEqual(self.alerts(), [])
        self.desk.restart('profiles')
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [])


class XfcePanel(ProgramTest):
    options = {'panel': 'xfce', 'notify': 'none'}

    def clicks_open_the_popover(self):
        self.screen.press_tray('left')
        wait_for(self.popover, 'the popover')

    def test_item_is_back_after_a_restart(self):
        self.start()
        self.screen.tray_item()
        for _ in range(2):
            self.desk.kill('panel')
            self.desk.start('panel')
            self.clicks_open_the_popover()
            self.screen.keys('Escape')
            self.popover_closes()
        # On xfce the item moves from the bus into the tray as soon as there is one.
        wait_for(lambda: len(self.screen.tray()) == 1, 'the item to stand there once')

    def test_item_appears_when_the_panel_comes_late(self):
        self.desk.kill('panel')
        self.start()
        self.desk.start('panel')
        self.clicks_open_the_popover()

    def test_item_shows_what_happened_without_a_panel(self):
        self.start()
        with_text = self.screen.tray_item()[2]
        self.desk.kill('panel')
        self.laptop.remove('BAT0')
        self.power_becomes(IsPresent=False)
        self.desk.start('panel')
        self.assertLess(self.screen.tray_item()[2], with_text)


class LxqtPanel(ProgramTest):
    options = {'panel': 'lxqt', 'notify': 'none', 'wm': 'openbox'}

    clicks_open_the_popover = XfcePanel.clicks_open_the_popover
    test_item_is_back_after_a_restart = XfcePanel.test_item_is_back_after_a_restart
    test_item_appears_when_the_panel_comes_late = XfcePanel.test_item_appears_when_the_panel_comes_late


if __name__ == '__main__':
    unittest.main()
