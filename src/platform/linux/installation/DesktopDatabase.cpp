#include "platform/linux/installation/DesktopDatabase.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/log/Log.h"
#include "core/process/ChildProcess.h"
#include "platform/linux/filemanagers/FileManagers.h"

#include <unistd.h>

namespace veilkeep {
namespace {

constexpr std::chrono::seconds limit{10};

} // namespace

void updateDesktopDatabase(const InstallationPlaces& places) {
    const std::string entries = joinPath(places.dataHome, "applications");
    const std::string tool = programIn(FileManagerPlaces::current().programs, "update-desktop-database");
    if (tool.empty() || !isDirectoryAt(entries))
        return;
    ChildProcessOptions options;
    options.discardErrors = true; // about entries of others
    options.timeLimit = limit;
    const auto updated = runChildProcess(tool, {"--quiet", entries}, options);
    if (!updated.exitedWith(0))
        logLine("The desktop's list of programs in " + entries +
                " could not be updated: " + updated.howItEnded());
    const std::string list = joinPath(entries, "mimeinfo.cache");
    const auto content = readWholeFile(list, 64);
    if (content && *content == "[MIME Cache]\n")
        (void)::unlink(list.c_str());
}

} // namespace veilkeep
