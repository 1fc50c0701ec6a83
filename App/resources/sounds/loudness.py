"""How loud a short sound seems: ITU-R BS.1770's weighting, over the loudest 400 ms.

A sound shorter than that counts as followed by silence, much as the ear adds up what is short.
"""
import math

from synthesis import count, filtered

# The standard's two filters at 44.1 kHz: the head, which favours what is high, and a high-pass.
HEAD = (1.5308412300503478, -2.6509799951547297, 1.1690790799215869, -1.6636551132560202, 0.7125954280732254)
HIGH_PASS = (0.9995600645425144, -1.999120129085029, 0.9995600645425144, -1.9891696736297957, 0.9891990357870394)
WINDOW = 0.4


def decibels(factor):
    return 20 * math.log10(factor)


def peak(samples):
    return decibels(max(abs(s) for s in samples))


def loudness(samples):
    """In LUFS."""
    length = count(WINDOW)
    squares = [s * s for s in filtered(filtered(samples, *HEAD), *HIGH_PASS)] + [0.0] * length
    energy = sum(squares[:length])
    loudest = energy
    for i in range(len(squares) - length):
        energy += squares[i + length] - squares[i]
        loudest = max(loudest, energy)
    return -0.691 + 10 * math.log10(loudest / length)
