// veilkeepctl hide of 1,000 files in one call against a shell loop that moves them one by one.

#include "benchmarks/support/SideBySide.h"
#include "core/environment/XdgDirectories.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"

#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;
using veilkeep::benchmark::Side;
using veilkeep::test::ScratchTree;

constexpr int fileCount = 1000;

void makeFiles(const ScratchTree& tree, const std::string& folder) {
    fs::remove_all(tree.path(folder));
    fs::remove_all(veilkeep::OwnPlaces::current().dataDirectory); // else its list knows the files of before
    for (int index = 0; index < fileCount; ++index)
        tree.makeFile(folder + "/document " + std::to_string(index) + ".txt", "content");
}

// The command gets the folder as $0.
void runInBash(const std::string& command, const std::string& folder) {
    if (veilkeep::test::runProgram({"/bin/bash", "-c", "cd \"$0\" && " + command, folder}).exitStatus != 0)
        throw std::runtime_error(command);
}

} // namespace

int main() {
    const ScratchTree tree;
    const std::string hide = "'" + veilkeep::test::bundledProgram("veilkeepctl") + "' hide -- *";
    const std::string unhide = "'" + veilkeep::test::bundledProgram("veilkeepctl") + "' unhide .SYS_INDEX/*";
    const std::string moveIn = "mkdir .SYS_INDEX && for f in *; do mv -- \"$f\" \".SYS_INDEX/$f\"; done";
    const auto side = [&](const std::string& name, const std::string& folder, const std::string& command,
                          const std::string& before) {
        return Side{name, [&tree, folder, command] { runInBash(command, tree.path(folder)); },
                    [&tree, folder, before] {
                        makeFiles(tree, folder);
                        runInBash(before, tree.path(folder));
                    }};
    };
    const Side loop = side("mkdir and a loop of mv, 1,000 files", "loop", moveIn, "true");
    veilkeep::benchmark::Report report;
    sideBySide(report, side("hide 1,000 files", "ours", hide, "true"), loop);
    sideBySide(report, side("unhide 1,000 files", "ours", unhide, hide), loop);
    return report.exitStatus();
}
