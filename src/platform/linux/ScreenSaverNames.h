#pragma once

#include <QLatin1String>

// Under which names of the session bus the desktops' screen savers tell that they cover the screen.
namespace veilkeep {

struct ScreenSaverName {
    QLatin1String name, path, interface;
};

// Plasma's has a second path, where it says everything again. GNOME Shell speaks for itself, and by way of a
// service that has the usual name and comes and goes.
inline constexpr ScreenSaverName screenSaverNames[] = {
    {QLatin1String("org.gnome.ScreenSaver"), QLatin1String("/org/gnome/ScreenSaver"),
     QLatin1String("org.gnome.ScreenSaver")},
    {QLatin1String("org.gnome.Shell.ScreenShield"), QLatin1String("/org/gnome/ScreenSaver"),
     QLatin1String("org.gnome.ScreenSaver")},
    {QLatin1String("org.freedesktop.ScreenSaver"), QLatin1String("/org/freedesktop/ScreenSaver"),
     QLatin1String("org.freedesktop.ScreenSaver")},
    {QLatin1String("org.cinnamon.ScreenSaver"), QLatin1String("/org/cinnamon/ScreenSaver"),
     QLatin1String("org.cinnamon.ScreenSaver")},
    {QLatin1String("org.mate.ScreenSaver"), QLatin1String("/org/mate/ScreenSaver"),
     QLatin1String("org.mate.ScreenSaver")},
    {QLatin1String("org.xfce.ScreenSaver"), QLatin1String("/org/xfce/ScreenSaver"),
     QLatin1String("org.xfce.ScreenSaver")},
};

// Of GNOME Shell and of Plasma: they tell logind when they lock, always.
inline constexpr QLatin1String hintingLockers[] = {QLatin1String("org.gnome.Shell.ScreenShield"),
                                                   QLatin1String("org.kde.screensaver")};

} // namespace veilkeep
