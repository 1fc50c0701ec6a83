"""The settings window, worked as a screen reader's user does: every setting reaches the preferences
file, what is not a preference reaches the desktop, and every question is a window of its own."""
import datetime
import os
import shutil
import unittest

from laptop import wait_for
from tollbeam import APP, ProgramTest

SWITCHES = {
    'limitEnabled': 'Charge limit',
    'repeatReminder': 'Repeat every 5 minutes, up to 3 times',
    'lowEnabled': 'Low battery',
    'lowPowerEnabled': 'Suggest Low Power Mode',
    'longEnabled': 'Plugged in too long',
    'healthEnabled': 'Battery health below 80% (once)',
    'quietEnabled': 'Hold alerts during quiet hours',
    'showPercent': 'Show percentage in the menu bar',
    'showTime': 'Show time remaining',
}
STEPPERS = {
    'limit': ('Alert when charging reaches %d%%', 80),
    'low': ('Alert on battery at %d%% or less', 20),
    'lowPowerAt': ('When on battery below %d%%', 30),
    'longHours': ('Alert after %d h plugged in above the charge limit', 8),
}
SOUNDS = {
    'limitSound': ('Charge limit', 'Glass', 'Glass'),
    'lowSound': ('Low battery', 'Submarine', 'Submarine'),
    'lowPowerSound': ('Suggest Low Power Mode', 'None', 'none'),
    'longSound': ('Plugged in too long', 'Tink', 'Tink'),
    'healthSound': ('Battery health below 80% (once)', 'Pop', 'Pop'),
}


class SettingsTest(ProgramTest):
    options = {'panel': 'none', 'notify': 'none'}

    def open_settings(self):
        self.open_popover()
        self.screen.act(APP, 'Settings', 'push button')
        return wait_for(lambda: self.window('Tollbeam Settings'), 'the settings')

    def widget(self, name, role, description=None):
        for w in self.screen.widgets(APP):
            if (w['name'], w['role']) == (name, role) and description in (None, w['description']) and w['showing']:
                return w
        return None

    def is_on(self, label):
        return self.widget(label, 'check box')['checked']

    def toggle(self, label):
        self.screen.act(APP, label, 'check box')

    def stored_becomes(self, **expected):
        for key, value in expected.items():
            wait_for(lambda: self.preferences().get(key) == value and type(self.preferences()[key]) is type(value),
                     '%s = %r in the preferences' % (key, value))

    def choose_sound(self, alert, name):
        self.screen.act(APP, 'Sound', 'combo box', 'ShowMenu', alert)
        self.screen.act(APP, name, 'list item')
        wait_for(lambda: not self.widget(name, 'list item'), 'the list to close')

    def dialog(self, title):
        """What an alert says and offers; empty while it is not on the screen."""
        return self.window(title)


class Preferences(SettingsTest):
    def test_every_switch(self):
        self.start()
        self.open_settings()
        for key, label in SWITCHES.items():
            before = self.is_on(label)
            self.toggle(label)
            self.stored_becomes(**{key: not before})
            self.assertEqual(self.is_on(label), not before)
            self.toggle(label)
            self.stored_becomes(**{key: before})
        self.assertEqual(set(self.preferences()), set(SWITCHES))

    def test_every_number(self):
        self.start()
        self.open_settings()
        for key, (label, number) in STEPPERS.items():
            self.screen.act(APP, label % number, 'spin button', 'Increase')
            self.stored_becomes(**{key: number + 1})
            self.screen.act(APP, label % (number + 1), 'spin button', 'Decrease')
            self.screen.act(APP, label % number, 'spin button', 'Decrease')
            self.stored_becomes(**{key: number - 1})
            self.assertEqual(self.widget(label % (number - 1), 'spin button')['value'], number - 1)
        self.assertEqual(set(self.preferences()), set(STEPPERS))

    def test_every_sound(self):
        self.start()
        self.open_settings()
        for key, (alert, name, value) in SOUNDS.items():
            self.choose_sound(alert, name)
            self.stored_becomes(**{key: value})
            self.assertEqual(self.widget('Sound', 'combo box', alert)['text'], name)
        self.choose_sound('Low battery', 'Default')
        self.stored_becomes(lowSound='default')
        self.assertEqual(set(self.preferences()), set(SOUNDS))

    def test_quiet_hours(self):
        self.start(quietEnabled=True)
        self.open_settings()
        self.assertEqual(self.widget('From', 'spin button')['text'], '22:00')
        self.screen.write(APP, 'From', 'spin button', '07:30')
        self.stored_becomes(quietStart=450)
        self.screen.act(APP, 'Until', 'spin button', 'Increase')
        self.stored_becomes(quietEnd=480)
        self.assertEqual(self.widget('Until', 'spin button')['text'], '08:00')

    def test_showing_stores_nothing(self):
        self.start()
        self.open_settings()
        self.round_trip()
        self.assertEqual(self.preferences(), {})

    def test_changes_by_another_program_are_shown(self):
        self.start()
        self.open_settings()
        self.write_preferences(limit=120, lowEnabled=False, longSound='Doorbell', quietStart=61)
        wait_for(lambda: self.widget('Alert when charging reaches 120%', 'spin button'), 'the number')
        wait_for(lambda: not self.is_on('Low battery'), 'the switch')
        self.assertFalse(self.widget('Alert on battery at 20% or less', 'spin button')['enabled'])
        self.assertEqual(self.widget('Sound', 'combo box', 'Plugged in too long')['text'], 'Doorbell')
        self.assertEqual(self.widget('From', 'spin button')['text'], '01:01')
        self.screen.act(APP, 'Alert when charging reaches 120%', 'spin button', 'Decrease')
        self.stored_becomes(limit=100, longSound='Doorbell', quietStart=61)

    def test_wheel_only_scrolls(self):
        self.start()
        self.open_settings()
        x, y, width, height = self.screen.find(APP, 'Alert when charging reaches 80%', 'spin button')
        self.desk.run('xdotool', 'mousemove', str(x + width // 2), str(y + height // 2))
        for _ in range(8):
            self.desk.run('xdotool', 'click', '5')
        wait_for(lambda: self.screen.find(APP, 'Alert when charging reaches 80%', 'spin button')[1] < y - 100,
                 'the form to scroll')
        self.round_trip()
        self.assertEqual(self.preferences(), {})


class Heard(SettingsTest):
    """Beside a screen reader, which hears of every key: what the program prints then fails the test, too."""
    options = {'panel': 'none', 'notify': 'none', 'listener': True}

    def test_keyboard_alone(self):
        self.start()
        self.open_settings()
        self.desk.run('xdotool', 'search', '--name', '^Tollbeam Settings$', 'windowactivate', '--sync')
        self.screen.keys('Tab')
        wait_for(lambda: self.widget('Charge limit', 'check box')['focused'], 'the keyboard on the first switch')
        self.screen.keys('Tab', 'Up', 'Up', 'Tab', 'space')
        self.stored_becomes(limit=82, repeatReminder=False)
        self.screen.keys('Tab', 'space')
        wait_for(lambda: self.widget('Default', 'list item'), 'the list of sounds')
        self.screen.keys('s', 'Return')
        self.stored_becomes(limitSound='Submarine')
        for name in ('Charge limit', 'Alert when charging reaches 82%', 'Sound', 'Submarine'):
            wait_for(lambda: self.desk.heard(source=name), 'something to be heard of ' + name)
        # The form follows the keyboard down to its end.
        self.screen.keys('shift+Tab')
        self.screen.keys('shift+Tab')
        self.screen.keys('shift+Tab')
        self.screen.keys('shift+Tab')
        wait_for(lambda: self.widget('Reset History…', 'push button')['focused'], 'the keyboard on the last button')
        window = self.screen.windows('"Tollbeam Settings"')[0][1]
        box = self.widget('Reset History…', 'push button')['box']
        self.assertLess(box[1] + box[3], window[1] + window[3])

    def test_time_by_keyboard(self):
        self.start(quietEnabled=True)
        self.open_settings()
        self.desk.run('xdotool', 'search', '--name', '^Tollbeam Settings$', 'windowactivate', '--sync')
        self.screen.keys(*['Tab'] * 17)
        wait_for(lambda: self.widget('From', 'spin button')['focused'], 'the keyboard on the time')
        for keys, minutes in ((['Up'], 23 * 60), (['Down'], 22 * 60), (['Prior'], 8 * 60), (['Next'], 22 * 60),
                              (['Right', 'Up'], 22 * 60 + 1), (['Left', '0', '7', '3', '0', 'Return'], 7 * 60 + 30)):
            self.screen.keys(*keys)
            self.stored_becomes(quietStart=minutes)
            self.assertEqual(self.widget('From', 'spin button')['value'], minutes)
            wait_for(lambda: self.desk.heard(ev='object:property-change:accessible-value', source='From', value=minutes),
                     'the new time to be told')
        self.assertEqual(self.widget('From', 'spin button')['text'], '07:30')


class WhenClocksChange(SettingsTest):
    start_time = '2024-03-31 10:00'  # in Berlin the clock has jumped from 2:00 to 3:00

    def test_time_that_today_has_not(self):
        self.desk.clock.start_at(self.start_time)
        self.write_preferences(quietEnabled=True, quietStart=150)
        self.start_only(TZ='Europe/Berlin')
        self.wait_until_launched()
        self.open_settings()
        self.assertEqual(self.widget('From', 'spin button')['text'], '03:00')
        self.desk.run('xdotool', 'search', '--name', '^Tollbeam Settings$', 'windowactivate', '--sync')
        self.screen.keys(*['Tab'] * 17)
        wait_for(lambda: self.widget('From', 'spin button')['focused'], 'the keyboard on the time')
        self.assertEqual(self.preferences()['quietStart'], 150)
        self.screen.keys('Down')
        self.stored_becomes(quietStart=60)
        self.screen.type('0230')
        wait_for(lambda: self.widget('From', 'spin button')['text'] == '02:30', 'what is typed')
        self.stored_becomes(quietStart=180)
        self.screen.keys('Tab')
        wait_for(lambda: self.widget('From', 'spin button')['text'] == '03:00', 'the time that there is')
        self.assertEqual(self.preferences()['quietStart'], 180)


class LaunchAtLogin(SettingsTest):
    def entry(self):
        return self.desk.path('home', '.config', 'autostart', 'org.tollbeam.Tollbeam.desktop')

    def test_it_comes_and_goes(self):
        self.start()
        self.open_settings()
        self.assertFalse(self.is_on('Launch at Login'))
        self.toggle('Launch at Login')
        wait_for(lambda: os.path.exists(self.entry()), 'the autostart entry')
        self.assertTrue(self.is_on('Launch at Login'))
        self.toggle('Launch at Login')
        wait_for(lambda: not self.is_on('Launch at Login'), 'the switch')
        self.assertFalse(os.path.exists(self.entry()))
        self.assertEqual(self.preferences(), {})

    def test_failure_is_told_and_the_switch_tells_the_truth(self):
        # A file where the folder should be stops every user, root too.
        os.makedirs(os.path.dirname(os.path.dirname(self.entry())), exist_ok=True)
        with open(os.path.dirname(self.entry()), 'w'):
            pass
        self.start()
        self.open_settings()
        self.toggle('Launch at Login')
        said = wait_for(lambda: [t for t in self.window('Tollbeam Settings').get('label', []) if 'Could not' in t],
                        'the reason')
        self.assertTrue(said[0].startswith('Could not change Launch at Login: '), said)
        self.assertFalse(self.is_on('Launch at Login'))
        os.remove(os.path.dirname(self.entry()))
        self.toggle('Launch at Login')
        wait_for(lambda: self.is_on('Launch at Login'), 'the switch')
        self.assertFalse([t for t in self.window('Tollbeam Settings')['label'] if 'Could not' in t])


@unittest.skipUnless(shutil.which('pulseaudio'), 'PulseAudio is not installed, as beside PipeWire it cannot be')
class Previews(SettingsTest):
    options = {'panel': 'none', 'notify': 'none', 'sound': True}
    names = ['Glass', 'Ping', 'Hero', 'Submarine', 'Funk', 'Basso', 'Blow', 'Bottle', 'Frog', 'Morse', 'Pop', 'Purr',
             'Sosumi', 'Tink']

    def test_each_sound_is_heard_once_when_chosen(self):
        self.start()
        self.open_settings()
        heard = []
        for name in self.names:
            self.choose_sound('Low battery', name)
            self.stored_becomes(lowSound=name)
            heard.append(name)
            self.assertEqual(self.sounds_played(), heard)

    def test_default_and_none_are_silent(self):
        self.start(lowSound='Pop')
        self.open_settings()
        for name, value in (('None', 'none'), ('Default', 'default')):
            self.choose_sound('Low battery', name)
            self.stored_becomes(lowSound=value)
        self.assertEqual(self.sounds_played(), [])

    def test_what_was_chosen_already_is_silent(self):
        self.start(lowSound='Pop')
        self.open_settings()
        self.choose_sound('Low battery', 'Pop')
        self.assertEqual(self.sounds_played(), [])


class History(SettingsTest):
    def remember_some(self):
        self.start()
        for percent in (77, 74, 71):
            self.discharge_to(percent)
            self.pass_time(70)

    def expected_csv(self):
        lines = ['timestamp,percent,charging,plugged_in']
        for s in self.history():
            at = datetime.datetime.fromtimestamp(int(s['t']), datetime.timezone.utc)
            lines.append('%s,%d,%s,%s' % (at.strftime('%Y-%m-%dT%H:%M:%SZ'), s['p'], str(s['c']).lower(),
                                          str(s['a']).lower()))
        return ('\n'.join(lines) + '\n').encode()

    def export_to(self, name):
        """By keyboard: whoever walks through the save panel's widgets while it fills makes Qt print."""
        self.screen.act(APP, 'Export History as CSV…', 'push button')
        wait_for(lambda: self.screen.windows('"Save As"'), 'the save panel')
        self.desk.run('xdotool', 'search', '--name', '^Save As$', 'windowactivate', '--sync')
        self.screen.type(name)
        self.screen.keys('Return')
        wait_for(lambda: not self.screen.windows('"Save As"'), 'the save panel to close')

    def test_export_writes_what_is_remembered(self):
        self.remember_some()
        self.open_settings()
        path = self.desk.path('home', 'exported.csv')
        self.export_to('exported.csv')
        wait_for(lambda: os.path.exists(path), 'the file')
        self.stop()
        with open(path, 'rb') as f:
            exported = f.read()
        self.assertEqual(exported, self.expected_csv())
        self.assertGreater(exported.count(b'\n'), 4)

    def test_failed_export_is_told(self):
        self.remember_some()
        self.open_settings()
        path = self.desk.path('home', 'nowhere', 'exported.csv')
        self.export_to('nowhere/exported.csv')
        wait_for(lambda: self.screen.windows('could not be saved'), 'the error')
        said = wait_for(lambda: [t for t in self.titles() if 'could not be saved' in t], 'the error')
        self.assertEqual(said, ['The history could not be saved to “%s”.' % path])
        self.screen.act(APP, 'OK', 'push button')
        wait_for(lambda: not [t for t in self.titles() if 'could not be saved' in t], 'the error to close')

    def titles(self):
        return [w['name'] for w in self.screen.widgets(APP) if w['depth'] == 1 and w['showing']]

    def ask_to_reset(self):
        self.remember_some()
        self.open_settings()
        self.screen.act(APP, 'Reset History…', 'push button')
        question = wait_for(lambda: self.dialog('Reset history?'), 'the question')
        self.assertIn('This deletes all saved battery samples used for the chart.', question['label'])
        self.assertEqual(question['push button'], ['Cancel', 'Reset'])
        self.assertTrue(self.screen.windows('"Reset history\\?"'))

    def test_cancelled_reset_leaves_the_history(self):
        self.ask_to_reset()
        before = self.history()
        self.screen.act(APP, 'Cancel', 'push button')
        wait_for(lambda: not self.dialog('Reset history?'), 'the question to close')
        self.stop()
        self.assertEqual(self.history()[:len(before)], before)
        self.assertTrue(before)

    def test_escape_is_cancel(self):
        self.ask_to_reset()
        before = self.history()
        wait_for(lambda: self.widget('Cancel', 'push button')['focused'], 'the keyboard on Cancel')
        self.screen.keys('Escape')
        wait_for(lambda: not self.dialog('Reset history?'), 'the question to close')
        self.assertEqual(self.history(), before)

    def test_return_is_cancel(self):
        self.ask_to_reset()
        before = self.history()
        wait_for(lambda: self.widget('Cancel', 'push button')['focused'], 'the keyboard on Cancel')
        self.screen.keys('Return')
        wait_for(lambda: not self.dialog('Reset history?'), 'the question to close')
        self.assertEqual(self.history(), before)

    def test_reset_deletes_the_history(self):
        self.ask_to_reset()
        self.screen.act(APP, 'Reset', 'push button')
        wait_for(lambda: self.history() == [], 'an empty history')
        wait_for(lambda: not self.dialog('Reset history?'), 'the question to close')

    def test_program_goes_on_behind_the_question(self):
        self.ask_to_reset()
        self.toggle('Charge limit')
        self.stored_becomes(limitEnabled=False)
        self.screen.act(APP, 'Reset History…', 'push button')
        self.round_trip()
        self.assertEqual(len(self.screen.windows('"Reset history\\?"')), 1)


class Permission(SettingsTest):
    QUESTION = 'Allow notifications?'

    def test_switching_an_alert_on_asks_in_a_window(self):
        self.start(lowEnabled=False)
        self.open_settings()
        self.toggle('Low battery')
        question = wait_for(lambda: self.dialog(self.QUESTION), 'the question')
        self.assertEqual(question['push button'], ['Not Now', 'Continue'])
        self.assertIn(
            'Tollbeam uses notifications to remind you to unplug at your chosen charge level, when the battery is '
            'low, and when you have been plugged in too long. macOS will ask for permission next.', question['label'])
        self.assertTrue(self.screen.windows('"Allow notifications\\?"'))
        self.screen.act(APP, 'Not Now', 'push button')
        wait_for(lambda: not self.dialog(self.QUESTION), 'the question to close')
        self.stored_becomes(lowEnabled=True)

    def test_whoever_has_answered_is_not_asked(self):
        for answer in ('yes', 'no'):
            self.desk.permit_notifications(answer)
            self.start(lowEnabled=False)
            self.open_settings()
            self.toggle('Low battery')
            self.stored_becomes(lowEnabled=True)
            self.alerts()  # follows the way of the question to the permission store and back
            self.assertFalse(self.dialog(self.QUESTION))
            self.stop()

    def test_switching_off_asks_nothing(self):
        self.start()
        self.open_settings()
        self.toggle('Low battery')
        self.stored_becomes(lowEnabled=False)
        self.alerts()
        self.assertFalse(self.dialog(self.QUESTION))


class Window(SettingsTest):
    options = {'panel': 'xfce', 'notify': 'none', 'size': '1024x600'}

    def test_fits_a_low_screen(self):
        self.start()
        self.screen.press_tray('left')
        self.screen.press_widget(APP, 'Settings')
        wait_for(lambda: self.window('Tollbeam Settings'), 'the settings')

        def is_whole():
            x, y, width, height = self.screen.windows('"Tollbeam Settings"')[0][1]
            return 0 <= x and x + width <= 1024 and 30 <= y and y + height <= 600
        wait_for(is_whole, 'the whole window on the screen')
        self.assertEqual(self.screen.windows('"Tollbeam Settings"')[0][1][2], 480)


if __name__ == '__main__':
    unittest.main()
