"""The charge-limit reminder repeats, four times in all, and each takes the place of the one before."""
import unittest

from laptop import wait_for
from tollbeam import CHARGE_LIMIT, TIMER, ProgramTest, charge_limit


class RepeatOnXfce(ProgramTest):
    options = {'panel': 'none', 'notify': 'xfce'}

    def reach_the_limit(self, **preferences):
        self.charge_to(79)
        self.plug_in()
        self.start(**preferences)
        self.charge_to(80)
        return self.wait_for_alert(CHARGE_LIMIT)

    def test_four_in_all_each_in_the_place_of_the_one_before(self):
        first = self.reach_the_limit()
        self.assertEqual(first['replaces'], 0)
        for n in (2, 3, 4):
            self.charge_to(79 + n)
            self.pass_time(290 + TIMER)
            note = self.wait_for_alert(CHARGE_LIMIT, n)
            self.assertEqual((note['replaces'], note['id']), (first['id'], first['id']))
        self.pass_time(3600)
        self.pass_time(3600)
        self.assertEqual(self.alerts(), [charge_limit(p) for p in (80, 81, 82, 83)])
        self.assertEqual(self.closed(first['id']), [])
        wait_for(lambda: len(self.screen.bubbles()) == 1, 'one bubble')

    def test_next_comes_after_290_seconds_and_not_before(self):
        self.reach_the_limit()
        # Well under: the seconds that the test itself takes count, too.
        self.pass_time(270)
        self.charge_to(81)
        self.assertEqual(self.alerts(), [charge_limit(80)])
        self.pass_time(20)
        self.charge_to(82)
        self.assertEqual(self.alerts(), [charge_limit(80), charge_limit(82)])

    def test_unplugging_begins_anew(self):
        self.reach_the_limit()
        for n in (2, 3, 4):
            self.pass_time(290 + TIMER)
            self.wait_for_alert(CHARGE_LIMIT, n)
        self.unplug()
        self.plug_in()
        self.assertEqual(self.alerts(), [charge_limit(80)] * 5)

    def test_once_when_not_to_be_repeated(self):
        self.reach_the_limit(repeatReminder=False)
        self.pass_time(600)
        self.pass_time(600)
        self.assertEqual(self.alerts(), [charge_limit(80)])

    def test_bubble_that_the_user_closed_is_not_replaced_but_followed(self):
        first = self.reach_the_limit()
        self.screen.press_bubble('close')
        self.desk.wait_for_note('closed', id=first['id'])
        stranger = self.post_stranger('hello')
        self.pass_time(290 + TIMER)
        self.assertEqual(self.wait_for_alert(CHARGE_LIMIT, 2)['replaces'], 0)
        self.alerts()
        self.assertEqual(self.closed(stranger), [])


class RepeatOnDunst(RepeatOnXfce):
    options = {'panel': 'none', 'notify': 'dunst'}


if __name__ == '__main__':
    unittest.main()
