#!/usr/bin/python3
"""Every folder of App/ is a library of its own, and they build on each other in one direction."""
import pathlib
import re
import unittest

TOP = pathlib.Path(__file__).resolve().parents[2]
APP = TOP / 'App'
INCLUDE = re.compile(r'^#include "([\w/]+)/\w+\.h"', re.MULTILINE)


def folders(top):
    """The folders that hold sources, by their paths below this one; not the folder itself."""
    found = {str(file.parent.relative_to(top)) for file in top.rglob('*') if file.suffix in ('.h', '.cpp')}
    return sorted(found - {'.'})


def included_rooms():
    """{room: the other rooms that its files include}"""
    return {room: {other for file in (APP / room).glob('*') if file.suffix in ('.h', '.cpp')
                   for other in INCLUDE.findall(file.read_text())} - {room} for room in folders(APP)}


class Rooms(unittest.TestCase):
    def test_every_folder_is_a_room(self):
        programs = ['platform/freedesktop/sounds/player']
        for room in folders(APP):
            with self.subTest(room):
                text = (APP / room / 'CMakeLists.txt').read_text()
                self.assertIn('add_executable(' if room in programs else 'tollbeam_room(', text)

    def test_no_two_rooms_need_each_other(self):
        rooms = included_rooms()
        self.assertIn('platform', rooms['alerts'])
        # Removes the rooms that need none of the remaining ones, until only cycles are left.
        while free := [room for room, others in rooms.items() if not others & rooms.keys()]:
            for room in free:
                del rooms[room]
        self.assertEqual(rooms, {})

    def test_tests_stand_in_the_folder_of_what_they_test(self):
        own = ('gallery', 'recorded', 'support', 'platform/freedesktop/appearance/x11')
        for folder in folders(TOP / 'tests'):
            if not folder.startswith(own):
                self.assertTrue((APP / folder).is_dir(), folder)


if __name__ == '__main__':
    unittest.main()
