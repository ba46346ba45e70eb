#include "core/protocol/WorkerAnswer.h"

#include <gtest/gtest.h>

#include <string>

namespace veilkeep {
namespace {

constexpr WorkerOperation hide = WorkerOperation::Hide, unhide = WorkerOperation::Unhide;

CloakWorkerResult named(std::string path) {
    return CloakWorkerResult::resultWithFileName(std::move(path));
}

CloakWorkerResult failed(int code) {
    return CloakWorkerResult::resultWithErrorCode(code);
}

TEST(WorkerAnswer, ReadsStatusThenMarker) {
    struct Row {
        WorkerOperation operation;
        int status;
        std::string output;
        CloakWorkerResult expected;
    };
    const std::string moved = "NewFilename: /a/.SYS_INDEX/txt.b";
    const Row rows[] = {
        {hide, 1, moved, named("/a/.SYS_INDEX/txt.b")},
        {hide, 1, "noise\n" + moved + "NewFilename: x", named("/a/.SYS_INDEX/txt.bNewFilename: x")},
        {hide, 1, "NewFilename: /\xff\xfe\n b", named("/\xff\xfe\n b")},
        {hide, 1, "Error: 3 NewFilename: /a", named("/a")},
        {hide, 257, moved, named("/a/.SYS_INDEX/txt.b")},
        {hide, 256, moved, failed(1)},
        {hide, 0, moved, failed(1)},
        {unhide, 2, moved, failed(1)},
        {hide, 1, "", failed(1)},
        {unhide, 1, "Error: 3", failed(1)},
        {hide, 0, "Error: 3", failed(3)},
        {unhide, 2, "Error: 13\n", failed(13)},
        {hide, 256, "Error: 6", failed(6)},
        {hide, 0, "", failed(1)},
        {hide, 0, "NewFilename: /Error: 4 Error: 5", failed(4)},
    };
    for (const Row& row : rows)
        EXPECT_EQ(workerAnswer(row.operation, row.status, row.output), row.expected)
            << row.status << " " << row.output;
}

} // namespace
} // namespace veilkeep
