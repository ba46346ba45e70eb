#include "worker/TraceCleaning.h"

#include "core/environment/Bundle.h"
#include "core/environment/Variables.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "core/process/DetachedProcess.h"
#include "worker/Question.h"
#include "worker/TraceLook.h"

#include <cstdlib>

namespace veilkeep {
namespace {

// Traces are cleaned until the user has said no; with nobody there once he has said yes.
bool cleaningIsWanted() {
    return cleaningIsAskedFor() ||
           (!variableIs("VEILKEEP_CLEAN_RECENT_ITEMS", "0") && !variableIs("VEILKEEP_NOBODY_THERE", "1"));
}

RecentsAnswer askAboutRecents() {
    const auto answer = Question{"recents", {}}.ask();
    if (answer == "Yes")
        return RecentsAnswer::Yes;
    return answer == "No" ? RecentsAnswer::No : RecentsAnswer::Unanswered;
}

bool cleaningIsDecided() {
    return std::getenv("VEILKEEP_CLEAN_RECENT_ITEMS") != nullptr;
}

} // namespace

bool cleaningIsAskedFor() {
    return variableIs("VEILKEEP_CLEAN_RECENT_ITEMS", "1");
}

RecentsAnswer haveTracesCleaned(const std::string& visiblePath, const std::string& hiddenPath, bool mayAsk) {
    if (!cleaningIsWanted() || !mayHaveTraces(visiblePath, isDirectoryAt(hiddenPath)))
        return RecentsAnswer::NotAsked;
    const RecentsAnswer answer = mayAsk && !cleaningIsDecided() ? askAboutRecents() : RecentsAnswer::NotAsked;
    if (answer == RecentsAnswer::No)
        return answer;
    const std::string program = bundledProgramPath(applicationBundlePath(), "cloakTraces");
    if (const auto started = startDetachedProcess(program, {visiblePath}); !started)
        logError("Traces of a hidden item were not cleaned", started.error());
    return answer;
}

} // namespace veilkeep
