#!/usr/bin/python3
"""Walks the program's accessibility tree as a screen reader does (AT-SPI).

Starts the program, opens every screen by pressing its buttons and menu
items through the accessibility interface (as a screen reader user would),
then walks every window and reports:
  - windows whose role is not frame (or dialog, or alert for a message box);
  - objects a reader can land on that have no name;
  - scroll bars without a value description;
  - drawings (role canvas) whose description does not start with a summary.

Run it on an X display with a session bus, for example:

    Xvfb :13 -screen 0 1280x900x24 &
    DISPLAY=:13 dbus-run-session -- /usr/bin/python3 tools/a11y_walk.py build/release/refraction

It exits with 0 when nothing was found, 1 otherwise; --verbose lists every
window and drawing with its description.
"""

import argparse
import os
import subprocess
import sys
import time

import pyatspi

QUIET_ROLES = {
    pyatspi.ROLE_SEPARATOR,
    pyatspi.ROLE_MENU_BAR,
    pyatspi.ROLE_POPUP_MENU,
    pyatspi.ROLE_TOOL_TIP,
}


def start_program(path):
    env = dict(os.environ)
    env.update({"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_ACCESSIBILITY": "1", "QT_QPA_PLATFORM": "xcb"})
    path = os.path.abspath(path)
    return subprocess.Popen([path], env=env, cwd=os.path.dirname(path))


def find_application(pid, timeout=30.0):
    deadline = time.time() + timeout
    while time.time() < deadline:
        desktop = pyatspi.Registry.getDesktop(0)
        for k in range(desktop.childCount):
            app = desktop.getChildAtIndex(k)
            try:
                if app is not None and app.get_process_id() == pid and app.childCount > 0:
                    return app
            except Exception:
                pass
        time.sleep(0.5)
    return None


def states(obj):
    try:
        return obj.getState()
    except Exception:
        return None


def showing(obj):
    s = states(obj)
    return s is not None and s.contains(pyatspi.STATE_SHOWING)


def children(obj):
    try:
        return [obj.getChildAtIndex(k) for k in range(obj.childCount)]
    except Exception:
        return []


def walk(obj, visit, depth=0):
    if obj is None or depth > 40:
        return
    visit(obj)
    for child in children(obj):
        walk(child, visit, depth + 1)


def windows(app):
    return [w for w in children(app) if w is not None and showing(w)]


def find(root, role, name_part):
    """The first showing object of the role whose name contains name_part."""
    found = []

    def visit(obj):
        if found or obj.getRole() != role:
            return
        if name_part.lower() in (obj.name or "").lower():
            found.append(obj)

    for w in ([root] if root.getRole() != pyatspi.ROLE_APPLICATION else windows(root)):
        walk(w, visit)
        if found:
            return found[0]
    return None


def act(obj, label):
    """Presses or clicks the object by its first action."""
    if obj is None:
        print("  (not found: %s)" % label)
        return False
    try:
        action = obj.queryAction()
        action.doAction(0)
    except Exception as error:  # a reader's action can fail like any other
        print("  (could not act on %s: %s)" % (label, error))
        return False
    time.sleep(1.2)
    return True


def press(app, name_part):
    return act(find(app, pyatspi.ROLE_PUSH_BUTTON, name_part), name_part)


def press_by_keyboard(app, window_part, name_part):
    """Focuses a button through the accessibility interface and presses it
    with the space bar (xdotool): a button that opens a modal box would hold
    a reader's action call until the box is closed."""
    button = find(app, pyatspi.ROLE_PUSH_BUTTON, name_part)
    if button is None:
        print("  (not found: %s)" % name_part)
        return False
    try:
        subprocess.run(["xdotool", "search", "--onlyvisible", "--name", window_part, "windowactivate", "--sync"], check=False,
                       timeout=10)
        time.sleep(0.5)
        button.queryComponent().grabFocus()
        time.sleep(0.5)
        subprocess.run(["xdotool", "key", "space"], check=False)
    except Exception as error:
        print("  (could not press %s: %s)" % (name_part, error))
        return False
    time.sleep(1.5)
    return True


def close_box():
    subprocess.run(["xdotool", "key", "Escape"], check=False)
    time.sleep(1.0)


def menu_item(app, menu_part, item_part):
    """Chooses a menu item by its action, as a reader does: the menu's title
    is a menu item whose child is the popup menu with the items."""
    title = None
    for w in windows(app):
        found = []

        def visit(obj):
            if not found and obj.getRole() == pyatspi.ROLE_MENU_ITEM and obj.childCount > 0 and \
                    menu_part.lower() in (obj.name or "").lower():
                found.append(obj)

        walk(w, visit)
        if found:
            title = found[0]
            break
    if title is None:
        # A command of the menu bar itself, with no menu under it.
        for w in windows(app):
            found = []

            def command(obj):
                if not found and obj.getRole() == pyatspi.ROLE_MENU_ITEM and obj.childCount == 0 and \
                        item_part.lower() in (obj.name or "").lower():
                    found.append(obj)

            walk(w, command)
            if found:
                return act(found[0], item_part)
        print("  (no menu %s)" % menu_part)
        return False
    for popup in children(title):
        for item in children(popup):
            if item is not None and item_part.lower() in (item.name or "").lower():
                return act(item, item_part)
    print("  (no item %s in %s)" % (item_part, menu_part))
    return False


# The screens a pupil opens, in groups that are on the screen together:
# opening the next group may hide the windows of the one before, so each
# group is walked as soon as it is open.
def phases(app):
    yield "main menu", lambda: None
    yield "bench", lambda: (press(app, "SEMICIRCLE"), menu_item(app, "DIRECTION", "TO THE LEFT"),
                            press(app, "RAYS FOR"), press(app, "LIST OF DATA"))
    yield "mean error", lambda: menu_item(app, "BEST SEMICIRCLE", "BEST SEMICIRCLE")
    yield "a typed angle's box", lambda: press_by_keyboard(app, "^SIMULATION", "GIVE INCIDENCE ANGLE")
    yield "history", lambda: (close_box(), press(app, "SHORT HISTORY"))
    yield "a message box", lambda: (press(app, "ANALYSIS OF DATA"),
                                    press_by_keyboard(app, "^DATA  ", "Data Analysis"))  # no pairs yet: a message
    yield "data and graphs", lambda: (close_box(), menu_item(app, "HISTORICAL DATA", "PTOLEMY: GLASS"),
                                      menu_item(app, "MODELS", "Kepler"))
    yield "Ptolemy's instrument", lambda: menu_item(app, "INSTRUMENTS", "PTOLEMY'S INSTRUMENT")
    yield "Al Haytham", lambda: (menu_item(app, "INSTRUMENTS", "AL HAYTHAM"), press(app, "HIDE ΠΙΣΩ"))
    yield "Ptolemy's fitting", lambda: menu_item(app, "HISTORICAL DATA", "DATA MANIPULATION")
    yield "interpretation", lambda: press(app, "INTERPRETATION")
    yield "Fermat", lambda: menu_item(app, "FERMAT'S PRINCIPLE", "FERMAT'S PRINCIPLE")
    yield "index and velocities", lambda: menu_item(app, "INDEX  Δείκτης", "INDEX AND VELOCITIES")


class Findings:
    """What the walks found, over every window seen in any phase."""

    def __init__(self):
        self.windows = {}  # window title -> role name
        self.unnamed, self.undescribed_bars, self.bare_drawings, self.objects = set(), set(), set(), set()
        self.drawings, self.bars = {}, {}
        self.table_corners = set()

    def walk_windows(self, app):
        for window in windows(app):
            self.windows[window.name] = window.getRoleName()
            self.walk_window(window)

    def walk_window(self, window):
        def visit(obj):
            if not showing(obj) or obj.getRole() in QUIET_ROLES:
                return
            name = (obj.name or "").strip()
            role = obj.getRole()
            parent = obj.parent
            where = "%s '%s' (in %s '%s') in '%s'" % (obj.getRoleName(), name, parent.getRoleName() if parent else "",
                                                     (parent.name or "")[:40] if parent else "", window.name)
            self.objects.add("%s #%d of '%s'" % (where, obj.getIndexInParent(), obj.parent.name if obj.parent else ""))
            if obj.childCount == 0 and not name:
                text = ""
                if role == pyatspi.ROLE_LABEL:
                    try:
                        t = obj.queryText()
                        text = t.getText(0, t.characterCount)
                    except Exception:
                        text = ""
                if parent is not None and parent.getRole() == pyatspi.ROLE_TABLE and role == pyatspi.ROLE_PANEL \
                        and obj.getIndexInParent() == 0:
                    # Qt's corner cell of a table (above the row headers) has
                    # no name, and Qt offers no public way to give it one.
                    self.table_corners.add(where)
                elif role != pyatspi.ROLE_LABEL or text:  # an empty label says nothing to anyone
                    self.unnamed.add(where)
            description = (obj.description or "").strip()
            if role == pyatspi.ROLE_SCROLL_BAR:
                self.bars[where] = description
                if not description:
                    self.undescribed_bars.add(where)
            if role == pyatspi.ROLE_CANVAS:
                self.drawings[where] = description
                if not description:
                    self.bare_drawings.add(where)

        walk(window, visit)

    def report(self, verbose):
        if verbose:
            for name, role in sorted(self.windows.items()):
                print("window: %s '%s'" % (role, name))
            for where, description in sorted(self.drawings.items()):
                print("  %s: %s" % (where, description.split("\n")[0][:200]))
            for where, description in sorted(self.bars.items()):
                print("  %s: %s" % (where, description))
        # A message box is an alert: a kind of dialog whose text a reader
        # speaks as soon as it appears.
        wrong = ["%s '%s'" % (role, name) for name, role in self.windows.items()
                 if role not in ("frame", "dialog", "alert")]
        print("windows: %d, objects walked: %d, drawings: %d, scroll bars: %d"
              % (len(self.windows), len(self.objects), len(self.drawings), len(self.bars)))
        for title, items in (("windows with a wrong role", wrong), ("objects without a name", self.unnamed),
                             ("scroll bars without a value description", self.undescribed_bars),
                             ("drawings without a description", self.bare_drawings)):
            print("%s: %d" % (title, len(items)))
            for item in sorted(items):
                print("  " + item)
        if self.table_corners:
            print("(Qt's unnamed corner cells of tables, not counted: %d)" % len(self.table_corners))
        return not (wrong or self.unnamed or self.undescribed_bars or self.bare_drawings)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("program", help="the program to start, e.g. build/release/refraction")
    parser.add_argument("--verbose", action="store_true")
    args = parser.parse_args()

    program = start_program(args.program)
    try:
        app = find_application(program.pid)
        if app is None:
            print("the program did not appear on the accessibility bus")
            return 2
        time.sleep(1.0)
        findings = Findings()
        for name, opening in phases(app):
            print("opening: " + name)
            opening()
            time.sleep(1.0)
            findings.walk_windows(app)
        return 0 if findings.report(args.verbose) else 1
    finally:
        program.terminate()
        try:
            program.wait(timeout=10)
        except subprocess.TimeoutExpired:
            program.kill()


if __name__ == "__main__":
    sys.exit(main())
