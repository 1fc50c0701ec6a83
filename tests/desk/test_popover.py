"""The popover's window: where it stands, its shadow, its keyboard."""
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


if __name__ == '__main__':
    unittest.main()
