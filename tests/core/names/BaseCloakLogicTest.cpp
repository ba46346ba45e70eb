#include "core/names/BaseCloakLogic.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

TEST(BaseCloakLogic, NamesEveryLevelBack) {
    const std::pair<std::string, std::string> rows[] = {
        {"/Users/u/.SYS_INDEX/scoD/.SYS_INDEX/troper.pdf", "/Users/u/Docs/report.pdf"},
        {"/a/.SYS_INDEX/.SYS_INDEX/cb", "/a/bc"},
        {"/a/.SYS_INDEX/cb/de", "/a/bc/de"},
        {"/a/.SYS_INDEX", "/a"},
        {"/.SYS_INDEX/cb", "/bc"},
        {"/.SYS_INDEX", "/"},
        {"/a/.SYS_INDEX/XEDNI_SYS./.SYS_INDEX/cb", "/a/XEDNI_SYS./bc"},
        {"/a//bc/", "/a//bc/"}, // nothing hidden: unchanged to the letter
        {"/a/.SYS_INDEXes/cb", "/a/.SYS_INDEXes/cb"},
        {"", ""},
    };
    for (const auto& [path, original] : rows) {
        EXPECT_EQ(BaseCloakLogic::constructOriginalFullFileName(path), original) << path;
        EXPECT_EQ(BaseCloakLogic::constructOriginalFullFileName(path, "/not/looked/at"), original) << path;
    }
}

TEST(BaseCloakLogic, NamesTheLastLevelBackForAnUnhide) {
    const std::pair<std::string, std::string> rows[] = {
        {"/Users/u/Docs/.SYS_INDEX/troper.pdf", "/Users/u/Docs/report.pdf"},
        {"/a/.SYS_INDEX/cb/.SYS_INDEX/de", "/a/.SYS_INDEX/cb/ed"},
        {"/a//./x/../.SYS_INDEX/cb", "/a//./x/../bc"},
        {"/.SYS_INDEX/cb", "/bc"},
        {"/a/.SYS_INDEX/XEDNI_SYS.", "/a/XEDNI_SYS."},
    };
    for (const auto& [path, original] : rows)
        EXPECT_EQ(BaseCloakLogic::constructOriginalFullFileNameForUnhide(path, "/not/looked/at"), original);
}

TEST(BaseCloakLogic, ProtectsByTheEnvironment) {
    const test::ScratchTree tree;
    tree.makeFile("home/.config/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n");
    tree.makeDirectory("home/Schreibtisch");
    tree.makeFile("home/.local/share/Veilkeep/FilesInfo.Veilkeep");
    const std::pair<std::string, bool> rows[] = {
        {"home", true},
        {"home/Schreibtisch", true},
        {"home/Schreibtisch/report.pdf", false},
        {"home/.local", true},
        {"home/.local/share/Veilkeep/FilesInfo.Veilkeep", true},
        {"home/.local/share/other", false},
        {"home/.config/com.ostrel.Veilkeep.plist", true},
        {"", true}, // holds the home's own data
        {"elsewhere", false},
    };
    for (const auto& [path, isProtected] : rows)
        EXPECT_EQ(BaseCloakLogic::isProtectedFileAtPath(tree.path(path)), isProtected) << path;
    const std::string& pattern = BaseCloakLogic::protectedListPredicate().pattern();
    EXPECT_NE(pattern.find("|^(" + tree.home() + "/Desktop/*)$"), std::string::npos) << pattern;
}

} // namespace
} // namespace veilkeep
