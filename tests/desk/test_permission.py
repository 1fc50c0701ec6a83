"""The desktop's permission store: "no" withholds, no entry shows."""
import unittest

from tollbeam import LOW, STORE, TIMER, ProgramTest, charge_limit, low


class Permission(ProgramTest):
    def setUp(self):
        super().setUp()
        self.discharge_to(50)

    def start_quietly(self):
        self.start(lowPowerEnabled=False, repeatReminder=False)

    def test_no_entry_shows(self):
        self.desk.permit_notifications('no', 'org.example.Another')
        self.start_quietly()
        self.discharge_to(20)
        self.assertEqual(self.alerts(), [low(20)])

    def test_no_withholds(self):
        self.desk.permit_notifications('no')
        self.start_quietly()
        self.discharge_to(20)
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [])

    def test_yes_shows(self):
        self.desk.permit_notifications('yes')
        self.start_quietly()
        self.discharge_to(20)
        self.assertEqual(self.alerts(), [low(20)])

    def test_it_may_change_while_the_program_runs(self):
        self.start_quietly()
        self.discharge_to(20)
        self.assertEqual(self.alerts(), [low(20)])
        self.desk.permit_notifications('no')
        self.plug_in()
        self.charge_to(80)
        self.assertEqual(self.alerts(), [low(20)])
        self.desk.permit_notifications('yes')
        self.unplug()
        self.plug_in()
        self.assertEqual(self.alerts(), [low(20), charge_limit(80)])

    def test_desktop_without_a_store_shows(self):
        store = self.desk.path('services', 'session', STORE[0] + '.service')
        with open(store, 'w') as f:
            f.write('[D-BUS Service]\nName=%s\nExec=/bin/false\n' % STORE[0])
        self.desk.session.call('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', 'ReloadConfig')
        self.start_quietly()
        self.discharge_to(20)
        self.wait_for_alert(LOW)


if __name__ == '__main__':
    unittest.main()
