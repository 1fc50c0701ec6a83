#!/usr/bin/python3
"""widgets.py: reads the accessible tree of the desk, as a screen reader does. Answers in JSON.

  shown APP WINDOW          {role: [names]} of the named widgets on screen in the window of that title
  list [APP]                every widget: app, depth, role, name, description, text, value, box, actions, showing, states
  find APP NAME [ROLE]      the box [x, y, width, height] of a widget on screen; null when there is none
  do APP NAME [ROLE [ACTION [DESCRIPTION]]]
                            its first action, or that one, without the pointer; false when there is none
  write APP NAME ROLE TEXT  replaces its text; false when it has none to be written

APP is a part of the program's accessible name; "" is every program.
"""
import json
import sys
import warnings

warnings.simplefilter('ignore')
import gi
gi.require_version('Atspi', '2.0')
from gi.repository import Atspi, GLib


def programs(name):
    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        app = desktop.get_child_at_index(i)
        if app is not None and name in (app.get_name() or ''):
            yield app


def tree(widget, depth=0, only_showing=False):
    """The widget and all below it; what is in a widget that does not show does not show either."""
    try:
        if only_showing and not has(widget, Atspi.StateType.SHOWING):
            return
    except GLib.Error:
        return
    yield widget, depth
    try:
        count = widget.get_child_count()
    except GLib.Error:
        return  # it went away while we looked
    for i in range(min(count, 300)):
        try:
            child = widget.get_child_at_index(i)
        except GLib.Error:
            continue
        if child is not None and depth < 25:
            yield from tree(child, depth + 1, only_showing)


def has(widget, state):
    return widget.get_state_set().contains(state)


def role_of(widget):
    """In the words of Debian 12; later versions of at-spi say "button"."""
    role = widget.get_role_name()
    return 'push button' if role == 'button' else role


def box(widget):
    component = widget.get_component_iface()
    if component is None:
        return None
    e = component.get_extents(Atspi.CoordType.SCREEN)
    return [e.x, e.y, e.width, e.height]


def actions(widget):
    action = widget.get_action_iface()
    return [action.get_action_name(i) for i in range(action.get_n_actions())] if action else []


def found(app, name, role=None, description=None):
    for program in programs(app):
        for widget, _ in tree(program):
            try:
                if widget.get_name() == name and role in (None, role_of(widget)) \
                        and description in (None, widget.get_description()) \
                        and has(widget, Atspi.StateType.SHOWING):
                    return widget
            except GLib.Error:
                continue
    return None


def described(program, widget, depth):
    text, value = widget.get_text_iface(), widget.get_value_iface()
    return {'app': program.get_name(), 'depth': depth, 'role': role_of(widget), 'name': widget.get_name(),
            # An older method of the accessible itself has the same name.
            'text': Atspi.Text.get_text(text, 0, Atspi.Text.get_character_count(text)) if text else None,
            'value': value.get_current_value() if value else None,
            'description': widget.get_description(), 'box': box(widget), 'actions': actions(widget), 'showing': has(widget, Atspi.StateType.SHOWING),
            'checked': has(widget, Atspi.StateType.CHECKED), 'enabled': has(widget, Atspi.StateType.ENABLED),
            'focused': has(widget, Atspi.StateType.FOCUSED)}


def acted(widget, name=None):
    names = actions(widget) if widget else []
    if not names or (name and name not in names):
        return False
    return widget.get_action_iface().do_action(names.index(name) if name else 0)


def written(widget, text):
    editable = widget.get_editable_text_iface() if widget else None
    return bool(editable and editable.set_text_contents(text))


def listed(app=''):
    result = []
    for program in programs(app):
        for widget, depth in tree(program):
            try:
                result.append(described(program, widget, depth))
            except GLib.Error:
                continue
    return result


def shown(app, title):
    """Asks for nothing else, as tests call it again and again."""
    result = {}
    for program in programs(app):
        for i in range(program.get_child_count()):
            window = program.get_child_at_index(i)
            if window is None or window.get_name() != title:
                continue
            for widget, _ in tree(window, 1, only_showing=True):
                try:
                    name = widget.get_name()
                    if name:
                        result.setdefault(role_of(widget), []).append(name)
                except GLib.Error:
                    continue
    return result


def main(word, *rest):
    if word == 'list':
        return listed(*rest)
    if word == 'shown':
        return shown(*rest)
    app, name, role, what, description = (list(rest) + [None] * 3)[:5]
    if word == 'find':
        widget = found(app, name, role)
        return box(widget) if widget else None
    if word == 'do':
        return acted(found(app, name, role, description), what)
    if word == 'write':
        return written(found(app, name, role), what)
    sys.exit('unknown command ' + word)


print(json.dumps(main(*sys.argv[1:])))
