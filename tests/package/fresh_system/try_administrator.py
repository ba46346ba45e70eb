import os
import plistlib
import shutil

from fresh_system import ROOT
from waiting import wait_until

_ACTION = "com.ostrel.Veilkeep.move"
_RULE = "/etc/polkit-1/rules.d/00-trial.rules"
_YES = f"polkit.addRule(function(action) {{ if (action.id == '{_ACTION}') return polkit.Result.YES; }});\n"


def run(world):
    """An item in a folder of root's is moved by pkexec and polkitd, and only where polkit allows it"""
    item = world.make_file("/srv/Abteilung/Plan für alle.txt", owner=ROOT.number)
    world.system.start("/usr/lib/polkit-1/polkitd", "--no-debug")
    _allow_in_settings(world)
    told = world.ctl("hide", "--yes", item, status=1)
    assert item in told and world.is_visible(item), told

    world.system.write(_RULE, _YES)
    wait_until("polkit knows the rule", lambda: _polkit_allows(world))
    before = world.state_of(item)
    world.ctl("hide", "--yes", item)
    assert world.is_hidden(item), world.state_of("/srv")
    folder = os.stat(os.path.dirname(world.outside(world.hidden_path(item))))
    assert folder.st_uid == ROOT.number, f"the folder of hidden items belongs to {folder.st_uid}"
    world.must_be_as(before, world.hidden_path(item))
    world.ctl("unhide", "--yes", item)
    world.must_be_as(before, item)
    world.ctl("remove", "--yes", item)
    os.remove(world.outside(_RULE))
    shutil.rmtree(world.outside(os.path.dirname(item)))


def _polkit_allows(world):
    asked = f"pkcheck --action-id {_ACTION} --process $$"
    return world.system.run("sh", "-c", asked, user=world.user, variables=world.desktop.variables).status == 0


# As the box in the preferences does.
def _allow_in_settings(world):
    file = world.outside(f"{world.user.home}/.config/com.ostrel.Veilkeep.plist")
    with open(file, "rb") as stored:
        settings = plistlib.load(stored)
    with open(file, "wb") as stored:
        plistlib.dump(settings | {"allowPrivilidgedFiles": True}, stored)
