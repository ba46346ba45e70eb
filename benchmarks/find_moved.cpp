// Compares finding a moved item again with "find DIR -inum N" over 10,000 directories of 50 files, on an ext4
// volume of its own: for an item that is not there any more, so that no walk ends early, for a moved one that
// the walk meets late, and for a thousand moved items at once. Needs root, for the volume.

#include "benchmarks/support/SampleTree.h"
#include "benchmarks/support/SideBySide.h"
#include "core/base/PathText.h"
#include "core/tracking/AliasResolver.h"
#include "core/tracking/FileAlias.h"
#include "tests/support/LoopVolume.h"
#include "tests/support/RunProgram.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>
#include <vector>

using namespace veilkeep;
using namespace veilkeep::benchmark;
using Outcome = AliasResolver::Answer::Outcome;

namespace {

constexpr int movedItems = 1'000;

struct Item {
    std::string record;
    std::string inode;
    std::string path; // empty: it is not there any more
};

std::string inodeAt(const std::string& path) {
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        fail(path);
    return std::to_string(status.st_ino);
}

Item itemAt(const std::string& path) {
    const auto record = aliasRecordFromPath(path);
    if (!record)
        fail(path);
    return {*record, inodeAt(path), path};
}

// Into a directory far from its own, under a new name.
Item moved(const SampleTree& tree, int number) {
    Item item = itemAt(joinPath(tree.directory(number), "7.txt"));
    const int elsewhere = (number + tree.directories / 2) % tree.directories;
    item.path = joinPath(tree.directory(elsewhere), "moved");
    if (::rename(joinPath(tree.directory(number), "7.txt").c_str(), item.path.c_str()) != 0)
        fail(item.path);
    return item;
}

Item removed(const SampleTree& tree) {
    Item item = itemAt(joinPath(tree.directory(1), "9.txt"));
    if (::unlink(item.path.c_str()) != 0)
        fail(item.path);
    item.path.clear();
    return item;
}

// How many directories it took.
std::uint64_t resolve(std::span<const Item> items) {
    std::vector<std::string_view> records;
    for (const Item& item : items)
        records.push_back(item.record);
    AliasResolver resolver(AliasResolver::Reach::WholeVolume);
    const auto answers = resolver.resolve(records, AliasResolver::Mounting::Never);
    for (std::size_t index = 0; index < items.size(); ++index) {
        const bool isFound = answers[index].outcome == Outcome::Found;
        if (isFound ? answers[index].path != items[index].path : !items[index].path.empty())
            fail("not what is there: " + answers[index].path);
    }
    return resolver.directoriesSeen();
}

Item metLast(const std::vector<Item>& items) {
    const Item* last = &items.front();
    std::uint64_t most = 0;
    for (std::size_t index = 0; index < items.size(); index += items.size() / 20)
        if (const std::uint64_t seen = resolve({&items[index], 1}); seen > most) {
            last = &items[index];
            most = seen;
        }
    std::printf("met last: after %ju directories\n", std::uintmax_t{most});
    return *last;
}

void find(const SampleTree& tree, const Item& item) {
    const auto run = test::runProgram({"/usr/bin/find", tree.path, "-inum", item.inode});
    if (run.output != (item.path.empty() ? "" : item.path + "\n"))
        fail("find did not find what there is");
}

} // namespace

int main() {
    const test::ScratchTree scratch;
    const test::LoopVolume volume(scratch, "ext4", {.formatOptions = "-N 600000", .megabytes = 640});
    if (!volume.whyMissing().empty())
        return Report::skipAll("no volume to measure on: " + volume.whyMissing());
    const SampleTree tree{volume.mountPoint(), 10'000, 50};
    make(tree);
    std::vector<Item> many;
    for (int number = 0; number < movedItems; ++number)
        many.push_back(moved(tree, number * tree.directories / movedItems));
    const Item late = metLast(many);
    const Item gone = removed(tree);
    many.push_back(gone);

    const Side searchGone = {"an item that is gone", [&] { resolve(std::span(&gone, 1)); }};
    const Side searchLate = {"a moved item met late", [&] { resolve(std::span(&late, 1)); }};
    const Side searchMany = {"1,000 moved items and one gone", [&] { resolve(many); }};
    Report report;
    sideBySide(report, searchGone, {"find -inum", [&] { find(tree, gone); }}, 15);
    sideBySide(report, searchLate, {"find -inum", [&] { find(tree, late); }}, 15);
    sideBySide(report, searchMany, searchGone, 15);
    return report.exitStatus();
}
