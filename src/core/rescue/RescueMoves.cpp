#include "core/rescue/RescueMoves.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/names/HiddenName.h"
#include "core/protocol/WorkerAnswer.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

ChildProcessOptions optionsOfMove(bool isHeld) {
    ChildProcessOptions options;
    options.deferEndingSignals = true; // Ctrl-C reaches the worker too, and what is begun is finished
    options.isHeld = isHeld;
    return options;
}

} // namespace

bool isTooLongToMove(std::size_t pathSize) {
    constexpr std::size_t pagesOfOne = 32; // execve(2), "Limits on size of arguments"; a NUL ends it
    return pathSize >= pagesOfOne * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

CloakWorkerResult RescueMoves::move(const std::string& hiddenPath, const std::string& next) {
    if (isTooLongToMove(hiddenPath.size()))
        return CloakWorkerResult::resultWithErrorCode(pathTooLong);
    const std::unique_ptr<ChildProcess> worker = workerFor(hiddenPath);
    if (!next.empty()) {
        m_waitingFor = next;
        m_waiting = std::make_unique<ChildProcess>(
            m_workerPath, std::vector<std::string>{"-p", "-w", "-rescue", next}, optionsOfMove(true));
    }
    return workerAnswer(WorkerOperation::Unhide, worker->untilGone());
}

std::vector<Error> syncAfterRescue(const std::string& hiddenDirectory) {
    std::vector<Error> errors;
    for (std::string_view path = hiddenDirectory;; path = parentPath(path)) {
        const UniqueFd looked = openDirectoryWithoutLinks(path);
        const UniqueFd directory(looked ? ::openat(looked.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)
                                        : -1);
        const auto synced = directory ? syncDirectory(directory.get(), std::string(path))
                                      : Result<void>(Error::system("open", std::string(path), errno));
        if (!synced && synced.error().systemError != ENOENT && synced.error().systemError != EACCES)
            errors.push_back(synced.error());
        if (lastPathComponent(path) != hiddenDirectoryName)
            return errors;
    }
}

std::unique_ptr<ChildProcess> RescueMoves::workerFor(const std::string& path) {
    std::unique_ptr<ChildProcess> waiting = std::exchange(m_waiting, nullptr);
    if (waiting && m_waitingFor == path && waiting->release())
        return waiting;
    return std::make_unique<ChildProcess>(m_workerPath, std::vector<std::string>{"-p", "-rescue", path},
                                          optionsOfMove(false));
}

} // namespace veilkeep
