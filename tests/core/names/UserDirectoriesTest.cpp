#include "core/names/UserDirectories.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace veilkeep {
namespace {

using Directories = std::vector<std::string>;

TEST(UserDirectories, ReadsTheFormat) {
    const std::pair<std::string, Directories> rows[] = {
        {"XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"", {"/home/u/Schreibtisch"}},
        {"XDG_MUSIC_DIR=\"/data/music/\"\n", {"/data/music"}},
        {"  XDG_VIDEOS_DIR = \"$HOME/a b\" # text", {"/home/u/a b"}},
        {"XDG_A_DIR=\"$HOME/say \\\"hi\\\" \\\\ \\$5 \\`x\\`\"", {"/home/u/say \"hi\" \\ $5 `x`"}},
        {"XDG_A_DIR=\"$HOME/\"", {"/home/u"}},
        {"XDG_A_DIR=\"$HOME/Bilder\xFF\"", {"/home/u/Bilder\xFF"}},
        {"XDG_A_DIR=\"$HOME/cut off\\", {"/home/u/cut off\\"}},
        {"XDG_A_DIR=\"$HOME/a\"\n\nXDG_B_DIR=\"$HOME/b\"\n", {"/home/u/a", "/home/u/b"}},
        {"# XDG_A_DIR=\"$HOME/a\"", {}},
        {"XDG_A_DIR=\"relative\"", {}},
        {"XDG_A_DIR=\"$HOMEless/a\"", {}},
        {"XDG_A_DIR=$HOME/a", {}},
        {"XDG_A=\"$HOME/a\"", {}},
        {"A_DIR=\"/bin\"", {}},
        {"", {}},
    };
    for (const auto& [content, directories] : rows)
        EXPECT_EQ(parseUserDirectories(content, "/home/u"), directories) << content;
    EXPECT_EQ(parseUserDirectories("XDG_A_DIR=\"$HOME/a\"\nXDG_B_DIR=\"/b\"", ""), Directories{"/b"});
}

TEST(UserDirectories, IsNotHeldUpByWhatStandsInTheFilesPlace) {
    const test::ScratchTree tree;
    EXPECT_EQ(userDirectories(tree.makeDirectory("absent"), "/home/u"), Directories{});
    ASSERT_EQ(::mkfifo((tree.makeDirectory("fifo") + "/user-dirs.dirs").c_str(), 0600), 0);
    EXPECT_EQ(userDirectories(tree.path("fifo"), "/home/u"), Directories{});
    tree.makeFile("file/user-dirs.dirs", "XDG_A_DIR=\"$HOME/a\"");
    EXPECT_EQ(userDirectories(tree.path("file"), "/home/u"), Directories{"/home/u/a"});
}

} // namespace
} // namespace veilkeep
