#pragma once

#include "core/base/Error.h"
#include "core/process/ChildProcess.h"
#include "core/protocol/CloakWorkerResult.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace veilkeep {

// Whether the path of an item, in bytes, is longer than what one argument of a program may be.
bool isTooLongToMove(std::size_t pathSize);

// Brings hidden items back by cloakWorker, one process for each, and the next one started while one works.
// Leaves no record and needs neither home nor list. One thread.
class RescueMoves {
public:
    static constexpr std::int32_t pathTooLong = -1; // an error code, beside those of the worker

    explicit RescueMoves(std::string workerPath) : m_workerPath(std::move(workerPath)) {}

    // `next` is the item that the next call is likely to be for; empty for none.
    CloakWorkerResult move(const std::string& hiddenPath, const std::string& next);

private:
    std::unique_ptr<ChildProcess> workerFor(const std::string& path);

    std::string m_workerPath;
    std::string m_waitingFor;
    std::unique_ptr<ChildProcess> m_waiting;
};

// Makes what came back from the ".SYS_INDEX" survive a power cut; answers what could not be synced. One that
// is gone needs nothing.
std::vector<Error> syncAfterRescue(const std::string& hiddenDirectory);

} // namespace veilkeep
