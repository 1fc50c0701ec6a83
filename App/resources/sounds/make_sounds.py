#!/usr/bin/python3
"""make_sounds.py [NAME...]: makes the alert sounds, stereo/NAME.oga, all of them by default.

They are committed; a build needs neither this script nor its encoder (oggenc, of vorbis-tools).
Each sound is drawn after its name, ends by itself within 1.3 seconds, and is brought to the same
loudness as the others, so that a change of taste is no change of volume.
"""
import array
import os
import subprocess
import sys

from loudness import loudness
from synthesis import (RATE, band_pass, constant, count, glide, held, high_pass, low_pass, mixed, noise, oscillate,
                       scaled, shaped, struck)

HERE = os.path.dirname(os.path.realpath(__file__))
LOUDNESS = -23.0  # LUFS; between the quietest and the loudest of what desktops usually play
FADE_IN, FADE_OUT = 0.001, 0.01


def partials(seconds, tones):
    """Struck sines that ring together: (frequency, amplitude, seconds to fall) each."""
    return mixed(*(oscillate(seconds, constant(f), lambda t, a=a, fall=struck(fall): a * fall(t))
                   for f, a, fall in tones))


def harmonics(seconds, frequency, amplitudes):
    """A tone with overtones; each amplitude is a function of the time."""
    return mixed(*(oscillate(seconds, lambda t, n=n: n * frequency(t), amplitude)
                   for n, amplitude in enumerate(amplitudes, 1)))


def glass():
    """A wine glass touched with a spoon: its rim's modes lie far apart, and pairs of them beat."""
    return partials(1.2, [(1180, 1.0, 1.5), (1183.5, 0.5, 1.5), (2738, 0.6, 0.9), (2745, 0.3, 0.9),
                          (5015, 0.3, 0.5), (7823, 0.12, 0.25)])


def ping():
    """One clean high tone that comes softly."""
    return mixed(oscillate(0.8, constant(1760), struck(0.9, rise=0.015)),
                 scaled(oscillate(0.8, constant(3520), struck(0.5, rise=0.02)), 0.08))


def hero():
    """A small fanfare on brass: two quick steps up and the long one."""
    def note(frequency, seconds, fall):
        envelope = held(seconds, 0.025, fall)
        def overtone(n):
            # Brass brightens as it gets louder.
            return lambda t: envelope(t) ** (1 + 0.25 * n) / n ** 0.9
        return harmonics(seconds, lambda t: frequency * (1 - 0.012 * max(0.0, 1 - t / 0.04)),
                         [overtone(n) for n in range(1, 9)])
    return low_pass(mixed(note(392.0, 0.16, 0.04), (0.15, note(523.25, 0.16, 0.04)),
                          (0.30, note(659.26, 0.85, 0.65))), 3200)


def submarine():
    """A sonar's ping in deep water, and what comes back from afar."""
    def call(loud):
        return oscillate(0.64, glide(466, 452, 0.5), lambda t: loud * struck(0.64, rise=0.03)(t))
    return mixed(call(1.0), (0.33, low_pass(call(0.5), 700)), (0.66, low_pass(call(0.25), 500)))


def funk():
    """A plucked bass string through a closing filter, twice, the second higher and shorter."""
    def pluck(frequency, seconds, fall):
        tones = [lambda t, n=n: struck(fall / (1 + 0.22 * n), rise=0.003)(t) / n ** 0.7 for n in range(1, 19)]
        # The finger comes back onto the string.
        return shaped(harmonics(seconds, constant(frequency), tones), held(seconds, 0.001, 0.08))
    dry = mixed(pluck(110.0, 0.2, 0.7), (0.16, pluck(164.81, 0.42, 0.6)))
    return mixed(dry, scaled(band_pass(dry, 900, 3.0), 1.2))


def basso():
    """A low, dull horn."""
    envelope = held(0.8, 0.07, 0.45)
    def overtone(n):
        return lambda t: envelope(t) ** (0.8 + 0.5 * n) / n
    return low_pass(harmonics(0.8, glide(101, 98, 0.3), [overtone(n) for n in range(1, 12)]), 520)


def blow():
    """Breath over the neck of a bottle: more air than tone."""
    seconds = 0.9
    breath = noise(seconds, seed=7)
    air = mixed(scaled(band_pass(breath, 620, 2.0), 0.7), scaled(band_pass(breath, 2400, 0.8), 0.18))
    tone = oscillate(seconds, constant(311), constant(0.09))
    return shaped(mixed(air, tone), held(seconds, 0.22, 0.5))


def bottle():
    """A cork drawn from a bottle: the plop, and the hollow below it."""
    plop = oscillate(0.45, glide(240, 520, 0.035), struck(0.10, rise=0.001))
    hollow = partials(0.45, [(392, 0.5, 0.42), (1010, 0.10, 0.15)])
    hiss = shaped(band_pass(noise(0.05, seed=3), 1800, 1.0), struck(0.03, rise=0.001))
    return mixed(plop, scaled(hiss, 0.5), (0.03, hollow))


def frog():
    """Two croaks: a throat that opens some fifty times a second."""
    def croak(seconds, slow, fast):
        # Each opening of the throat is a short ring of its two resonances.
        out, t, rate = [], 0.0, glide(slow, fast, seconds)
        ring = partials(0.04, [(560, 1.0, 0.035), (1350, 0.55, 0.022), (2500, 0.15, 0.015)])
        while t < seconds:
            out.append((t, scaled(ring, held(seconds, seconds * 0.5, seconds * 0.3)(t))))
            t += 1 / rate(t)
        return mixed(*out)
    return mixed(croak(0.22, 42, 66), (0.3, croak(0.3, 44, 72)))


def morse():
    """Short, long, short: the letter R, "received"."""
    def key(seconds):
        return oscillate(seconds, constant(740), held(seconds, 0.006, 0.006))
    return mixed(key(0.07), (0.14, key(0.21)), (0.42, key(0.07)))


def pop():
    """A bubble that bursts: it sounds higher the smaller it gets."""
    return oscillate(0.18, glide(380, 1250, 0.07), struck(0.17, rise=0.004))


def purr():
    """A content cat, heard with the ear on the fur."""
    seconds = 1.1
    fur = low_pass(noise(seconds, seed=11), 420)
    throat = harmonics(seconds, constant(123), [constant(a) for a in (0.30, 0.22, 0.12, 0.05)])
    flutter = shaped(mixed(scaled(fur, 1.3), throat), lambda t: (0.55 - 0.45 * oscillation(t, 23)) ** 1.5)
    return shaped(low_pass(flutter, 600), held(seconds, 0.3, 0.45))


def oscillation(t, frequency):
    """A triangle wave between -1 and 1."""
    return 4 * abs((t * frequency) % 1.0 - 0.5) - 1


def sosumi():
    """Two bars of a xylophone, a fifth apart."""
    def bar(frequency):
        return partials(0.55, [(frequency, 1.0, 0.55), (3 * frequency, 0.45, 0.22), (6.1 * frequency, 0.2, 0.08)])
    return mixed(bar(587.33), (0.13, bar(880.0)))


def tink():
    """The rim of a tiny bell, touched with a needle."""
    return high_pass(partials(0.22, [(3320, 1.0, 0.22), (4980, 0.7, 0.16), (7010, 0.5, 0.10), (9230, 0.3, 0.06)]), 2000)


SOUNDS = {'Glass': glass, 'Ping': ping, 'Hero': hero, 'Submarine': submarine, 'Funk': funk, 'Basso': basso,
          'Blow': blow, 'Bottle': bottle, 'Frog': frog, 'Morse': morse, 'Pop': pop, 'Purr': purr, 'Sosumi': sosumi,
          'Tink': tink}


def finished(samples):
    """Without a click at either end, and as loud as all others."""
    last = len(samples) - 1
    faded = [s * min(1.0, i / count(FADE_IN), (last - i) / count(FADE_OUT)) for i, s in enumerate(samples)]
    return scaled(faded, 10 ** ((LOUDNESS - loudness(faded)) / 20))


def made(name):
    return finished(SOUNDS[name]())


def encode(samples, file):
    """The same bytes for the same samples: without a date, and with a serial number of our own."""
    pcm = array.array('h', (round(s * 32767) for s in samples))
    if sys.byteorder == 'big':
        pcm.byteswap()
    subprocess.run(['oggenc', '--quiet', '--quality', '3', '--serial', '1', '--raw', '--raw-rate', str(RATE),
                    '--raw-chan', '1', '--raw-bits', '16', '--output', file, '-'], input=pcm.tobytes(), check=True)


def main(names):
    for name in names or SOUNDS:
        encode(made(name), os.path.join(HERE, 'stereo', name + '.oga'))


if __name__ == '__main__':
    main(sys.argv[1:])
