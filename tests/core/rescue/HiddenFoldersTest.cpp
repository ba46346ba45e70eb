#include "core/rescue/HiddenFolders.h"

#include <gtest/gtest.h>

#include <string>

namespace veilkeep::test {
namespace {

TEST(HiddenFoldersTest, KnowsEachItemAndNoOther) {
    const std::string names[] = {"b", "bb", "d", "d e", "d\n", "d\xff", "f", "\x80", "zz"};
    const std::string others[] = {"a", "bbb", "c", "e", "d\xfe", "z", "\x7f", "zzz", "~"};
    HiddenFolders folders;
    const auto pathOf = [](const std::string& name) { return "/t/.SYS_INDEX/" + name; };
    EXPECT_FALSE(folders.contains(pathOf("a")));
    for (const std::string& added : names) {
        folders.add(pathOf(added));
        folders.add(pathOf(names[0]));
        folders.add("/u/.SYS_INDEX/elsewhere");
        folders.arrange();
        bool isAdded = true; // up to this one
        for (const std::string& name : names) {
            EXPECT_EQ(folders.contains(pathOf(name)), isAdded) << name;
            isAdded = isAdded && name != added;
        }
        for (const std::string& other : others)
            EXPECT_FALSE(folders.contains(pathOf(other))) << other;
    }
    EXPECT_FALSE(folders.contains(pathOf("elsewhere")));
    EXPECT_FALSE(folders.contains("/v/.SYS_INDEX/b"));
}

} // namespace
} // namespace veilkeep::test
