#pragma once

#include "core/environment/ProcessStatus.h"
#include "platform/Processes.h"

namespace veilkeep {

// By /proc and descriptors of processes.
class LinuxProcesses : public Processes {
public:
    bool wasLaunchedAtLogin() const override;
    bool waitForFormer(pid_t process, std::chrono::milliseconds limit) const override;

    static bool isLaunchOfSession(const ProcessStatus& process, const ProcessStatus& parent);
};

} // namespace veilkeep
