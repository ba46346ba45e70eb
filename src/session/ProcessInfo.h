#pragma once

#include "core/environment/ProcessStatus.h"

#include <QString>

#include <optional>
#include <string>

namespace veilkeep {

// What this process is, who started it and from where. Any thread.
class ProcessInfo {
public:
    static std::optional<ProcessStatus> processInformation();
    static std::optional<ProcessStatus> parentProcessInformation(); // nothing where it may not be seen

    // Whether the session started it, going by its parent: for starts without the option that says so.
    static bool wasLaunchedAtLogin();
    static bool isLaunchOfSession(const ProcessStatus& process, const ProcessStatus& parent);

    // A plain look at how the bundle's path begins, links followed.
    static bool appIsRunningFromAppsFolder();
    static bool isInAppsFolder(const std::string& bundle);

    static QString applicationName(); // of its executable
    static QString applicationIdentifier();
    static QString applicationVersion();
    static QString osVersion();
};

} // namespace veilkeep
