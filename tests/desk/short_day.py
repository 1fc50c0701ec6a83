#!/usr/bin/python3
"""short_day.py BUNDLE FOLDER [--keep]: plays a short day of a laptop with the program running.

The charge falls until the program warns, the charger is plugged in, the charge reaches the limit,
and the reminder is put off on its real button. Pictures and the log of notifications are left in
FOLDER. Fails when the program does not do its part.
"""
import os
import shutil
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))
from laptop import Desk, DeskError, wait_for


class Day:
    def __init__(self, desk, folder):
        self.desk = desk
        self.folder = folder
        self.pictures = 0

    def picture(self, name):
        self.pictures += 1
        file = os.path.join(self.folder, '%d-%s.png' % (self.pictures, name))
        before = []

        def at_rest():
            """Panels and bubbles take a moment to be drawn."""
            self.desk.screen.shot(file)
            now = self.desk.run('identify', '-format', '%#', file)
            if before == [now]:
                return True
            before[:] = [now]
            return False
        wait_for(at_rest, 'the screen to come to rest', every=0.4)
        print('  %s  %s' % (time.strftime('%H:%M', time.gmtime(self.desk.clock.now())), os.path.basename(file)))

    def reminder(self, *titles):
        note = wait_for(lambda: [n for n in self.desk.notes('notify') if n['summary'] in titles],
                        'the reminder ' + ' or '.join(titles), 15)[-1]
        print('         "%s" "%s"' % (note['summary'], note['body']))
        wait_for(self.desk.screen.bubbles, 'its bubble')
        return note

    def later(self, minutes, percent):
        self.desk.clock.advance(minutes * 60)
        self.desk.hardware.percent(percent)
        wait_for(lambda: self.desk.upower('Percentage') == percent, 'upowerd to see %d %%' % percent)

    def play(self, bundle):
        desk, laptop = self.desk, self.desk.hardware
        laptop.percent(62)
        desk.clock.start_at(time.strftime('%Y-%m-%d 09:00'))
        desk.start_app(bundle)
        wait_for(desk.screen.tray, 'the status item', 20)
        self.picture('morning-on-battery')
        for percent in (45, 31, 24, 19):
            self.later(20, percent)
        self.reminder('Low battery')
        self.picture('battery-low')
        desk.screen.press_bubble('close')
        laptop.plug_in()
        wait_for(lambda: not desk.screen.bubbles(), 'the bubbles to go with their reason')
        desk.screen.press_tray('left')
        desk.screen.find('Tollbeam', 'Settings')
        self.picture('plugged-in-popover')
        desk.screen.press_tray('left')
        for percent in (40, 65, 80):
            self.later(25, percent)
        self.reminder('Charge limit reached')
        self.picture('charge-limit')
        desk.screen.press_bubble('Snooze 1 hour')
        desk.wait_for_note('action', key='SNOOZE')
        wait_for(lambda: not desk.screen.bubbles(), 'the bubble to go')
        self.picture('snoozed')


def main(bundle, folder, *options):
    desk = Desk()
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    desk.up()
    failed = None
    try:
        Day(desk, folder).play(os.path.abspath(bundle))
    except (AssertionError, DeskError) as error:
        failed = error
    shutil.copy(desk.path('notes.jsonl'), os.path.join(folder, 'notifications.jsonl'))
    shutil.copytree(desk.path('log'), os.path.join(folder, 'log'))
    if '--keep' in options:
        print('The simulated laptop stays up: tests/desk/desk help says what it can do; tests/desk/desk down ends it.')
    else:
        desk.down()
    if failed:
        sys.exit('The day went wrong: %s\nThe logs are in %s/log.' % (failed, folder))
    print('The pictures and the notifications of the day are in %s' % folder)


main(*sys.argv[1:])
