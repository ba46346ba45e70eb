from login_manager import LoginManager
from waiting import wait_until

_PASSWORD = "opensesame"


def run(world):
    """An AutoHide group hides when the screen is locked and is back afterwards, with a password after its entry"""
    item = world.make_file(f"{world.user.home}/Dokumente/Tagebuch.txt")
    login_manager = LoginManager(world.desktop.system_bus, world.user)
    world.ctl("add", item, "--group", "AutoHide Group")
    application = world.desktop.start_application()
    application.window()
    world.await_visible(item)  # whoever starts the program is there
    _leave(world, login_manager, application, item)
    login_manager.unlock()
    world.await_visible(item)
    application.window()

    world.ctl("password", "set", "--password-stdin", text=_PASSWORD + "\n")
    _leave(world, login_manager, application, item)
    login_manager.unlock()
    application.window()
    assert world.is_hidden(item), "an item came back before the password was given"
    world.screen.type(_PASSWORD)
    world.screen.key("Return")
    world.await_visible(item)

    application.window()
    world.ctl("password", "off", "--password-stdin", text=_PASSWORD + "\n")
    world.ctl("remove", "--yes", item)
    application.end()


def _leave(world, login_manager, application, item):
    before = world.state_of(item)
    login_manager.lock()
    world.await_hidden(item)
    wait_until("the window is closed", lambda: not application.has_windows())
    world.must_be_as(before, world.hidden_path(item))
