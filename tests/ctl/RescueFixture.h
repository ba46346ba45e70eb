#pragma once

#include "core/base/PathText.h"
#include "core/names/HiddenName.h"
#include "tests/ctl/CtlCalls.h"
#include "tests/support/ItemSnapshot.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace veilkeep::test {

// Trees in which everything was hidden by somebody whose list is lost.
class RescueFixture : public ::testing::Test {
protected:
    ProgramRun rescue(std::vector<std::string> arguments, unsigned int asUser = 0) {
        arguments.insert(arguments.begin(), {bundledProgram("veilkeepctl"), "rescue"});
        return runProgram(arguments, {asUser, m_tree.root(), {}});
    }

    // By a plain rename, as a hide does it; answers the hidden path.
    std::string hide(const std::string& relative) const {
        const std::string path = m_tree.path(relative);
        const std::string directory = joinPath(parentPath(path), hiddenDirectoryName);
        std::filesystem::create_directory(directory);
        std::string hidden = joinPath(directory, scrambledName(lastPathComponent(path)));
        std::filesystem::rename(path, hidden);
        return hidden;
    }

    // Of all below it, without the directory itself, whose times change with what comes and goes.
    std::map<std::string, ItemState> itemsOf(const std::string& relative) const {
        auto items = snapshotOf(m_tree.path(relative));
        items.erase("");
        for (auto& [path, state] : items)
            if (S_ISDIR(state.mode)) // a folder that held a .SYS_INDEX was changed by the hide as well
                state.modified = 0;
        return items;
    }

    ScratchTree m_tree;
};

} // namespace veilkeep::test
