#include "worker/traces/RecentDocuments.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

TEST(RecentDocuments, AreReadAsKdeWritesThem) {
    const std::pair<std::string, std::optional<std::string>> rows[] = {
        {"[Desktop Entry]\nIcon=x\nType=Link\nURL[$e]=file:$HOME/a b\n", "/home/u/a b"},
        {"[Desktop Entry]\nURL[$e]=file:///x/$$HOME/100%25\n", "/x/$HOME/100%"},
        {"[Desktop Entry]\r\nURL[$e] = file://${HOME}/%C3%A4\r\n", "/home/u/\xc3\xa4"},
        {"[Desktop Entry]\nURL[$ei]=$HOME/a\\\\b\\sc", "/home/u/a\\b c"},
        {"[Desktop Entry]\nURL=file:///$HOME/a", "/$HOME/a"},
        {"[Other]\nURL=file:///a\n[Desktop Entry]\nName=b\nURL=file:///b", "/b"},
        {"[Desktop Entry]\nURLS=file:///a\n#URL=file:///a\nURL=smb://host/a\n", std::nullopt},
        {"URL=file:///a", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [text, path] : rows)
        EXPECT_EQ(pathOfRecentDocument(text, "/home/u"), path) << text;
}

TEST(RecentDocuments, GoByWhereTheyLeadTo) {
    const ScratchTree tree;
    const std::string directory = tree.makeDirectory("home/.local/share/RecentDocuments");
    const auto make = [&](const std::string& name, const std::string& url) {
        tree.makeFile("home/.local/share/RecentDocuments/" + name, "[Desktop Entry]\nURL[$e]=" + url + "\n");
    };
    make("a.txt.desktop", "file:$HOME/a.txt");
    make("a.txt[2].desktop", "file:///elsewhere/a.txt");
    make("innocent.desktop", "file:$HOME/dir/below/b");
    make("dir2.desktop", "file:$HOME/dir2/b");
    make("a.txt", "file:$HOME/a.txt");
    tree.makeDirectory("home/.local/share/RecentDocuments/folder.desktop");
    TracedItems items({tree.path("home/a.txt"), tree.path("home/dir")});
    EXPECT_TRUE(removeRecentDocuments(directory, items).value());
    EXPECT_FALSE(removeRecentDocuments(directory, items).value());
    EXPECT_EQ(namesIn(directory),
              (std::set<std::string>{"a.txt[2].desktop", "dir2.desktop", "a.txt", "folder.desktop"}));
    EXPECT_FALSE(removeRecentDocuments(tree.path("missing"), items).value());
}

} // namespace
} // namespace veilkeep::test
