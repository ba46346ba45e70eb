#pragma once

#include "core/process/ChildProcess.h"
#include "core/protocol/CloakWorkerResult.h"

#include <optional>
#include <string_view>

namespace veilkeep {

enum class WorkerOperation { Hide, Unhide };

// Reads a worker's answer. A hide succeeded when the low 8 bits of the status are not zero, an unhide only
// when the status is 1. A success carries all that follows the first "NewFilename: ", byte for byte; a
// failure the integer value of what follows the first "Error: " (0 without digits, held to 32 bits). Without
// its marker either is error 1. The file name may come out empty and the error 0 where the output says so.
CloakWorkerResult workerAnswer(WorkerOperation operation, int exitStatus, std::string_view output);

// The same for a run as a whole: error 1 unless it ended by itself and its output was kept whole.
CloakWorkerResult workerAnswer(WorkerOperation operation, const ChildProcessResult& run);

// What became of the question about recent items while an item was hidden. The exit status of a successful
// hide says it.
enum class RecentsAnswer { NotAsked = 1, Yes = 2, No = 3, Unanswered = 4 };

RecentsAnswer recentsAnswer(WorkerOperation operation, const ChildProcessResult& run);

// The answer of a worker whose exit status says nothing, by its output alone: a "NewFilename: " wins, without
// it an "Error: " counts. Nothing where it has neither.
std::optional<CloakWorkerResult> workerAnswer(std::string_view output);

} // namespace veilkeep
