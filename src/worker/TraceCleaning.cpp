#include "worker/TraceCleaning.h"

#include "core/environment/Bundle.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "core/process/DetachedProcess.h"
#include "worker/TraceLook.h"

#include <cstdlib>
#include <string_view>

namespace veilkeep {
namespace {

bool variableIs(const char* name, std::string_view value) {
    const char* set = std::getenv(name);
    return set && set == value;
}

// Traces are cleaned until the user has said no.
bool cleaningIsWanted() {
    return !variableIs("VEILKEEP_NOBODY_THERE", "1") && !variableIs("VEILKEEP_CLEAN_RECENT_ITEMS", "0");
}

} // namespace

void haveTracesCleaned(const std::string& visiblePath, const std::string& hiddenPath) {
    if (!cleaningIsWanted() || !mayHaveTraces(visiblePath, isDirectoryAt(hiddenPath)))
        return;
    const std::string program = bundledProgramPath(applicationBundlePath(), "cloakTraces");
    if (const auto started = startDetachedProcess(program, {visiblePath}); !started)
        logError("Traces of a hidden item were not cleaned", started.error());
}

} // namespace veilkeep
