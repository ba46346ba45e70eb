"""What people hear who do not see the application, and what they reach without a mouse: the real program with
real keys on a display and a message bus of the test's own.

usage: accessibility_test.py PROGRAMS SCRATCH [CASE…]"""

import sys

import session as own_session

if reason := own_session.lacking():
    print(f"skipped: {reason}")
    sys.exit(own_session.NOT_AVAILABLE)

from tree import Application, Role, State, until  # noqa: E402

LIST_OF_ITEMS, LIST_OF_GROUPS = "Items", "Groups"

# As it is read: from the top to the bottom of the first column, then the next one.
PANES = ["Add Items…", "Remove Item", "Change Password", "Search", "Hide Info", LIST_OF_GROUPS, "Hide the group", "AutoHide",
         "Add a group", "Remove the group", "Edit the group", "All items", LIST_OF_ITEMS, "Hide Selected Items", "Name", "State",
         "Size", "Created", "Modified", "Where", "Group"]

OF_SELECTED = PANES[PANES.index("Hide Selected Items"):] + ["Remove Item"]

failures = []


def check(condition, message):
    if not condition:
        failures.append(message)
        print("  FAILED:", message, flush=True)


class Cases:
    def __init__(self, session):
        self.keyboard = session.keyboard
        until(self.keyboard.has_window_manager, "the window manager")
        session.start_application()
        self.app = Application()

    # --- What the cases use ---

    def main_window(self):
        return until(lambda: self.app.window("Veilkeep", Role.FRAME), "the main window")

    def has_keyboard(self, name):
        window = self.app.window(name)
        return window and window.has(State.ACTIVE)

    def press(self, *keys):
        for each in keys:
            self.keyboard.press(each)

    def press_for_focus(self, keys):
        return self.app.focus_after(lambda: self.press(keys))

    def check_names(self, where):
        for window in self.app.windows():
            controls = window.controls()
            check(controls, f"{where}: nothing to work with in {window}")
            for control in controls:
                check(control.name.strip(), f"{where}: without a name: {control}")

    def focused_names(self, keys, first):
        """Who takes the focus, from the first one until that has it again."""
        names = []
        for _ in range(60):
            name = self.press_for_focus(keys)[1]
            names.append(name)
            if name == first and len(names) > 1:
                return names
        raise AssertionError(f"{keys} never came back to {first}: {names}")

    def close(self, name, keys="Escape"):
        self.press(keys)
        until(lambda: not self.app.window(name), f"the end of {name}")
        until(lambda: self.has_keyboard("Veilkeep"), "the main window")

    # --- The cases, in their order ---

    def asks_for_the_password(self):
        prompt = "Enter your Veilkeep password:"
        field = self.app.wait_for(Role.PASSWORD_TEXT, prompt)
        until(lambda: self.has_keyboard(prompt), "the keyboard")
        check(field.has(State.FOCUSABLE), "the password cannot be typed")
        self.check_names("password")
        self.keyboard.type("wrong")
        self.press("Return")
        self.app.wait_for(Role.LABEL, "Wrong password:")
        check([self.press_for_focus("Tab")[1] for _ in range(3)] == ["OK", "Cancel", prompt], "Tab in the prompt")
        self.keyboard.type(own_session.PASSWORD)
        self.press("Return")
        self.app.wait_for(Role.TABLE, LIST_OF_ITEMS)
        until(lambda: not self.app.window(prompt) and self.has_keyboard("Veilkeep"), "the main window")

    def reads_both_lists(self):
        self.app.wait_for(Role.TABLE_CELL, "gone.txt, ~/Docs/gone.txt, 4 KB, Not found")  # it was searched
        window = self.main_window()
        check(window.names(Role.TABLE_CELL) == [
            "agreement.txt, ~/Docs/agreement.txt, 4 KB, visible",
            "budget & plan.txt, ~/Docs/budget & plan.txt, 4 KB, visible",
            "contract.txt, ~/Docs/contract.txt, 4 KB, visible",
            "diary.txt, ~/Docs/diary.txt, 4 KB, hidden",
            "gone.txt, ~/Docs/gone.txt, 4 KB, Not found",
            "Letters, ~/Docs/Letters, N/A, hidden",
        ], f"items are read as {window.names(Role.TABLE_CELL)}")
        groups = window.names(Role.LIST_ITEM)
        for text in ("All Files, shown, 6 items", "Taxes, shown, 2 items", "R & D, shown, 0 items, AutoHide"):
            check(text in groups, f"“{text}” is not among {groups}")
        check("6 items · 2 hidden · 1 broken" in window.names(Role.LABEL), "what is shown is not told")

    def names_every_control(self):
        self.check_names("main window")

    def goes_through_the_panes_as_they_are_read(self):
        """Children come in the order of the focus as well."""
        names = [node.name for node in self.main_window().controls() if node.name in PANES and
                 node.has(State.FOCUSABLE)]
        check(names == [name for name in PANES if name in names], f"the tree is read as {names}")

    def takes_the_focus_everywhere(self):
        self.press("F6")  # somewhere that is known
        until(lambda: self.main_window().find(Role.TEXT, "Search").has(State.FOCUSED), "the search")
        self.press_for_focus("F6")
        self.press("Home", "Down", "Down", "Down")  # Taxes
        until(lambda: len(self.main_window().names(Role.TABLE_CELL)) == 2, "the group's items")
        self.press_for_focus("F6")
        self.select_first_item()
        focusable = {node.name for node in self.main_window().controls() if node.has(State.FOCUSABLE) and
                     node.has(State.ENABLED) and node.role not in (Role.TABLE_CELL, Role.LIST_ITEM)}
        focusable -= {"Hidden items", "Visible items", "Broken items"}  # arrows lead to them
        forth = self.focused_names("Tab", LIST_OF_ITEMS)
        check(set(forth) == focusable, f"Tab misses {focusable - set(forth)}, comes to {set(forth) - focusable}")
        expected = PANES[PANES.index(LIST_OF_ITEMS) + 1:] + PANES[:PANES.index(LIST_OF_ITEMS) + 1]
        check(forth == expected, f"Tab goes {forth}")
        back = self.focused_names("Shift+Tab", LIST_OF_ITEMS)
        always = [name for name in forth[:-1] if name not in OF_SELECTED]  # which the group list has cleared
        check(back[:-1] == list(reversed(always)), f"Shift+Tab goes {back}")
        for keys, order in (("F6", ["Name", "Search", LIST_OF_GROUPS, LIST_OF_ITEMS]),
                            ("Shift+F6", [LIST_OF_GROUPS, "Search", LIST_OF_ITEMS]),
                            ("Ctrl+Tab", ["Name", "Search", LIST_OF_GROUPS, LIST_OF_ITEMS])):
            self.select_first_item()
            gone = [self.press_for_focus(keys)[1] for _ in order]
            check(gone == order, f"{keys} goes {gone}")
        self.select_first_item()

    def select_first_item(self):
        """By the keyboard, which is in the table."""
        self.press("Home")
        self.app.wait_for(Role.TEXT, "Where")

    def press_until(self, keys, condition, what):
        """Keys that come while the window is busy are dropped."""
        for _ in range(5):
            self.press(keys)
            try:
                return until(condition, what, limit=3)
            except AssertionError:
                continue
        raise AssertionError(f"{keys} did not lead to {what}")

    def tells_states(self):
        def state(role, name, which):
            return self.app.wait_for(role, name, "Veilkeep").has(which)

        cell = "contract.txt, ~/Docs/contract.txt, 4 KB, visible"
        check(state(Role.TABLE_CELL, cell, State.SELECTED), "the selected row is not told")
        check(not state(Role.CHECK_BOX, "Hide Selected Items", State.CHECKED), "the switch of a visible item is on")
        check(state(Role.LIST_ITEM, "Taxes, shown, 2 items", State.SELECTED), "the current group is not told")
        check(not state(Role.CHECK_BOX, "AutoHide", State.CHECKED), "AutoHide is on for a group without")
        self.press_until("Ctrl+a", lambda: state(Role.CHECK_BOX, "Hide Selected Items", State.INDETERMINATE),
                         "a mixed switch")
        check(state(Role.RADIO_BUTTON, "All items", State.CHECKED), "the filter is not told")
        self.press_until("Ctrl+2", lambda: state(Role.RADIO_BUTTON, "Hidden items", State.CHECKED), "the filter")
        self.press_until("Ctrl+1", lambda: len(self.main_window().names(Role.TABLE_CELL)) == 2, "all items")

    def names_what_menus_offer(self):
        """Those of the bar, open or not."""
        entries = [node for node in self.main_window().find(Role.MENU_BAR).all() if node.role == Role.MENU_ITEM]
        check(len(entries) > 30, f"the menus are {entries}")
        for entry in entries:
            check(entry.name.strip(), f"without a name: {entry}")

    def opens_the_panel_that_adds(self):
        self.press("Ctrl+o")
        opened = self.app.wait_for(Role.DIALOG, "Add Items")
        self.check_names("add panel")
        self.close(opened.name)

    def go_to(self, pane):
        """With F6, from wherever the focus is."""
        def focused():
            roles = (Role.LIST, Role.TABLE, Role.TEXT)
            return [node.name for node in self.main_window().showing() if node.role in roles and
                    node.has(State.FOCUSED)]

        for _ in range(5):
            before = focused()
            if before == [pane]:
                return
            self.press("F6")
            until(lambda: focused() not in (before, []), "the next pane")
        raise AssertionError(f"F6 does not lead to {pane}")

    def go_to_item(self, name):
        self.go_to(LIST_OF_GROUPS)
        self.press("Home")
        self.app.wait_for(Role.TABLE_CELL, "gone.txt, ~/Docs/gone.txt, 4 KB, Not found")  # those of all groups
        self.go_to(LIST_OF_ITEMS)
        self.keyboard.type(name)
        until(lambda: any(cell.name.startswith(name) and cell.has(State.SELECTED)
                          for cell in self.main_window().showing() if cell.role == Role.TABLE_CELL), name)

    def leads(self, keys, name):
        check(self.app.gets_focus(name, lambda: self.press(keys)), f"{keys} led to {[each for _, each in self.app.focused]}, not {name}")

    def entries(self, keys, back):
        """What the menu that these keys open offers, once round; then Escape leads back."""
        self.press(keys)
        first = self.press_for_focus("Down")[1]
        names = [first] + self.focused_names("Down", first)[:-1]
        self.leads("Escape", back)
        return names

    def opens_menus_by_keys(self):
        """Not with Alt and a letter: while keys pass by screen readers Qt takes Alt that is released within some
        milliseconds for Alt alone, which leaves the menus."""
        self.go_to_item("agreement")
        offered = self.entries("Shift+F10", LIST_OF_ITEMS)
        check(offered == ["Open", "Open With", "Show in File Manager", "Quick Preview", "Hide", "Remove From List"],
              f"an item's menu offers {offered}")
        self.leads("F10", "Add Items…")
        self.leads("Escape", LIST_OF_ITEMS)
        self.leads("Down", "budget & plan.txt")
        self.go_to(LIST_OF_GROUPS)
        self.press("Home", "Down", "Down")
        self.leads("Down", "Taxes")
        offered = self.entries("Shift+F10", LIST_OF_GROUPS)
        check(offered == ["Hide \"Taxes\" Group", "Edit…", "Remove"], f"a group's menu offers {offered}")

    def edits_a_group(self):
        self.go_to(LIST_OF_GROUPS)
        self.press("Home", "Down", "Down")
        self.leads("Down", "Taxes")
        self.press("Ctrl+e")
        self.app.wait_for(Role.DIALOG, "Edit Group")
        until(lambda: self.has_keyboard("Edit Group"), "the sheet")
        self.check_names("the sheet of a group")
        order = self.focused_names("Tab", "Name of the group")
        check(order[:-1] == ["Simple", "Choose Image…", "AutoHide", "OK", "Cancel", "Reset"],
              f"Tab in the sheet goes {order}")
        self.press("Delete", "Return")
        self.app.wait_for(Role.LABEL, "A group needs a name.")
        self.close("Edit Group")
        self.leads("F2", "Name of the group")
        self.leads("Escape", LIST_OF_GROUPS)

    def moves_the_lines_between_panes(self):
        self.go_to_item("agreement")
        for name in ("Width of the groups", "Width of the info pane"):
            self.leads("F8", name)
            line = self.main_window().find(Role.SPLIT_PANE, name).accessible
            before = line.get_current_value()
            self.press("Right")
            until(lambda: abs(line.get_current_value() - before) == 10, f"another {name}")
            check(line.get_minimum_value() < before < line.get_maximum_value(), f"no room for {name}")
        self.leads("Escape", LIST_OF_ITEMS)

    def answers_questions(self):
        self.go_to_item("agreement")
        self.reads_question(["Delete"], "Are you sure you want to remove selected items from list?",
                            ["Remove", "Cancel"], box=["Do not ask again"])
        self.go_to_item("gone")
        self.reads_question(["Shift+F10", "Up", "Up", "Return"], "Previously visible file is broken.",
                            ["Locate File...", "Remove From List", "Cancel"])
        self.go_to(LIST_OF_GROUPS)
        self.press("Down", "Down")
        self.leads("Down", "Taxes")
        self.reads_question(["Delete"], "Are you sure you want to remove \"Taxes\" group?", ["Remove", "Cancel"])

    def reads_question(self, keys, title, buttons, box=()):
        """The first button has the focus; Escape is the last one."""
        self.press(*keys)
        self.app.wait_for(Role.DIALOG, title)
        until(lambda: self.app.window(title).find(Role.PUSH_BUTTON, buttons[0]).has(State.FOCUSED),
              f"{buttons[0]} under {title}")
        question = self.app.window(title)
        check(question.names(Role.PUSH_BUTTON) == buttons, f"{title} {question.names(Role.PUSH_BUTTON)}")
        check(question.names(Role.CHECK_BOX) == list(box), f"{title} {question.names(Role.CHECK_BOX)}")
        self.check_names(title)
        self.close(title)

    def previews_an_item(self):
        self.go_to_item("agreement")
        self.press("space")
        until(lambda: self.has_keyboard("agreement.txt"), "the preview")
        self.check_names("preview")
        self.close("agreement.txt")
        self.leads("Down", "budget & plan.txt")

    def tells_about_itself(self):
        for keys, entry in (("F10", "Add Items…"), ("Left", "Veilkeep Help"), ("Up", "About Veilkeep")):
            self.leads(keys, entry)
        self.press("Return")
        until(lambda: self.has_keyboard("About Veilkeep"), "the keyboard")
        self.check_names("about")
        self.close("About Veilkeep")

    def goes_through_the_preferences(self):
        self.press("Ctrl+comma")
        until(lambda: self.has_keyboard("General"), "the keyboard")
        self.check_names("general preferences")
        for keys, title in (("Alt+u", "Update"), ("Alt+s", "Security")):
            self.press(keys)
            self.app.wait_for(Role.CHECK_BOX, title, within=title)
            self.check_names(f"{title} preferences")
        self.press("Alt+c")
        self.app.wait_for(Role.PASSWORD_TEXT, "Old password")
        self.check_names("page that changes the password")
        self.press("Return")
        self.app.wait_for(Role.ALERT, "The old password is wrong.")
        self.close("Security")

    def hides_an_item(self):
        self.go_to_item("agreement")
        self.press("Ctrl+Right")
        self.app.wait_for(Role.TABLE_CELL, "agreement.txt, ~/Docs/agreement.txt, 4 KB, hidden")
        until(lambda: self.main_window().find(Role.CHECK_BOX, "Hide Selected Items").has(State.CHECKED),
              "the switch")


def run(programs, scratch, wanted):
    session = own_session.Session(programs, scratch)
    try:
        session.open()
        session.make_list()
        cases = Cases(session)
        for name in CASES:
            print(name.replace("_", " "), flush=True)
            getattr(cases, name)()
            if name == wanted:
                break
    except own_session.Missing as missing:
        print(f"skipped: {missing}")
        return own_session.NOT_AVAILABLE
    except Exception:
        print((session.home / "session.log").read_text()[-2000:])
        raise
    finally:
        session.close()
    return 1 if failures else 0


CASES = (
    "asks_for_the_password", "reads_both_lists", "names_every_control", "goes_through_the_panes_as_they_are_read",
    "takes_the_focus_everywhere", "tells_states", "names_what_menus_offer", "opens_the_panel_that_adds",
    "opens_menus_by_keys", "edits_a_group", "moves_the_lines_between_panes", "answers_questions", "previews_an_item",
    "tells_about_itself", "goes_through_the_preferences", "hides_an_item")


if __name__ == "__main__":
    sys.exit(run(sys.argv[1], sys.argv[2], sys.argv[3] if len(sys.argv) > 3 else None))
