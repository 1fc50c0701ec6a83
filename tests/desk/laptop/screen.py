"""The screen of the desk: finding things on it and pressing them with a real pointer."""
import json
import os
import re
import subprocess

from . import parts
from .processes import DeskError
from .waiting import wait_for

BUTTONS = {'left': 1, 'middle': 2, 'right': 3}


class Screen:
    def __init__(self, desk):
        self._desk = desk

    # ------------------------------------------------------------------ looking

    def shot(self, file, crop=None):
        """A picture of the whole screen, or of crop = [x, y, width, height]."""
        command = ['import', '-window', 'root']
        if crop:
            command += ['-crop', '%dx%d+%d+%d' % (crop[2], crop[3], crop[0], crop[1]), '+repage']
        self._desk.run(*command, file)
        return file

    def windows(self, pattern=''):
        """Windows on screen whose title or class matches: [('"title": ("name" "Class")', [x, y, width, height])]."""
        found = []
        line_of = re.compile(r'^\s+(0x\w+) (.*?)\s+(\d+)x(\d+)\+-?\d+\+-?\d+\s+\+(-?\d+)\+(-?\d+)$')
        for line in self._tree().splitlines():
            match = line_of.match(line)
            if match and not match[2].endswith('()') and re.search(pattern, match[2]) and self._viewable(match[1]):
                found.append((match[2], [int(match[5]), int(match[6]), int(match[3]), int(match[4])]))
        return found

    def _tree(self):
        """A window that goes while the tree is walked ends the walk; then it is walked again."""
        for _ in range(20):
            try:
                return self._desk.run('xwininfo', '-root', '-tree')
            except DeskError as error:
                if 'Bad' not in str(error):
                    raise
        return self._desk.run('xwininfo', '-root', '-tree')

    def _viewable(self, window):
        return 'IsViewable' in self._desk.run('xwininfo', '-id', window, check=False)

    def widgets(self, app=''):
        """Every accessible widget of a program as a dictionary (see programs/widgets.py)."""
        return self._accessible('list', app)

    def shown(self, app, title):
        """{role: [names]} of what the window of this title shows; empty when it is not on the screen."""
        return self._accessible('shown', app, title)

    def find(self, app, name, role=None):
        """Waits for the widget and returns its box."""
        return wait_for(lambda: self._accessible('find', app, name, *([role] if role else [])),
                        '%s %r on the screen' % (app, name))

    def _accessible(self, *words):
        return json.loads(self._desk.pythons.run(parts.program('widgets.py'), *words))

    # ------------------------------------------------------------------ pressing

    def press(self, x, y, button='left'):
        self._desk.run('xdotool', 'mousemove', str(int(x)), str(int(y)))
        # The window under the pointer must know it before the button comes down.
        wait_for(lambda: self.pointer() == (int(x), int(y)), 'the pointer at %d,%d' % (x, y))
        self._desk.run('xdotool', 'click', str(BUTTONS[button]))

    def press_box(self, box, button='left'):
        self.press(box[0] + box[2] // 2, box[1] + box[3] // 2, button)

    def pointer(self):
        place = dict(p.split(':') for p in self._desk.run('xdotool', 'getmouselocation').split())
        return int(place['x']), int(place['y'])

    def keys(self, *names):
        self._desk.run('xdotool', 'key', '--delay', '40', *names)

    def type(self, text):
        self._desk.run('xdotool', 'type', '--delay', '20', text)

    def press_widget(self, app, name, role=None):
        self.press_box(self.find(app, name, role))

    def act(self, app, name, role=None, action=None, description=None):
        """A widget's own first action, or that one, as a screen reader does it; no pointer."""
        words = [role, action, description]
        while words and words[-1] is None:
            words.pop()
        wait_for(lambda: self._accessible('do', app, name, *words), '%s %r to act' % (app, name))

    def write(self, app, name, role, text):
        """Replaces a widget's text, as a screen reader does it."""
        wait_for(lambda: self._accessible('write', app, name, role, text), '%s %r to be written' % (app, name))

    # ------------------------------------------------------------------ the panel's status items

    def tray(self):
        """The boxes of the status items, left to right: embedded windows and drawn items alike."""
        finder = {'xfce': self._tray_xfce, 'lxqt': self._tray_lxqt}.get(self._desk.options['panel'])
        if finder is None:
            raise DeskError('there is no panel')
        return sorted(finder())

    def _tray_xfce(self):
        """The status area is a window of its own. Embedded windows are visible in it; the items that
        it draws itself share the room between them. (They are accessible buttons too, but in one of
        four starts the panel leaves its plugins out of the tree.)"""
        embedded = sorted(self._embedded('xfce4-panel'))
        items = list(embedded)
        drawn = len(self._registered_items())
        for _, (x, y, width, height) in self.windows(r'"Wrapper-2\.0"\)'):
            if not drawn:
                break
            # An embedded window has the same room around it on all sides.
            edges = [x] + [e for box in embedded for e in (box[0] - (height - box[3]) // 2,
                                                           box[0] + box[2] + (height - box[3]) // 2)] + [x + width]
            gaps = [(left, right) for left, right in zip(edges[::2], edges[1::2]) if right > left]
            share = sum(right - left for left, right in gaps) / drawn
            for left, right in gaps:
                count = round((right - left) / share)
                items += [[left + (right - left) * i // count, y, (right - left) // count, height] for i in range(count)]
        return items

    def _registered_items(self):
        if not self._desk.session.owner(parts.WATCHER):
            return []
        items = self._desk.session.get(parts.WATCHER, '/StatusNotifierWatcher', parts.WATCHER,
                                       'RegisteredStatusNotifierItems')
        # xfce's watcher never forgets an item that left the bus before it was looked at; none is drawn.
        return [item for item in items if self._desk.session.owner(item.split('/')[0])]

    def _tray_lxqt(self):
        return self._drawn_in('lxqt-panel', ('push button', 'menu button')) + self._embedded('lxqt-panel')

    def _drawn_in(self, panel, roles):
        return [w['box'] for w in self.widgets(panel)
                if w['showing'] and w['role'] in roles and w['box'][2] > 0]

    def _embedded(self, panel):
        """Windows of other programs inside the panel: items that came through the older protocol."""
        windows = self.windows()
        bars = [box for label, box in windows if '("%s"' % panel in label and box[2] > 100]
        own = re.compile(r'"(wrapper-2\.0|xfce4-panel|lxqt-panel|xfwm4|openbox)"')
        return [box for label, box in windows if not own.search(label) and box[2] > 4
                and any(_inside(box, bar) for bar in bars)]

    def press_tray(self, button='left', number=0):
        self.press_box(self.tray_item(number), button)

    def tray_item(self, number=0):
        """Waits until the item is there and has come to rest, and returns its box."""
        return self._at_rest(lambda: self.tray()[number:number + 1], 'status item %d' % number)

    def _at_rest(self, look, what):
        """What has just appeared still moves for a moment, and a click would miss it or hit its
        neighbour: waits until two looks find the same box."""
        before = []

        def found():
            now = look()[:1]
            if now and now == before:
                return now[0]
            before[:] = now
            return None
        return wait_for(found, what, every=0.1)

    def choose_menu(self, label, number=0):
        """Opens the item's menu with the right button and chooses an entry with the keyboard."""
        names = self.menu_labels(number)
        if label not in names:
            raise DeskError('the menu holds %r' % names)
        before = len(self.windows())
        self.press_tray('right', number)
        wait_for(lambda: len(self.windows()) > before, 'the menu to open')
        self.keys(*(['Down'] * (names.index(label) + 1)), 'Return')

    def menu_labels(self, number=0):
        """What the item's menu offers now: the enabled entries, as the panel is told them."""
        bus = self._desk.session
        items = self._registered_items()
        if number >= len(items):
            raise DeskError('there are %d status items' % len(items))
        item = items[number]
        name, path = item.split('/', 1) if '/' in item else (item, 'StatusNotifierItem')
        menu = bus.get(name, '/' + path, 'org.kde.StatusNotifierItem', 'Menu')
        _revision, (_id, _properties, entries) = bus.call(name, menu, 'com.canonical.dbusmenu', 'GetLayout', '(iias)',
                                                          0, 1, [])
        entries = [entry[1] for entry in entries]
        return [e.get('label', '').replace('_', '') for e in entries
                if e.get('visible', True) and e.get('enabled', True) and e.get('type') != 'separator']

    # ------------------------------------------------------------------ notification bubbles

    def bubbles(self):
        """The boxes of the bubbles on screen."""
        pattern = {'xfce': r'"[Xx]fce4-notifyd"\)', 'dunst': r'"[Dd]unst"\)'}[self._desk.options['notify']]
        return [box for _, box in self.windows(pattern) if box[2] > 50]

    def press_bubble(self, label):
        """An action's button by its label; "body" is the bubble itself, "close" closes it."""
        if self._desk.options['notify'] == 'xfce' and label not in ('body', 'close'):
            return self.press_widget('xfce4-notifyd', label)
        x, y, width, height = self._at_rest(self.bubbles, 'a bubble')
        if self._desk.options['notify'] == 'xfce':
            return self.press(x + width // 2, y + 15, 'left')
        # dunst draws no buttons: left takes the default action, middle opens a menu of all actions
        # (programs/dunst-pick answers it), right closes.
        with open(os.path.join(self._desk.env['XDG_RUNTIME_DIR'], 'dunst-choice'), 'w') as f:
            f.write(label)
        self.press(x + width // 2, y + height // 2, {'body': 'left', 'close': 'right'}.get(label, 'middle'))


def _inside(box, frame):
    x, y = box[0] + box[2] // 2, box[1] + box[3] // 2
    return frame[0] <= x < frame[0] + frame[2] and frame[1] <= y < frame[1] + frame[3]
