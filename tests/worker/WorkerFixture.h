#pragma once

#include "core/base/PathText.h"
#include "core/names/BaseCloakLogic.h"
#include "core/protocol/InProgressFolder.h"
#include "tests/support/ItemSnapshot.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/Strace.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace veilkeep::test {

// Runs the real cloakWorker on a scratch tree.
class WorkerFixture : public ::testing::Test {
protected:
    ProgramRun work(const std::string& operation, const std::string& path, const RunOptions& options = {}) {
        return runProgram({bundledProgram("cloakWorker"), "-p", "-i", operation, path}, options);
    }

    // The same with system calls that go wrong, in the words of strace's "-e inject=".
    ProgramRun workInjected(const std::vector<std::string>& injections, const std::string& operation,
                            const std::string& path) {
        std::vector<std::string> options = {"-f", "-o", "/dev/null"};
        for (const std::string& injection : injections)
            options.insert(options.end(), {"-e", "inject=" + injection});
        return runProgram(traced(options, {bundledProgram("cloakWorker"), "-p", "-i", operation, path}));
    }

    // A copy of the program in a bundle of the test's own.
    std::string bundle(const std::string& program) const {
        const std::string copy = m_tree.makeDirectory("T.app/Contents/MacOS") + "/" + program;
        std::filesystem::copy_file(bundledProgram(program), copy,
                                   std::filesystem::copy_options::overwrite_existing);
        return copy;
    }

    static std::string hiddenPathOf(const std::string& path) {
        return BaseCloakLogic::constructHidenFullFileName(path, joinPath(parentPath(path), ".SYS_INDEX"));
    }

    std::string hiddenDirectoryBeside(const std::string& path) const {
        return joinPath(parentPath(path), ".SYS_INDEX");
    }

    void expectHidden(const ProgramRun& run, const std::string& path) {
        EXPECT_EQ(run.output, "NewFilename: " + hiddenPathOf(path));
        EXPECT_EQ(run.exitStatus, 1);
    }

    void expectError(const ProgramRun& run, int number) {
        EXPECT_EQ(run.output, "Error: " + std::to_string(number));
        EXPECT_EQ(run.exitStatus, 0);
    }

    // Finds this record alone in the folder and takes it away.
    static void expectOnlyRecord(const std::string& folderPath, const InProgressRecord& expected) {
        const InProgressFolder folder(folderPath);
        const auto entries = folder.entries();
        ASSERT_TRUE(entries.has_value() && entries->size() == 1);
        const auto dictionary = folder.read(entries->front());
        ASSERT_TRUE(dictionary.has_value());
        EXPECT_EQ(recordFromDictionary(*dictionary).value_or(InProgressRecord()), expected);
        ASSERT_TRUE(folder.remove(entries->front()).has_value());
    }

    ScratchTree m_tree;
};

} // namespace veilkeep::test
