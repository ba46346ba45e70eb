#pragma once

#include <QString>

#include <string>

namespace veilkeep {

// What this program is, and from where it runs. Any thread.
class ProcessInfo {
public:
    // A plain look at how the bundle's path begins, links followed.
    static bool appIsRunningFromAppsFolder();
    static bool isInAppsFolder(const std::string& bundle);

    static QString applicationName(); // of its executable
    static QString applicationIdentifier();
    static QString applicationVersion();
    static QString osVersion();
};

} // namespace veilkeep
