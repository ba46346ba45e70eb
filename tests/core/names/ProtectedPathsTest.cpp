#include "core/names/ProtectedPaths.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <set>

namespace veilkeep {
namespace {

LinuxProtectedPaths::Surroundings surroundingsOf(const std::string& home) {
    LinuxProtectedPaths::Surroundings surroundings;
    surroundings.home = home;
    surroundings.directories = {home + "/.local/share", home + "/.config", home + "/.local/state",
                                home + "/.cache", ""};
    const OwnPlaces own = OwnPlaces::in(surroundings.directories);
    surroundings.ownDirectories = {own.dataDirectory, own.stateDirectory};
    surroundings.ownFiles = {own.defaultsFile};
    surroundings.furtherDirectories = [home] {
        return std::vector<std::string>{home + "/Schreibtisch", "/data/Musik", "/export/u", ""};
    };
    surroundings.applicationBundle = [] { return "/programs/veilkeep/Veilkeep.app"; };
    surroundings.isMountPoint = [](const std::string& path) {
        const std::set<std::string> mounted = {"/run/media/u/DISK", "/data/disk", "/run/media/STICK"};
        return mounted.count(path) > 0;
    };
    return surroundings;
}

struct Row {
    std::string path; // "~" is the home
    bool isProtected;
};

void expectRows(const ProtectedPaths& paths, const std::string& home, const std::vector<Row>& rows) {
    for (Row row : rows) {
        if (row.path.starts_with('~'))
            row.path.replace(0, 1, home);
        EXPECT_EQ(paths.contains(row.path), row.isProtected) << testing::PrintToString(row.path);
    }
}

TEST(ProtectedPaths, HoldsForEveryHome) {
    const std::vector<Row> rows = {
        {"/", true},
        {"/net", true},
        {"/Library", true},
        {"/Volumes/asadsd/", true},
        {"/Volumes/asadsd/blahblah", false},
        {"~", true},
        {"~/blahblah", false},
        {"~/Desktop", true},
        {"~/Desktop/", true},
        {"~/Desktop/test", false},
        {"~/Library", true},
        {"/Applications/Some.app", false},
        {"/Applications", true},
        {"/Users/somebody", true},
        {"/network", false},
        {"/usr/share/line\nbreak", true},
    };
    for (const std::string home :
         {"/Users/u", "/home/u", "/home/first.last", "/data/homes/c++", "/home/a(b", "/home/with blank",
          "/home/\xFF\xFE", "/home/[x]", "/deep/er/home/u", "/home/line\nbreak"}) {
        SCOPED_TRACE(testing::PrintToString(home));
        expectRows(ProtectedPaths(surroundingsOf(home)), home, rows);
    }
}

TEST(ProtectedPaths, HoldsForLinux) {
    expectRows(ProtectedPaths(surroundingsOf("/home/u")), "/home/u",
               {
                   {"/boot", true},
                   {"/boot/vmlinuz", true},
                   {"/bootx", false},
                   {"/lib", true},
                   {"/lib64/x", true},
                   {"/libx32", true},
                   {"/proc/1", true},
                   {"/sys/kernel", true},
                   {"/run/user/1000/x", true},
                   {"/run/media", true},
                   {"/run/media/u", true},
                   {"/run/media/u/DISK", true},
                   {"/run/media/u/DISK/x", false},
                   {"/run/media/u/other/x", true},
                   {"/run/media/STICK/x", false},
                   {"/run/mediax/x", true},
                   {"/home", true},
                   {"/home/somebody", true},
                   {"/home/somebody/x", false},
                   {"/root", true},
                   {"/srv", true},
                   {"/snap", true},
                   {"/media", true},
                   {"/media/u", true},
                   {"/media/u/x", false},
                   {"/mnt", true},
                   {"/data/disk", true},
                   {"/export/u", true},
                   {"/export", false},
                   {"~/Schreibtisch", true},
                   {"~/Schreibtisch/x", false},
                   {"/data/Musik/", true},
                   {"~/.cache", true},
                   {"~/.local", true},
                   {"~/.local/share", true},
                   {"~/.local/share/x", false},
                   {"~/.local/share/Veilkeep", true},
                   {"~/.local/share/Veilkeep/InProgress/x", true},
                   {"~/.local/share/Veilkeeper", false},
                   {"~/.local/state/Veilkeep/Veilkeep.log", true},
                   {"~/.config/com.ostrel.Veilkeep.plist", true},
                   {"~/.config/com.ostrel.Veilkeep.plist2", false},
                   {"/programs", true},
                   {"/programs/veilkeep", true},
                   {"/programs/veilkeep/Veilkeep.app", true},
                   {"/programs/veilkeep/Veilkeep.app/Contents/MacOS/cloakWorker", true},
                   {"/programs/veilkeep/Veilkeep.app2/Contents/x", false},
                   {"~/x/.SYS_INDEX", true},
                   {"~/x/.SYS_INDEX/", true},
                   {"~/x/.SYS_INDEX/y", false},
                   {"~/x/.SYS_INDEXes", false},
               });
}

TEST(ProtectedPaths, ComparesCleanPaths) {
    expectRows(ProtectedPaths(surroundingsOf("/home/u")), "/home/u",
               {
                   {"~/x/../Desktop", true},
                   {"~//Desktop//", true},
                   {"~/x/..", true},
                   {"/home/../boot/x", true},
                   {"//home", true},
                   {"//", true},
                   {"~/Desktop/../x", false},
                   {"/../home/u/x", false},
                   {"", false},
               });
}

TEST(ProtectedPaths, ComparesWithTheParentsLinksResolved) {
    const test::ScratchTree tree;
    tree.makeDirectory("real/Documents");
    tree.makeDirectory("real/config");
    tree.makeDirectory("real/Arbeit");
    tree.makeDirectory("real/.local/share/Veilkeep");
    tree.makeDirectory("outside");
    ASSERT_EQ(::symlink("real", tree.path("home2").c_str()), 0);
    ASSERT_EQ(::symlink("config", tree.path("real/.config").c_str()), 0);
    ASSERT_EQ(::symlink("Arbeit", tree.path("real/Schreibtisch").c_str()), 0);
    ASSERT_EQ(::symlink("/etc", tree.path("outside/system").c_str()), 0);
    ASSERT_EQ(::symlink("../real", tree.path("outside/user").c_str()), 0);
    ASSERT_EQ(::symlink("/absent", tree.path("outside/dangling").c_str()), 0);
    const std::string home = tree.path("home2");
    const auto in = [&](const std::string& path) { return tree.path(path); };
    expectRows(ProtectedPaths(surroundingsOf(home)), home,
               {
                   {in("outside/system/passwd"), true},
                   {in("outside/system"), false}, // a link is an item of its own
                   {in("outside/dangling"), false},
                   {in("outside/user"), false},
                   {in("outside/user/Documents"), true},
                   {in("real/Schreibtisch"), true},
                   {in("outside/user/Arbeit"), true}, // what a user directory's link leads to
                   {in("outside/user/config/com.ostrel.Veilkeep.plist"), true},
                   {in("outside/user/.local/share/Veilkeep/x"), true},
                   {in("real"), true}, // the home by its real name
                   {in("real/Documents"), true},
                   {in("real/config"), true},
                   {in("real/config/com.ostrel.Veilkeep.plist"), true},
                   {"~", true},
                   {"~/.config", true},
                   {"~/Documents/x", false},
                   {in("outside/system/.."), true}, // "/"
                   {in("outside/user/../real"), true},
               });
    ASSERT_EQ(::chdir(tree.path("outside").c_str()), 0);
    expectRows(ProtectedPaths(surroundingsOf(home)), home,
               {{"user/Documents", true},
                {"user/x", false},
                {"..", true},
                {"system/passwd", true},
                {"/proc/self/cwd/x", true}});
    ASSERT_EQ(::chdir("/"), 0);
}

// Systems that keep their homes in "/var" lead to them through a link.
TEST(ProtectedPaths, TakesAHomeBehindALinkForWhereItIsNamed) {
    const test::ScratchTree tree;
    std::string real = "/var/tmp/veilkeep-test-XXXXXX";
    ASSERT_NE(::mkdtemp(real.data()), nullptr);
    const std::string home = tree.path("named");
    ASSERT_EQ(::symlink(real.c_str(), home.c_str()), 0);
    expectRows(ProtectedPaths(surroundingsOf(home)), home,
               {{"~/x", false}, {"~/Desktop", true}, {"~", true}, {real + "/x", true}, {"/var/tmp/x", true}});
    ::rmdir(real.c_str());
}

} // namespace
} // namespace veilkeep
