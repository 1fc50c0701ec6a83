#!/usr/bin/python3
"""The alert sounds as they are shipped: all there, decodable, alike in loudness and in nothing else."""
import glob
import math
import os
import sys
import unittest

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.realpath(__file__))))
SOUNDS = os.path.join(TOP, 'App', 'resources', 'sounds')
sys.dont_write_bytecode = True
sys.path[:0] = [SOUNDS, os.path.dirname(os.path.realpath(__file__))]
import make_sounds
from loudness import decibels, loudness, peak
from synthesis import RATE, constant, glide, low_pass, mixed, oscillate, scaled, struck
from vorbis import decoded

NAMES = ['Glass', 'Ping', 'Hero', 'Submarine', 'Funk', 'Basso', 'Blow', 'Bottle', 'Frog', 'Morse', 'Pop', 'Purr',
         'Sosumi', 'Tink']


def file_of(name):
    return os.path.join(SOUNDS, 'stereo', name + '.oga')


def samples_of(name):
    return [s / 32768 for s in decoded(file_of(name))[2]]


def spectrum(samples, frequencies):
    """The energy at each frequency, by Goertzel's filter."""
    energies = []
    for frequency in frequencies:
        turn = 2 * math.cos(2 * math.pi * frequency / RATE)
        before, now = 0.0, 0.0
        for s in samples:
            before, now = now, s + turn * now - before
        energies.append(before * before + now * now - turn * before * now)
    return energies


SLICE = 0.05
# Half octaves from 90 Hz to 11.5 kHz, three tones in each.
BANDS = [[90 * 2 ** ((band + third / 3) / 2) for third in range(3)] for band in range(14)]


def signature(samples):
    """What the ear gets: energy in decibels by band and by slices of time, down to 40 below the loudest."""
    length, grid = round(SLICE * RATE), []
    for at in range(0, round(1.3 * RATE), length):
        piece = samples[at:at + length]
        window = [s * math.sin(math.pi * i / length) for i, s in enumerate(piece)]
        grid.append([sum(spectrum(window, band)) for band in BANDS])
    loudest = max(max(row) for row in grid)
    return [max(-40.0, 10 * math.log10(max(e, 1e-30) / loudest)) for row in grid for e in row]


def distance(one, other):
    """The mean difference in decibels where at least one of the two is to be heard."""
    heard = [(a, b) for a, b in zip(one, other) if max(a, b) > -40.0]
    return sum(abs(a - b) for a, b in heard) / len(heard)


class Sounds(unittest.TestCase):
    def test_are_the_fourteen_that_the_script_makes(self):
        files = [os.path.basename(f)[:-4] for f in glob.glob(os.path.join(SOUNDS, 'stereo', '*.oga'))]
        self.assertEqual(sorted(files), sorted(NAMES))
        self.assertEqual(list(make_sounds.SOUNDS), NAMES)

    def test_are_short_and_of_few_kilobytes(self):
        for name in NAMES:
            channels, rate, samples = decoded(file_of(name))
            self.assertEqual((channels, rate), (1, RATE), name)
            self.assertTrue(0.15 <= len(samples) / RATE <= 1.31, name)
            self.assertLess(os.path.getsize(file_of(name)), 15000, name)

    def test_are_equally_loud(self):
        for name in NAMES:
            self.assertAlmostEqual(loudness(samples_of(name)), make_sounds.LOUDNESS, delta=0.5, msg=name)

    def test_keep_away_from_full_scale(self):
        for name in NAMES:
            self.assertLess(peak(samples_of(name)), -3.0, name)

    def test_begin_and_end_without_a_click(self):
        for name in NAMES:
            samples = samples_of(name)
            loudest = max(abs(s) for s in samples)
            # What a codec makes of silence is less than this.
            self.assertLess(abs(samples[0]), 0.03 * loudest, name)
            self.assertLess(max(abs(s) for s in samples[-20:]), 0.03 * loudest, name)

    def test_are_what_the_script_makes(self):
        for name in NAMES:
            made, shipped = make_sounds.made(name), samples_of(name)
            self.assertLess(abs(len(made) - len(shipped)), 0.001 * RATE, name)
            lost = [a - b for a, b in zip(made, shipped)]
            noise, signal = (math.sqrt(sum(s * s for s in x)) for x in (lost, made))
            # The codec leaves out what nobody hears; a sound made anew would be a stranger (0 dB).
            self.assertLess(decibels(noise / signal), -12.0, name)

    def test_are_clearly_different(self):
        signatures = {name: signature(samples_of(name)) for name in NAMES}
        for i, name in enumerate(NAMES):
            for other in NAMES[:i]:
                self.assertGreater(distance(signatures[name], signatures[other]), 9.0, (name, other))

    def test_the_theme_names_their_folder(self):
        with open(os.path.join(SOUNDS, 'index.theme')) as f:
            lines = f.read().split('\n')
        self.assertEqual(lines[0], '[Sound Theme]')
        for line in ('Name=Tollbeam', 'Inherits=freedesktop', 'Directories=stereo', '[stereo]', 'OutputProfile=stereo'):
            self.assertIn(line, lines)


class Measures(unittest.TestCase):
    """The measures themselves, where the answer is known."""

    def test_loudness_is_the_standards(self):
        self.assertAlmostEqual(loudness(oscillate(1.0, constant(997), constant(1.0))), -3.01, delta=0.02)
        self.assertAlmostEqual(loudness(oscillate(0.2, constant(997), constant(1.0))), -6.02, delta=0.05)

    def test_the_ear_hears_less_of_what_is_low(self):
        low, high = (loudness(oscillate(1.0, constant(f), constant(0.5))) for f in (40, 4000))
        self.assertGreater(high - low, 5)

    def test_a_variation_is_no_different_sound(self):
        pop = make_sounds.pop()
        for other in (scaled(pop, 0.5), low_pass(pop, 8000), mixed(pop, scaled(pop, 0.1)),
                      oscillate(0.18, glide(385, 1265, 0.07), struck(0.18, rise=0.004))):
            self.assertLess(distance(signature(pop), signature(other)), 4.0)


if __name__ == '__main__':
    unittest.main()
