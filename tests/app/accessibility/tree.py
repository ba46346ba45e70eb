"""What a screen reader sees: the accessibility tree of the application, and the events of it."""

import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

Role = Atspi.Role
State = Atspi.StateType

# What a user works with. All else groups or tells.
CONTROLS = {
    Role.CHECK_BOX, Role.CHECK_MENU_ITEM, Role.COMBO_BOX, Role.ENTRY, Role.LINK, Role.LIST, Role.LIST_ITEM, Role.MENU,
    Role.MENU_ITEM, Role.PASSWORD_TEXT, Role.PROGRESS_BAR, Role.PUSH_BUTTON, Role.RADIO_BUTTON, Role.RADIO_MENU_ITEM,
    Role.SLIDER, Role.SPIN_BUTTON, Role.TABLE, Role.TABLE_CELL, Role.TEXT, Role.TOGGLE_BUTTON, Role.TREE,
    Role.TREE_ITEM, Role.DIALOG, Role.FRAME, Role.ALERT, Role.PAGE_TAB,
}


def until(condition, what, limit=15):
    """What the condition answers once that is true; events are taken meanwhile."""
    end = time.monotonic() + limit
    loop = GLib.MainContext.default()
    while True:
        answer = condition()
        if answer:
            return answer
        assert time.monotonic() < end, f"in vain waited for {what}"
        wake = GLib.timeout_add(20, lambda: False)
        loop.iteration(True)
        if loop.find_source_by_id(wake):
            GLib.source_remove(wake)


class Node:
    """An object of the tree as it was when it was read."""

    def __init__(self, accessible, parent=None):
        self.accessible = accessible
        self.parent = parent
        self.role = accessible.get_role()
        self.name = accessible.get_name() or ""
        states = accessible.get_state_set()
        self.is_showing = states.contains(State.SHOWING)
        self.has = states.contains
        count = accessible.get_child_count()
        children = (accessible.get_child_at_index(number) for number in range(count))
        self.children = [Node(child, self) for child in children if child]

    def all(self):
        yield self
        for child in self.children:
            yield from child.all()

    def showing(self):
        return [node for node in self.all() if node.is_showing]

    def controls(self):
        return [node for node in self.showing() if node.role in CONTROLS]

    def find(self, role, name=None):
        for node in self.showing():
            if node.role == role and name in (None, node.name):
                return node
        return None

    def names(self, role):
        return [node.name for node in self.showing() if node.role == role]

    def path(self):
        own = f"{self.accessible.get_role_name()} “{self.name}”"
        return f"{self.parent.path()} > {own}" if self.parent else own

    def __repr__(self):
        return self.path()


class Application:
    def __init__(self, name="Veilkeep"):
        self.name = name
        self.focused = []
        self.listener = Atspi.EventListener.new(self._took_focus)
        self.listener.register("object:state-changed:focused")
        self.root = until(self._find, f"{name} on the accessibility bus")

    def _find(self):
        desktop = Atspi.get_desktop(0)
        for number in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(number)
            if child and child.get_name() == self.name:
                return child
        return None

    def _took_focus(self, event):
        if event.detail1:
            self.focused.append((event.source.get_role(), event.source.get_name() or ""))

    def windows(self):
        """Those that can be seen, as they are now."""
        self.root.clear_cache()
        try:
            return [node for node in Node(self.root).children if node.is_showing]
        except GLib.Error:  # something went while it was read
            return []

    def window(self, name=None, role=None):
        for node in self.windows():
            if name in (None, node.name) and role in (None, node.role):
                return node
        return None

    def wait_for(self, role, name=None, within=None):
        """The first object of all windows, or of that window, with that role and name."""

        def look():
            for window in self.windows():
                found = window.find(role, name) if within in (None, window.name) else None
                if found:
                    return found
            return None

        return until(look, f"{role.value_nick} {name or ''}")

    def focus_after(self, act):
        """Which object tells that it took the focus after that; the last where several do."""
        self.focused.clear()
        act()
        until(lambda: self.focused, "the focus")
        return self.focused[-1]

    def gets_focus(self, name, act):
        """Whether one whose name begins so tells that it took the focus after that, whichever did before or after."""
        self.focused.clear()
        act()
        try:
            return until(lambda: any(each.startswith(name) for _, each in self.focused), name, limit=5)
        except AssertionError:
            return False
