"""The popover: where it stands, its shadow, its keyboard, its history."""
import json
import os
import unittest

from laptop import wait_for
from tollbeam import ProgramTest


class Popover(ProgramTest):
    options = {'panel': 'xfce', 'notify': 'none'}

    def open(self):
        self.screen.press_tray('left')
        self.popover_says('On battery')

    def frame(self):
        return [w['box'] for w in self.screen.widgets('Tollbeam') if w['depth'] == 1 and w['name'] == 'Tollbeam'][0]

    def shadow(self):
        """Left, right, top, bottom, as window managers hear of it."""
        told = self.desk.run('sh', '-c', 'xdotool search --onlyvisible --name "^Tollbeam$" | while read w; do '
                                         'xprop -id $w _GTK_FRAME_EXTENTS; done')
        lines = [line for line in told.splitlines() if '=' in line]
        return [int(n) for n in lines[0].split('=')[1].split(',')] if lines else [0, 0, 0, 0]

    def body(self):
        x, y, width, height = self.frame()
        left, right, top, bottom = self.shadow()
        return x + left, y + top, width - left - right, height - top - bottom


class WithoutACompositor(Popover):
    def test_it_has_no_shadow(self):
        self.start()
        self.open()
        self.assertEqual(self.shadow(), [0, 0, 0, 0])
        self.assertEqual(self.body()[2], 340)

    def test_it_grows_for_the_summary_and_stays_at_the_panel(self):
        self.start()
        self.open()
        x, y, width, height = self.body()
        self.screen.press_widget('Tollbeam', 'Daily summary')
        wait_for(lambda: self.body()[3] > height, 'a higher popover')
        self.assertEqual(self.body()[:3], (x, y, width))
        self.screen.press_widget('Tollbeam', 'Daily summary')
        wait_for(lambda: self.body() == (x, y, width, height), 'the popover as it was')

    def test_keyboard_alone_reaches_the_settings(self):
        self.start()
        self.open()
        for _ in range(3):
            self.screen.keys('Tab')
        wait_for(lambda: [w for w in self.screen.widgets('Tollbeam') if w['focused'] and w['name'] == 'Settings'],
                 'the focus on Settings')
        self.screen.keys('space')
        wait_for(lambda: self.screen.windows('"Tollbeam Settings"'), 'the settings window')
        self.popover_closes()


class WithACompositor(Popover):
    options = {'panel': 'xfce', 'notify': 'none', 'compositor': True}

    def test_it_casts_a_shadow_and_stands_where_it_stands_without(self):
        self.start()
        item = self.screen.tray_item()
        self.open()
        x, y, width, height = self.body()
        self.assertEqual(width, 340)
        self.assertGreaterEqual(min(self.shadow()), 8)
        self.assertTrue(item[1] + item[3] <= y < 60, y)
        self.assertEqual(x + width, 1280 - 8)

    def test_click_on_the_shadow_is_one_elsewhere(self):
        self.start()
        self.open()
        x, y, _, height = self.body()
        self.screen.press(x - 10, y + height // 2)
        self.popover_closes()
        self.open()

    def test_click_opens_and_closes(self):
        self.start()
        for _ in range(3):
            self.open()
            self.screen.press_tray('left')
            self.popover_closes()


class History(Popover):
    """Beside a screen reader, which hears of every change: what the program prints then fails these, too."""
    options = {'panel': 'none', 'notify': 'none', 'listener': True}

    def remember(self, *days):
        """An hour of each day back, falling by four from `percent`: at noon, today the hour before now."""
        self.desk.clock.start_at(self.start_time)
        now, samples = self.desk.clock.now(), []
        for back, percent in sorted(days, reverse=True):
            begin = now // 86400 * 86400 + (0.5 - back) * 86400 if back else now - 3600
            samples += [{'t': float(begin + 60 * i), 'p': percent - i // 12, 'c': False, 'a': False} for i in range(60)]
        os.makedirs(os.path.dirname(self.history_file), exist_ok=True)
        with open(self.history_file, 'w') as history:
            json.dump(samples, history)

    def widget(self, **wanted):
        return [w for w in self.screen.widgets('Tollbeam')
                if w['showing'] and all(w[key] == value for key, value in wanted.items())]

    def chart_says(self, text):
        wait_for(lambda: text in [w['description'] for w in self.widget(name='Charge history')], repr(text))

    def chosen(self):
        return [w['name'] for w in self.widget(role='radio button') if w['checked']]

    def summary(self):
        """What the rows that are to be seen say, newest day first."""
        return [w['name'] for w in self.widget() if ': average ' in w['name']]

    def test_range_is_switched_and_kept(self):
        self.remember((0, 77), (3, 40))
        self.charge_to(70)
        self.start()
        self.open_popover()
        self.chart_says('Last 24 hours: 70% to 77%, now 70%.')
        self.assertEqual(self.chosen(), ['24 hours'])
        self.screen.act('Tollbeam', '7 days', 'radio button')
        self.chart_says('Last 7 days: 36% to 77%, now 70%.')
        self.assertEqual(self.chosen(), ['7 days'])
        self.screen.keys('Escape')
        self.popover_closes()
        self.open_popover()
        self.chart_says('Last 7 days: 36% to 77%, now 70%.')
        self.screen.act('Tollbeam', '24 hours', 'radio button')
        self.chart_says('Last 24 hours: 70% to 77%, now 70%.')

    def test_arrow_keys_switch_the_range(self):
        self.remember((0, 77), (3, 40))
        self.charge_to(70)
        self.start()
        self.open_popover()
        self.screen.keys('Tab')
        wait_for(lambda: self.widget(name='24 hours', focused=True), 'the focus on the range')
        self.screen.keys('Right')
        self.chart_says('Last 7 days: 36% to 77%, now 70%.')
        for name in ('24 hours', '7 days', 'Charge history'):
            wait_for(lambda: self.desk.heard(source=name), 'something to be heard of ' + name)

    def test_short_history_is_a_placeholder(self):
        self.start()
        self.open_popover()
        self.popover_says('Collecting history… a graph appears after a few minutes.')

    def test_summary_tells_each_day(self):
        self.remember((1, 40), (3, 90))
        self.start()
        self.open_popover()
        self.assertFalse(self.summary())
        self.screen.act('Tollbeam', 'Daily summary')
        rows = wait_for(self.summary, 'the days')
        self.assertEqual(len(rows), 3)
        self.assertTrue(rows[1].endswith(': average 38%, range 36–40%, no charging'), rows)
        self.assertTrue(rows[2].endswith(': average 88%, range 86–90%, no charging'), rows)


if __name__ == '__main__':
    unittest.main()
