#!/usr/bin/python3
"""short_day.py BUNDLE FOLDER [--keep]: plays a short day of a laptop with the program running.

The charge falls until the program warns, the charger is plugged in, the charge reaches the limit,
and the reminder is put off on its real button. Pictures, the log of notifications and all logs are
left in FOLDER. Fails when the program does not do its part, with a picture of what was on the screen.
"""
import json
import os
import shlex
import shutil
import signal
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))

from laptop import (Desk, DeskError, default_folder, exit_at_next_wait, exit_if_asked, fresh_folder, remove,
                    wait_for)


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
                        'the reminder ' + ' or '.join(titles))[-1]
        print('         "%s" "%s"' % (note['summary'], note['body']))
        wait_for(self.desk.screen.bubbles, 'its bubble')
        return note

    def later(self, minutes, percent):
        before = round(self.desk.upower('Percentage'))
        for passed in range(5, minutes + 1, 5):
            now = before + round((percent - before) * passed / minutes)
            self.desk.clock.advance(5 * 60)
            self.desk.hardware.percent(now)
            wait_for(lambda: self.desk.upower('Percentage') == now, 'upowerd to see %d %%' % now)

    def remember_the_week(self):
        """Days before this one: a charge in the morning and one in the evening, asleep at night."""
        now, samples = self.desk.clock.now(), []
        for day in range(7, 0, -1):
            midnight = now - 9 * 3600 - day * 86400
            for minute in range(7 * 60 + 10 * day, 23 * 60 - 15 * day, 5):
                hour = minute / 60
                charging = 8 <= hour < 9.5 or 18 <= hour < 20
                if hour < 9.5:
                    percent = 50 + max(0.0, min(hour - 8, 1.5)) * 20
                elif hour < 18:
                    percent = 80 - (hour - 9.5) * (3 + day % 3)
                else:
                    percent = min(80.0, 80 - 8.5 * (3 + day % 3) + (hour - 18) * 25)
                samples.append({'t': float(midnight + minute * 60), 'p': round(percent), 'c': charging, 'a': charging})
        file = self.desk.path('home', '.local', 'share', 'Tollbeam', 'history.json')
        os.makedirs(os.path.dirname(file), exist_ok=True)
        with open(file, 'w') as history:
            json.dump(samples, history)

    def play(self, bundle):
        desk, laptop = self.desk, self.desk.hardware
        laptop.percent(62)
        desk.clock.start_at(time.strftime('%Y-%m-%d 09:00'))
        self.remember_the_week()
        desk.start_app(bundle)
        wait_for(lambda: desk.screen.tray() or not desk.app_pid(), 'the status item')
        if not desk.app_pid():
            raise DeskError('the program has ended before it showed the status item')
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
        desk.screen.press_tray('left')
        desk.screen.find('Tollbeam', 'Cancel')
        self.picture('snoozed')


    def failed(self):
        """Takes a picture of what went wrong, and says what else there is to see."""
        self.pictures += 1
        file = os.path.join(self.folder, '%d-failed.png' % self.pictures)
        self.desk.screen.shot(file)
        return '%s shows the screen.\n%s; the end of its log:\n%s\nThe notifications until then: %s' % (
            file, 'The program still runs' if self.desk.app_pid() else 'The program has ended',
            '\n'.join(self.desk.app_log().splitlines()[-20:]) or '(empty)',
            ', '.join('"%s"' % n['summary'] for n in self.desk.notes('notify')) or 'none')


def keep_logs(desk, folder):
    if os.path.exists(desk.path('notes.jsonl')):
        shutil.copy(desk.path('notes.jsonl'), os.path.join(folder, 'notifications.jsonl'))
    if os.path.isdir(desk.path('log')):
        shutil.copytree(desk.path('log'), os.path.join(folder, 'log'))


def main(bundle, folder, *options):
    # A runner that ends us means the laptop, too.
    for sign in (signal.SIGINT, signal.SIGTERM):
        signal.signal(sign, lambda number, _: exit_at_next_wait(128 + number))
    keep = '--keep' in options
    desk = Desk(default_folder() or fresh_folder())
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    day, failure = Day(desk, folder), None
    try:
        try:
            desk.up()
            day.play(os.path.abspath(bundle))
        except Exception as error:  # whatever it is, it must not take the pictures and the logs with it
            failure = 'The day went wrong: %s\n%s' % (error, day.failed()) if desk.is_up() else \
                'The simulated laptop did not come up: %s' % error
        keep_logs(desk, folder)
        exit_if_asked()
    finally:
        # The laptop's processes have sessions of their own: no Ctrl-C reaches them.
        if not keep:
            desk.down()
            remove(desk.folder)
    if keep and desk.is_up():
        print('The simulated laptop stays up: tests/desk/desk help says what it can do; tests/desk/desk down ends it.\n'
              'export DESK_RUN=%s tells that program which laptop is meant.' % shlex.quote(desk.folder))
    if failure:
        sys.exit('%s\nThe logs are in %s/log.' % (failure, folder))
    print('The pictures and the notifications of the day are in %s' % folder)


try:
    main(*sys.argv[1:])
except DeskError as error:
    sys.exit('The simulated laptop cannot be made: %s' % error)
