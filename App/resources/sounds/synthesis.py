"""What sounds are made of: lists of samples between -1 and 1 at RATE, and what can be done to them.

Times are in seconds, frequencies in hertz. Nothing here is random from one run to the next.
"""
import math
import random

RATE = 44100


def count(seconds):
    return round(seconds * RATE)


def oscillate(seconds, frequency, amplitude, phase=0.0):
    """A sine; `frequency` and `amplitude` are functions of the time, so that both can move."""
    samples = []
    for i in range(count(seconds)):
        t = i / RATE
        samples.append(amplitude(t) * math.sin(phase))
        phase += 2 * math.pi * frequency(t) / RATE
    return samples


def constant(value):
    return lambda _t: value


def glide(begin, end, seconds):
    """From `begin` to `end` in equal musical steps, then it stays."""
    return lambda t: begin * (end / begin) ** min(t / seconds, 1.0)


def struck(fall, rise=0.002):
    """A loudness that rises at once and falls to a thousandth in `fall` seconds, as struck things do."""
    return lambda t: min(t / rise, 1.0) * 10 ** (-3 * t / fall)


def held(seconds, rise, fall):
    """A loudness that rises, stays, and has fallen at `seconds`; both ways as half a cosine."""
    def loudness(t):
        edge = min(t / rise, (seconds - t) / fall, 1.0)
        return 0.5 - 0.5 * math.cos(math.pi * max(edge, 0.0))
    return loudness


def noise(seconds, seed):
    chance = random.Random(seed)
    return [chance.uniform(-1.0, 1.0) for _ in range(count(seconds))]


def shaped(samples, loudness):
    return [s * loudness(i / RATE) for i, s in enumerate(samples)]


def scaled(samples, factor):
    return [s * factor for s in samples]


def mixed(*parts):
    """Each part is samples, or (when they begin, samples)."""
    placed = [(count(p[0]), p[1]) if isinstance(p, tuple) else (0, p) for p in parts]
    out = [0.0] * max(at + len(samples) for at, samples in placed)
    for at, samples in placed:
        for i, s in enumerate(samples, at):
            out[i] += s
    return out


def filtered(samples, b0, b1, b2, a1, a2):
    """A filter of second order, its a0 being 1."""
    out, x1, x2, y1, y2 = [], 0.0, 0.0, 0.0, 0.0
    for x in samples:
        y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2
        x2, x1, y2, y1 = x1, x, y1, y
        out.append(y)
    return out


def low_pass(samples, frequency, q=0.707):
    w = 2 * math.pi * frequency / RATE
    alpha, cos = math.sin(w) / (2 * q), math.cos(w)
    b = (1 - cos) / 2
    return filtered(samples, *(v / (1 + alpha) for v in (b, 2 * b, b, -2 * cos, 1 - alpha)))


def high_pass(samples, frequency, q=0.707):
    w = 2 * math.pi * frequency / RATE
    alpha, cos = math.sin(w) / (2 * q), math.cos(w)
    b = (1 + cos) / 2
    return filtered(samples, *(v / (1 + alpha) for v in (b, -2 * b, b, -2 * cos, 1 - alpha)))


def band_pass(samples, frequency, q):
    w = 2 * math.pi * frequency / RATE
    alpha, cos = math.sin(w) / (2 * q), math.cos(w)
    return filtered(samples, *(v / (1 + alpha) for v in (alpha, 0.0, -alpha, -2 * cos, 1 - alpha)))
