#!/usr/bin/python3
# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: GPL-2.0-or-later

"""halvane as a screen reader reads it, from outside, through the desktop's
accessibility bus on an X server of the test's own.

One run of halvane, opened with the panel's message box over it, is read and
worked the way a blind technician's reader does: the box is read and its OK
pressed, NV Read is pressed and its progress read, pages are chosen through
the tree's selection, through a node's action and with the arrow keys, and a
double click on a value opens its editor, which takes the focus. Usage: ScreenReaderTest.py HALVANE
"""

import os
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "support"))
from reader_session import SKIPPED, ReaderSession, missing_packages, wait_for  # noqa: E402

MESSAGE = "LOCK_CODE would be changed according to MDN"
COMMAND_BUTTONS = ["NV Read", "NV Write", "Exit", "Restore", "Minimize", "Close"]
KEY_DOWN = 0xFF54  # the X keysym of the arrow key

failures = []


def expect(condition, what):
    if not condition:
        failures.append(what)
        print("FAILED: " + what, flush=True)
    return condition


class Reader:
    """What a screen reader asks of the bus, through pyatspi."""

    def __init__(self, pyatspi):
        self.atspi = pyatspi

    def application(self, name):
        desktop = self.atspi.Registry.getDesktop(0)
        for index in range(desktop.childCount):
            app = desktop.getChildAtIndex(index)
            if app is not None and app.name == name and app.childCount > 0:
                return app
        return None

    @staticmethod
    def children(node):
        node.clearCache()
        return [child for child in (node.getChildAtIndex(i) for i in range(node.childCount)) if child is not None]

    def states(self, node):
        node.clearCache()
        return set(node.getState().getStates())

    def showing(self, node):
        return self.atspi.STATE_SHOWING in self.states(node)

    def descendants(self, node, stop_at=("table", "tree", "list")):
        """Every object below `node`, not looking inside tables, trees and lists."""
        found = []
        for child in self.children(node):
            found.append(child)
            if child.getRoleName() not in stop_at:
                found += self.descendants(child, stop_at)
        return found

    @staticmethod
    def actions(node):
        try:
            action = node.queryAction()
        except NotImplementedError:
            return []
        return [action.getName(i) for i in range(action.nActions)]

    def act(self, node, name):
        actions = self.actions(node)
        if not expect(name in actions, "%s '%s' offers the action %s (it has %s)"
                      % (node.getRoleName(), node.name, name, actions)):
            return False
        return node.queryAction().doAction(actions.index(name))

    def find(self, root, role, name=None):
        for node in self.descendants(root):
            if node.getRoleName() == role and (name is None or node.name == name):
                return node
        return None

    def focused(self, root):
        """The object with the focus, looked for along what shows."""
        for node in self.children(root):
            states = self.states(node)
            if self.atspi.STATE_FOCUSED in states:
                return node
            if self.atspi.STATE_SHOWING in states and node.getRoleName() not in ("table", "list"):
                found = self.focused(node)
                if found is not None:
                    return found
        return None

    def listen_for_focus(self):
        """Records the names of the objects the application tells have taken the focus."""
        told = []

        def record(event):
            if event.detail1 == 1:
                told.append(event.source.name)

        self.atspi.Registry.registerEventListener(record, "object:state-changed:focused")
        return told

    @staticmethod
    def take_events():
        from gi.repository import GLib
        while GLib.MainContext.default().iteration(False):
            pass

    def press_key(self, keysym):
        self.atspi.Registry.generateKeyboardEvent(keysym, None, self.atspi.KEY_SYM)


def read_message_box(reader, app):
    box = wait_for("the message box", lambda: next(
        (w for w in reader.children(app) if w.getRoleName() in ("dialog", "alert") and reader.showing(w)), None))
    expect(box.description == MESSAGE, "the box's description is its text, not '%s'" % box.description)
    expect(box.name == "Halvane", "the box is named after the application, not '%s'" % box.name)
    shown = [child for child in reader.children(box) if reader.showing(child)]
    buttons = [child for child in shown if child.getRoleName() == "push button"]
    expect([b.name for b in buttons] == ["OK"],
           "the box shows one button, OK, not %s" % [(c.getRoleName(), c.name) for c in shown])
    expect(all(c.getRoleName() in ("image", "label", "push button") for c in shown),
           "the box shows nothing but its picture, text and button: %s" % [c.getRoleName() for c in shown])
    if buttons:
        ok = buttons[0]
        expect(reader.atspi.STATE_FOCUSED in reader.states(ok), "OK has the focus when the box opens")
        reader.act(ok, "Press")
    return box


def read_editor(reader, window):
    """A double click on the NAM's name, as a reader routes the pointer, opens
    its editor, which takes the focus and is named after the item."""
    page = expect_page(reader, window, "System NAM1")
    if page is None:
        return
    table = page.queryTable()
    row = 2
    cell = table.getAccessibleAt(row, 0)
    place = cell.queryComponent().getExtents(reader.atspi.DESKTOP_COORDS)
    middle = (place.x + place.width // 2, place.y + place.height // 2)
    # A click makes it the current cell, then a double click opens it.
    reader.atspi.Registry.generateMouseEvent(*middle, "b1c")
    wait_for("the cell to be the current one", lambda: reader.atspi.STATE_FOCUSED in reader.states(cell), 10)
    time.sleep(1)  # past the double-click interval
    reader.atspi.Registry.generateMouseEvent(*middle, "b1d")
    editor = wait_for("an editor to take the focus",
                      lambda: (lambda f: f if f is not None and f.getRoleName() in ("text", "combo box") else None)(
                          reader.focused(window)), 10)
    # A text editor is named after its value; a list's name is its choice,
    # and what it stands for is its description.
    told = editor.name if editor.getRoleName() == "text" else editor.description
    title = table.getRowHeader(row).name
    expect(title and told == title + ", VALUE1", "the editor tells its item %s, not '%s'" % (title, told))


def read_buttons_and_progress(reader, window):
    for name in COMMAND_BUTTONS:
        button = reader.find(window, "push button", name)
        if expect(button is not None, "a push button named %s" % name):
            expect("Press" in reader.actions(button), "%s can be pressed" % name)
    bar = reader.find(window, "progress bar")
    if not expect(bar is not None, "a progress bar"):
        return
    value = bar.queryValue()
    expect(value.maximumValue == 100, "the bar counts to 100")
    reader.act(reader.find(window, "push button", "NV Read"), "Press")
    wait_for("NV Read to reach 100 %", lambda: bar.clearCache() or bar.queryValue().currentValue == 100, 30)


def pages_on_view(reader, window):
    return [table for table in reader.descendants(window)
            if table.getRoleName() == "table" and reader.showing(table)]


def expect_page(reader, window, node_name):
    """Exactly one table shows, named after the node, with its titles."""
    try:
        tables = wait_for("the page %s" % node_name, lambda: (lambda shown: shown if [t.name for t in shown] == [
            node_name] else None)(pages_on_view(reader, window)), 10)
    except AssertionError:
        expect(False, "one table showing, named %s, not %s" % (node_name,
                                                                [t.name for t in pages_on_view(reader, window)]))
        return None
    table = tables[0].queryTable()
    expect(table.nRows > 0 and table.nColumns > 0, "the page %s has values" % node_name)
    titles = [table.getRowHeader(row).name if table.getRowHeader(row) else "" for row in range(table.nRows)]
    expect(all(titles), "every row of %s has its item's title as header: %s" % (node_name, titles))
    column = table.getColumnHeader(0)
    expect(column is not None and column.name, "the value column of %s has a header" % node_name)
    values = [table.getAccessibleAt(row, 0).name for row in range(table.nRows)]
    expect(any(values), "the page %s shows values after NV Read: %s" % (node_name, values))
    return tables[0]


def read_tree(reader, window):
    tree = reader.find(window, "tree")
    if not expect(tree is not None, "a tree of pages"):
        return
    nodes = reader.children(tree)
    names = [node.name for node in nodes]
    expect(all(node.getRoleName() in ("tree item", "table cell") for node in nodes) and "1" not in names,
           "the tree's children are its nodes alone: %s" % [(n.getRoleName(), n.name) for n in nodes])
    expect(len(nodes) == tree.queryTable().nRows, "one child for each row of the tree")
    for node in nodes:
        expect("Press" in reader.actions(node), "the node %s can be pressed: %s" % (node.name, reader.actions(node)))
    parent = nodes[names.index("MIP Profile")]
    expect(reader.atspi.STATE_EXPANDED in reader.states(parent), "MIP Profile tells it is expanded")
    leaf = nodes[names.index("General")]
    expect(reader.atspi.STATE_EXPANDABLE not in reader.states(leaf), "General has nothing to expand")
    reader.act(parent, "Collapse")
    collapsed = wait_for("MIP Profile to collapse", lambda: reader.atspi.STATE_EXPANDED not in reader.states(parent))
    expect(collapsed and "MIP Profile 0" not in [n.name for n in reader.children(tree)],
           "a collapsed node's children are not read")
    reader.act(parent, "Expand")
    wait_for("MIP Profile to expand", lambda: [n.name for n in reader.children(tree)] == names)

    # Chosen through the tree's selection, as a reader's "select this node".
    table = tree.queryTable()
    for page in ("General", "System NAM1"):
        table.addRowSelection(names.index(page))
        expect_page(reader, window, page)
        expect(table.isRowSelected(names.index(page)), "the selection holds " + page)
        if page == "System NAM1":
            read_editor(reader, window)

    # Chosen by the node's action, as a click chooses it.
    reader.act(nodes[names.index("System NAM2")], "Press")
    expect_page(reader, window, "System NAM2")

    # Chosen with the arrow keys, the tree having the focus.
    tree.queryComponent().grabFocus()
    wait_for("the tree to take the focus", lambda: reader.atspi.STATE_FOCUSED in reader.states(tree), 10)
    told = reader.listen_for_focus()
    reader.press_key(KEY_DOWN)
    following = names[names.index("System NAM2") + 1]
    expect_page(reader, window, following)
    try:
        wait_for("the focus to be told", lambda: reader.take_events() or following in told, 5)
    except AssertionError:
        expect(False, "the tree tells the focus is on %s, not on %s" % (following, told))
    focused = reader.focused(tree)
    expect(focused is not None and focused.name == following,
           "the focus is on the node %s, not %s" % (following, focused and focused.name))


def main():
    missing = missing_packages()
    if missing:
        print("SKIPPED: reading through the accessibility bus needs the Debian packages " + ", ".join(missing)
              + " (scripts/deps installs them)")
        return SKIPPED
    session = ReaderSession()
    try:
        session.become_reader()
        import pyatspi
        reader = Reader(pyatspi)
        halvane = session.start([sys.argv[1], "--state", os.path.join(session.folder, "nv-memory.json"),
                                 "--message", MESSAGE])
        app = wait_for("halvane on the accessibility bus", lambda: reader.application("Halvane"), 30)
        box = read_message_box(reader, app)
        wait_for("the box to close", lambda: box not in [w for w in reader.children(app) if reader.showing(w)], 10)
        window = next(w for w in reader.children(app) if w.name == "Halvane")
        read_buttons_and_progress(reader, window)
        read_tree(reader, window)
        expect(halvane.poll() is None, "halvane is still running")
    except AssertionError as error:
        failures.append(str(error))
        print("FAILED: %s" % error, flush=True)
    finally:
        session.close()
    print("%d failure(s)" % len(failures) if failures else "passed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
