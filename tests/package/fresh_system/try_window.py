from waiting import wait_until

# In the window as it first opens: the first row of the list, and the switch at its end.
ROW, SWITCH = (300, 136), (834, 136)


def run(world):
    """He hides and brings back through the window, by mouse and keys"""
    item = world.make_file(f"{world.user.home}/Dokumente/Brief an Zoë.txt")
    application = world.desktop.start_application(item)
    window = application.window()
    world.await_listed(item)
    before = world.state_of(item)
    _by_keys(world, window, "ctrl+Right", lambda: world.is_hidden(item))
    _by_keys(world, window, "ctrl+Left", lambda: world.is_visible(item))
    world.must_be_as(before, item)
    world.screen.click(window, *SWITCH)
    world.await_hidden(item)
    world.screen.click(window, *SWITCH)
    world.await_visible(item)
    world.must_be_as(before, item)
    world.ctl("remove", "--yes", item)
    application.end()


# A click that comes before the row is drawn selects nothing. Hiding what is hidden already changes nothing.
def _by_keys(world, window, keys, is_done):
    def clicked_and_typed():
        world.screen.click(window, *ROW)
        world.screen.key(keys)
        return is_done()

    wait_until(f"the item after {keys}", clicked_and_typed)
