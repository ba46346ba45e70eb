#include "core/process/DetachedProcess.h"

#include "core/process/SpawnSettings.h"

#include <unistd.h>

namespace veilkeep {

Result<pid_t> startDetachedProcess(const std::string& program, const std::vector<std::string>& arguments) {
    SpawnSettings settings;
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        settings.openNullDevice(stream);
    settings.closeOthers();
    settings.startIn("/");
    settings.useOwnSession();
    settings.useCleanSignals(false);
    pid_t child = -1;
    if (const int failure = settings.spawn(child, program, arguments, environ))
        return Error::system("posix_spawn", program, failure);
    return child;
}

} // namespace veilkeep
