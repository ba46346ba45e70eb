#include "core/records/File.h"

#include "core/records/FileSystemHelpers.h"
#include "core/tracking/FileAlias.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace veilkeep {
namespace {

Value bytes(std::string data) {
    return Bytes{std::move(data)};
}

Value aliasValue(const std::string& path) {
    return bytes(aliasRecordFromPath(path).value());
}

TEST(File, HoldsTheStoredKeys) {
    const test::ScratchTree tree;
    const std::string visible = tree.path("a/b.txt");
    const std::string hidden = tree.makeFile("a/.SYS_INDEX/b.txt", "12345");
    const std::string folder = tree.makeDirectory("a/folder");
    const std::string link = tree.path("a/link");
    ASSERT_EQ(::symlink("folder", link.c_str()), 0);
    const std::string linkToFile = tree.path("a/\xff");
    ASSERT_EQ(::symlink("././.SYS_INDEX/b.txt", linkToFile.c_str()), 0);
    const std::string withNul = hidden + std::string("\0x", 2);
    const auto properties = [](std::string name, std::string path, std::string originalPath,
                               std::uint64_t size, int state, bool isFile, Value alias) {
        return PropertyDictionary{{"GroupID", std::int64_t{0}},
                                  {"Name", bytes(std::move(name))},
                                  {"Path", bytes(std::move(path))},
                                  {"Size", size},
                                  {"OriginalPath", bytes(std::move(originalPath))},
                                  {"State", std::int64_t{state}},
                                  {"IsFile", isFile},
                                  {"Alias", std::move(alias)}};
    };
    const std::string unreachable = tree.path(std::string(300, 'n'));
    const struct {
        const char* what;
        File file;
        PropertyDictionary expected;
    } rows[] = {
        {"plain", File(), properties("Some path", "OriginalPath", "OriginalPath", 0, 0, false, bytes(""))},
        {"missing", File::initWithPath(visible),
         properties("b.txt", visible, visible, 0, 0, true, aliasValue(visible))},
        {"state", File::initWithPath(hidden, -1),
         properties("b.txt", hidden, hidden, 5, -1, true, aliasValue(hidden))},
        {"hidden", File::initWithOriginalPath(visible, hidden, 1),
         properties("b.txt", hidden, visible, 5, 1, true, aliasValue(hidden))},
        {"folder", File::fileWithPath(folder),
         properties("folder", folder, folder, unknownFileSize, 0, false, aliasValue(folder))},
        {"link to a folder", File::fileWithPath(link),
         properties("link", link, link, unknownFileSize, 0, false, aliasValue(link))},
        {"link to a file", File::fileWithPath(linkToFile),
         properties("\xff", linkToFile, linkToFile, 20, 0, true, aliasValue(linkToFile))},
        {"path that goes on after a NUL", File::initWithPath(withNul, -1),
         properties(std::string("b.txt\0x", 7), withNul, withNul, 0, -1, true, bytes(""))},
        {"no alias", File::fileWithPath(unreachable),
         properties(std::string(300, 'n'), unreachable, unreachable, 0, 0, true, bytes(""))},
        {"no path", File::initWithPath(""), properties("", "", "", 0, 0, true, bytes(""))},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.file.properties(), row.expected) << row.what;
}

TEST(File, LoadsWhatWasStored) {
    const test::ScratchTree tree;
    const std::string path = tree.makeFile("file");
    const File made = File::fileWithPath(path);
    EXPECT_EQ(File(made.properties()).properties(), made.properties());

    const PropertyDictionary later = {{"Alias", Null()}, {"Tags", ValueList{"red", std::int64_t{3}}}};
    File file(later);
    EXPECT_EQ(file.properties(), later) << "a null marker is an alias too, and unknown keys stay";
    EXPECT_FALSE(file.alias());
    EXPECT_EQ(std::string(file.path()).append(file.name()), "");
    EXPECT_EQ(file.size() + static_cast<std::uint64_t>(file.groupID() + file.state()), 0u);

    file.setProperties({{"Path", path}, {"Size", std::int64_t{-1}}, {"GroupID", "rubbish"}});
    EXPECT_EQ(file.alias(), made.alias()) << "an older record gains an alias";
    EXPECT_EQ(file.path(), path) << "text is a path too";
    EXPECT_EQ(file.size(), unknownFileSize);
    EXPECT_EQ(file.groupID(), 0);
    EXPECT_TRUE(File(PropertyDictionary()).properties().find("Alias")->isNull());
}

} // namespace
} // namespace veilkeep
