"""Draws the status-item symbols on 16, 22 and 24 px grids (python3-shapely cuts the bolt's halo).

Every straight edge lies on a whole pixel of its grid. Run in this folder; it rewrites 16/ 22/ 24/."""
import math, pathlib
from shapely.geometry import Polygon, box

def n(v): return f'{v:.2f}'.rstrip('0').rstrip('.') or '0'
def rrect(x0, y0, x1, y1, r, hole=False):
    r = (r,) * 4 if not isinstance(r, tuple) else r          # tl tr br bl
    p = [(x0, y0, 0, 1), (x1, y0, -1, 0), (x1, y1, 0, -1), (x0, y1, 1, 0)]
    return rpoly([(x0, y0), (x1, y0), (x1, y1), (x0, y1)], r, arc=True, rev=hole)
def rpoly(pts, r, arc=False, rev=False):
    r = [r] * len(pts) if not isinstance(r, (tuple, list)) else list(r)
    if rev: pts, r = pts[::-1], r[::-1]
    d, N = '', len(pts)
    for i, (x, y) in enumerate(pts):
        ri = r[i]
        if ri == 0: d += ('L' if d else 'M') + f'{n(x)} {n(y)}'; continue
        def toward(q):
            L = math.hypot(q[0]-x, q[1]-y); k = min(ri, L/2)/L
            return x + (q[0]-x)*k, y + (q[1]-y)*k
        a, b = toward(pts[i-1]), toward(pts[(i+1) % N])
        d += ('L' if d else 'M') + f'{n(a[0])} {n(a[1])}'
        if arc: d += f'A{n(ri)} {n(ri)} 0 0 {0 if rev else 1} {n(b[0])} {n(b[1])}'
        else: d += f'Q{n(x)} {n(y)} {n(b[0])} {n(b[1])}'
    return d + 'z'

# grid: body box, corner radius, wall, gap, nub box, bolt (tall, in battery), bolt.fill, halo
G = {
 16: dict(b=(1, 4, 13, 12), r=2, w=1, g=1, nub=(14, 6, 15, 10), halo=1,
          bolt=[(13, 1.6), (8.8, 9), (11.7, 9), (10.8, 14.4), (15.2, 7), (12.2, 7)],
          fill=[(9.6, 1), (3, 9.3), (7.3, 9.3), (6.4, 15), (13, 6.7), (8.7, 6.7)],
          plug=dict(p=[(4, 1, 6, 5), (10, 1, 12, 5)], b=(3, 5, 13), s=7.5, c=(7, 9, 15), w=1)),
 22: dict(b=(1, 5, 19, 17), r=3, w=2, g=1, nub=(20, 8, 21, 14), halo=1.4,
          bolt=[(17.6, 1.4), (11.8, 12), (15.8, 12), (14.6, 20.6), (20.8, 10), (16.6, 10)],
          fill=[(13.2, 1.4), (4, 12.8), (10, 12.8), (8.8, 20.6), (18, 9.2), (12, 9.2)],
          plug=dict(p=[(6, 2, 8, 7), (14, 2, 16, 7)], b=(4, 7, 18), s=10, c=(10, 12, 20), w=2)),
 24: dict(b=(1, 6, 19, 18), r=3, w=2, g=1, nub=(20, 9, 22, 15), halo=1.5,
          bolt=[(18.8, 2), (12.4, 13), (16.8, 13), (15.4, 22), (22.2, 11), (17.7, 11)],
          fill=[(14.4, 1.5), (4.4, 14), (10.9, 14), (9.6, 22.5), (19.6, 10), (13.1, 10)],
          plug=dict(p=[(6, 2, 9, 8), (15, 2, 18, 8)], b=(4, 8, 20), s=11, c=(11, 13, 22), w=2)),
}
def nub(g):
    x0, y0, x1, y1 = g['nub']; r = min(x1-x0, 1.5)
    return rrect(x0, y0, x1, y1, (0, r, r, 0))
def shell(g):
    x0, y0, x1, y1 = g['b']; w = g['w']
    return rrect(x0, y0, x1, y1, g['r']) + rrect(x0+w, y0+w, x1-w, y1-w, max(g['r']-w, .6), hole=True)
def battery(g, quarter):
    x0, y0, x1, y1 = g['b']; i = g['w'] + g['g']
    d = shell(g) + nub(g)
    if quarter:
        full = x1 - x0 - 2*i
        d += rrect(x0+i, y0+i, x0+i+full*quarter//4, y1-i, .5 if g['w'] == 1 else 1)
    return d
def solid(g): return rrect(*g['b'], g['r']) + nub(g)
def bolted(g):
    # The bolt stands where the pole was; wall and fill end a halo's width before it.
    x0, y0, x1, y1 = g['b']; w, i, r = g['w'], g['w'] + g['g'], g['r']
    halo = Polygon(g['bolt']).convex_hull.buffer(g['halo'], join_style=2, mitre_limit=2)
    cut = box(*g['b']).difference(box(x0+w, y0+w, x1, y1-w)).difference(halo)
    left = min(getattr(cut, 'geoms', [cut]), key=lambda part: part.bounds[0])
    pts = [(round(x, 3), round(y, 3)) for x, y in list(left.exterior.coords)[:-1]]
    if not left.exterior.is_ccw: pts = pts[::-1]              # y points down: ccw here is clockwise there
    round_ = {(x0, y0): r, (x0, y1): r, (x0+w, y0+w): max(r-w, .6), (x0+w, y1-w): max(r-w, .6)}
    end = math.floor(min(x for x, _ in g['bolt']) - g['halo'])
    return (rpoly(pts, [round_.get(p, 0) for p in pts])
            + rrect(x0+i, y0+i, end, y1-i, .5 if w == 1 else 1) + rpoly(g['bolt'], .5))
def plug(g, filled):
    p = g['plug']; x0, y0, x1 = p['b']; s = p['s']; R = (x1-x0)/2; c0, c1, cy = p['c']; w = p['w']
    h = math.sqrt(R*R - ((c1-c0)/2)**2)                        # where the cord leaves the half round
    d = ''.join(rrect(a, b, c, e, ((c-a)/2, (c-a)/2, 0, 0)) for a, b, c, e in p['p'])
    d += (f'M{x0} {y0+1}A1 1 0 0 1 {x0+1} {y0}H{x1-1}A1 1 0 0 1 {x1} {y0+1}V{n(s)}'
          f'A{n(R)} {n(R)} 0 0 1 {c1} {n(s+h)}V{cy}H{c0}V{n(s+h)}A{n(R)} {n(R)} 0 0 1 {x0} {n(s)}z')
    if not filled:
        q = R - w
        d += f'M{x0+w} {y0+w}V{n(s)}A{n(q)} {n(q)} 0 0 0 {x1-w} {n(s)}V{y0+w}z'
    return d
def names(g):
    yield from ((f'battery.{q*25}', battery(g, q)) for q in range(5))
    yield 'battery.100percent', solid(g)
    yield 'battery.100.bolt', bolted(g)
    yield 'bolt.fill', rpoly(g['fill'], .7)
    yield 'powerplug.fill', plug(g, True)
    yield 'powerplug', plug(g, False)

for size, g in G.items():
    for name, d in names(g):
        pathlib.Path(str(size), name + '.svg').write_text(
            f'<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}" viewBox="0 0 {size} {size}">\n'
            '  <style type="text/css" id="current-color-scheme">.ColorScheme-Text { color: #232629; }</style>\n'
            f'  <path class="ColorScheme-Text" style="fill:currentColor" fill-rule="nonzero" d="{d}"/>\n</svg>\n')
