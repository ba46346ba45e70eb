import json


def run(world):
    """While it runs, an earlier version of it is replaced by this one"""
    by_command, by_window = (
        world.make_file(f"{world.user.home}/Dokumente/{name}.txt") for name in ("Rechnung", "Urlaub in Łódź")
    )
    before = {item: world.state_of(item) for item in (by_command, by_window)}
    world.apt.purge()
    older = world.package.older(world.system, world.scratch)
    world.apt.install(older)
    world.ctl("hide", by_command)
    application = world.desktop.start_application()
    application.window()
    world.ctl("hide", by_window)  # done by the application
    listed = _list(world)

    world.apt.install(world.package)
    assert world.apt.installed_version() == world.package.field("Version"), world.apt.installed_version()
    assert application.is_running() and world.ctl("status").endswith("owner\tapplication\n"), world.ctl("status")
    assert _list(world) == listed, _list(world)
    for item in before:
        world.ctl("unhide", item)
        world.must_be_as(before[item], item)
        world.ctl("hide", item)
    assert application.is_running()
    application.end()

    assert _list(world) == listed, _list(world)
    application = world.desktop.start_application()
    application.window()
    assert _list(world) == listed, _list(world)
    world.ctl("unhide", *before)
    for item in before:
        world.must_be_as(before[item], item)
    world.ctl("remove", "--yes", *before)
    application.end()


def _list(world):
    return sorted(json.loads(world.ctl("list", "--json")), key=lambda item: item["path"])
