"""logind as the fresh system's bus knows it: a mock, since no system manager runs there."""

import subprocess

import dbus

from waiting import wait_until

_NAME, _OBJECT = "org.freedesktop.login1", "/org/freedesktop/login1"
_SESSION = f"{_OBJECT}/session/c1"


class LoginManager:
    def __init__(self, bus_address, user):
        command = ["/usr/bin/python3", "-m", "dbusmock", "--logfile", "/dev/null", "--template", "logind"]
        self._process = subprocess.Popen(command, env={"DBUS_SYSTEM_BUS_ADDRESS": bus_address})
        self._bus = dbus.bus.BusConnection(bus_address)
        wait_until("a login manager", lambda: self._bus.name_has_owner(_NAME))
        self._mock(_OBJECT).AddSession("c1", "seat0", dbus.UInt32(user.number), user.name, True)
        self._mock(_OBJECT).AddMethod(f"{_NAME}.Manager", "GetUser", "u", "o", f"ret = '{_OBJECT}/user/{user.number}'")
        self._mock(_OBJECT).AddMethod(f"{_NAME}.Manager", "GetSession", "s", "o", f"ret = '{_SESSION}'")

    def lock(self):
        self._set_locked(True)

    def unlock(self):
        self._set_locked(False)

    def _set_locked(self, is_locked):
        self._mock(_SESSION).UpdateProperties(f"{_NAME}.Session", {"LockedHint": is_locked})

    def _mock(self, path):
        return dbus.Interface(self._bus.get_object(_NAME, path), "org.freedesktop.DBus.Mock")
