// The pass that hides 1,000 items in ten AutoHide groups against a shell loop that moves them one by one.

#include "benchmarks/support/SideBySide.h"
#include "tests/groups/GroupWorld.h"

#include <QCoreApplication>

#include <filesystem>
#include <memory>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;
using namespace veilkeep::test;
using veilkeep::benchmark::Side;

constexpr int groupCount = 10, itemsInEach = 100;

std::string itemPath(const ScratchTree& tree, const std::string& folder, int number) {
    return tree.makeFile(folder + "/document " + std::to_string(number) + ".txt", "content");
}

} // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    const ScratchTree tree;
    std::unique_ptr<GroupWorld> world;
    const auto prepare = [&] {
        world.reset();
        fs::remove_all(tree.path("ours"));
        GroupWorld::forgetAll();
        world = std::make_unique<GroupWorld>();
        world->started();
        for (int group = 0; group < groupCount; ++group) {
            const veilkeep::ListedGroup each = world->autoHideGroup();
            for (int item = 0; item < itemsInEach; ++item)
                world->add(itemPath(tree, "ours", group * itemsInEach + item), each);
        }
        world->list.list->saveDataToDisk();
    };
    const auto hide = [&] {
        if (!world->groups.makeAutoHide("benchmark") || world->mark.isSet())
            throw std::runtime_error("the pass");
    };
    const auto prepareLoop = [&] {
        fs::remove_all(tree.path("loop"));
        for (int item = 0; item < groupCount * itemsInEach; ++item)
            itemPath(tree, "loop", item);
    };
    const auto move = [&] {
        const std::string loop = "cd \"$0\" && mkdir .SYS_INDEX && "
                                 "for f in *; do mv -- \"$f\" \".SYS_INDEX/$f\"; done";
        if (runProgram({"/bin/bash", "-c", loop, tree.path("loop")}).exitStatus != 0)
            throw std::runtime_error("the loop");
    };
    return sideBySide(Side{"makeAutoHide, 1,000 items in 10 groups", hide, prepare},
                      Side{"mkdir and a loop of mv, 1,000 files", move, prepareLoop}, 0.6)
               ? 0
               : 1;
}
