#!/usr/bin/python3
"""other_release: where no folder of the other release can be made, it says why and counts as skipped."""
import glob
import os
import unittest

from tree import TreeTest


# Knows the archive after the first update only.
APT_GET = r'''
case $1 in
update) touch "$HOME/updated" ;;
indextargets) if [ -e "$HOME/updated" ]; then echo an-archive/; fi ;;
esac
'''

# Real namespaces where this machine lets us make them.
UNSHARE = r'''
[ "${MOUNT:-0}" = 0 ] || exit "$MOUNT"
if /usr/bin/unshare --mount --pid --fork true 2>/dev/null; then exec /usr/bin/unshare "$@"; fi
while [[ $1 = --* ]]; do shift; done
[ "$1" = mount ] || exec "$@"
'''

# Ends as one that is killed: what it has made and mounted stays.
DEBOOTSTRAP = r'''
echo "fetching through ${http_proxy:-no proxy}"
folder=${*: -2:1}
[ ! -e "$folder" ] || echo "not a new folder"
mkdir -p "$folder/proc"
mount -t tmpfs tmpfs "$folder/proc" 2>/dev/null && touch "$folder/proc/mounted"
exit 137
'''


class OtherRelease(TreeTest):
    files = ('tests/other_release', 'scripts/packages.sh')

    def setUp(self):
        super().setUp()
        self.stand_in('id', 'echo "${ID:-0}"')
        self.stand_in('unshare', UNSHARE)
        self.stand_in('apt-get', APT_GET)
        self.stand_in('apt-config', 'if [ $1 = shell ]; then echo "$2=\'$PROXY\'"; fi')
        self.stand_in('wget', 'echo "asked for ${*: -1} through ${http_proxy:-no proxy}"; exit "${ARCHIVE:-0}"')
        self.stand_in('debootstrap', DEBOOTSTRAP)

    def try_it(self, *words, **env):
        result = self.run_script('tests/other_release', *(words or ['unit']), **env)
        cache = os.path.join(self.home, '.cache', 'tollbeam')
        result.folders = [name for name in os.listdir(cache) if name in ('debian-12', 'debian-13')] \
            if os.path.isdir(cache) else []
        return result

    def test_where_it_cannot_be_tried_it_is_skipped_and_says_why(self):
        for env, reason in (({'ID': '1000'}, 'only root'), ({'MOUNT': '1'}, 'may not mount'),
                            ({'ARCHIVE': '4'}, 'does not answer')):
            with self.subTest(reason):
                result = self.try_it(**env)
                self.assertEqual((result.returncode, result.folders), (77, []), result.output)
                self.assertRegex(result.output.splitlines()[-1], 'Skipped: .*' + reason)

    def test_the_archive_of_this_machine_is_asked_for_the_other_release(self):
        """On a machine, too, that has not been updated yet."""
        self.assertRegex(self.try_it().output, 'asked for an-archive/dists/(bookworm|trixie)/InRelease')

    def test_a_folder_that_was_not_finished_is_a_failure_and_is_not_taken_for_one(self):
        for _ in range(2):
            result = self.try_it()
            self.assertNotIn(result.returncode, (0, 77))
            self.assertIn('Making a Debian', result.output)
            self.assertEqual(result.folders, [])
            self.assertNotIn('not a new folder', result.output)

    def test_what_an_unfinished_folder_had_mounted_is_gone(self):
        self.try_it()
        places = glob.glob(os.path.join(self.home, '.cache', 'tollbeam', 'debian-*.new', 'proc'))
        self.assertEqual([(os.path.ismount(p), os.listdir(p)) for p in places], [(False, [])])

    def test_an_unfinished_folder_in_which_something_is_mounted_is_left_alone(self):
        self.try_it()
        unfinished, = glob.glob(os.path.join(self.home, '.cache', 'tollbeam', 'debian-*.new'))
        self.stand_in('findmnt', 'echo "%s/mnt"' % unfinished)
        result = self.try_it()
        self.assertEqual(result.returncode, 1, result.output)
        self.assertIn('is mounted in %s,' % unfinished, result.output)
        self.assertTrue(os.path.exists(unfinished))

    def test_everything_is_fetched_through_the_proxy_of_apt(self):
        for apt, ours, expected in (('http://apt:1', '', 'http://apt:1'), ('http://apt:1', 'http://ours:1', 'http://apt:1'),
                                    ('', 'http://ours:1', 'http://ours:1'), ('DIRECT', '', 'no proxy'), ('', '', 'no proxy')):
            with self.subTest(apt=apt, ours=ours):
                output = self.try_it(PROXY=apt, http_proxy=ours).output
                self.assertRegex(output, 'InRelease through %s\n' % expected)
                self.assertIn('fetching through %s\n' % expected, output)

    def test_unknown_words_show_what_there_is(self):
        for words in (['units'], ['unit', 'x'], ['run']):
            with self.subTest(words):
                result = self.try_it(*words)
                self.assertEqual(result.returncode, 2, result.output)
                self.assertIn('tests/other_release run CMD...', result.output)


if __name__ == '__main__':
    unittest.main()
