#include "core/records/FileSystemHelpers.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace veilkeep {
namespace {

TEST(FileSystemHelpers, SizesAreTheItemsOwn) {
    const test::ScratchTree tree;
    const std::string file = tree.makeFile("five", "12345");
    const std::string folder = tree.makeDirectory("folder");
    tree.makeFile("folder/content", "not summed");
    const auto link = [&](const char* name, const std::string& target) {
        EXPECT_EQ(::symlink(target.c_str(), tree.path(name).c_str()), 0);
        return tree.path(name);
    };
    struct Row {
        const char* what;
        std::string path;
        std::uint64_t size;
        bool isDirectory = false;
    };
    const Row rows[] = {
        {"no path", "", 0},
        {"missing", tree.path("missing"), 0},
        {"empty file", tree.makeFile("empty"), 0},
        {"file", file, 5},
        {"file taken for a folder", file + "/x", 0},
        {"folder", folder, unknownFileSize, true},
        {"link to a folder", link("to-folder", folder), unknownFileSize, true},
        {"link to a file", link("to-file", "./././five"), 10},
        {"link to a link to a folder", link("to-link", "to-folder"), unknownFileSize, true},
        {"dangling link", link("dangling", "nowhere"), 0},
        {"link to itself", link("circle", "circle"), 0},
        {"name with bytes that are no text", tree.makeFile("\xff\xfe", "ab"), 2},
        {"path that goes on after a NUL", file + std::string("\0x", 2), 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(fileSizeAtPath(row.path), row.size) << row.what;
        EXPECT_EQ(isDirectoryAtPath(row.path), row.isDirectory) << row.what;
    }
    EXPECT_TRUE(std::holds_alternative<std::uint64_t>(fileSizeNumberAtPath(folder).content()));
    EXPECT_EQ(fileSizeNumberAtPath(file).asUnsigned(), 5u);
}

} // namespace
} // namespace veilkeep
