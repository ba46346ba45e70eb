#include "core/names/ProtectedPaths.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <set>
#include <sstream>

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

std::vector<std::string> words(const std::string& text) {
    std::vector<std::string> all;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, ' ');)
        all.push_back(word);
    return all;
}

// "~" in them is the home.
void expectRows(const ProtectedPaths& paths, const std::string& home,
                const std::vector<std::string>& protectedOnes, const std::vector<std::string>& free) {
    for (const auto* rows : {&protectedOnes, &free})
        for (std::string path : *rows) {
            if (path.starts_with('~'))
                path.replace(0, 1, home);
            EXPECT_EQ(paths.contains(path), rows == &protectedOnes) << testing::PrintToString(path);
        }
}

TEST(ProtectedPaths, HoldsForEveryHome) {
    const auto protectedOnes = words("/ /net /Library /Volumes/asadsd/ ~ ~/Desktop ~/Desktop/ ~/Library "
                                     "/Applications /Users/somebody /usr/share/line\nbreak");
    const std::vector<std::string> free = {"/Volumes/asadsd/blahblah", "~/blahblah", "~/Desktop/test",
                                           "/Applications/Some.app", "/network"};
    for (const std::string home :
         {"/Users/u", "/home/u", "/home/first.last", "/data/homes/c++", "/home/a(b", "/home/with blank",
          "/home/\xFF\xFE", "/home/[x]", "/deep/er/home/u", "/home/line\nbreak"}) {
        SCOPED_TRACE(testing::PrintToString(home));
        expectRows(ProtectedPaths(surroundingsOf(home)), home, protectedOnes, free);
    }
}

TEST(ProtectedPaths, HoldsForLinux) {
    expectRows(ProtectedPaths(surroundingsOf("/home/u")), "/home/u",
               words("/boot /boot/vmlinuz /lib /lib64/x /libx32 /proc/1 /sys/kernel /run/user/1000/x "
                     "/run/media /run/media/u /run/media/u/DISK /run/media/u/other/x /run/mediax/x /home "
                     "/home/somebody /root /srv /snap /media /media/u /mnt /data/disk /export/u "
                     "~/Schreibtisch /data/Musik/ ~/.cache ~/.local ~/.local/share "
                     "~/.local/share/Veilkeep ~/.local/share/Veilkeep/InProgress/x "
                     "~/.local/state/Veilkeep/Veilkeep.log ~/.config/com.ostrel.Veilkeep.plist /programs "
                     "/programs/veilkeep /programs/veilkeep/Veilkeep.app "
                     "/programs/veilkeep/Veilkeep.app/Contents/MacOS/cloakWorker ~/x/.SYS_INDEX "
                     "~/x/.SYS_INDEX/"),
               words("/bootx /run/media/u/DISK/x /run/media/STICK/x /home/somebody/x /media/u/x /export "
                     "~/Schreibtisch/x ~/.local/share/x ~/.local/share/Veilkeeper "
                     "~/.config/com.ostrel.Veilkeep.plist2 /programs/veilkeep/Veilkeep.app2/Contents/x "
                     "~/x/.SYS_INDEX/y ~/x/.SYS_INDEXes"));
}

TEST(ProtectedPaths, ComparesCleanPaths) {
    expectRows(ProtectedPaths(surroundingsOf("/home/u")), "/home/u",
               {"~/x/../Desktop", "~//Desktop//", "~/x/..", "/home/../boot/x", "//home", "//"},
               {"~/Desktop/../x", "/../home/u/x", ""});
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
               {in("outside/system/passwd"), in("outside/user/Documents"), in("real/Schreibtisch"),
                in("outside/user/Arbeit"), in("outside/user/config/com.ostrel.Veilkeep.plist"),
                in("outside/user/.local/share/Veilkeep/x"), in("real"), in("real/Documents"),
                in("real/config"), in("real/config/com.ostrel.Veilkeep.plist"), "~", "~/.config",
                in("outside/system/.."), in("outside/user/../real")},
               {in("outside/system"), in("outside/dangling"), in("outside/user"), "~/Documents/x"});
    ASSERT_EQ(::chdir(tree.path("outside").c_str()), 0);
    expectRows(ProtectedPaths(surroundingsOf(home)), home,
               {"user/Documents", "..", "system/passwd", "/proc/self/cwd/x"}, {"user/x"});
    ASSERT_EQ(::chdir("/"), 0);
}

// Systems that keep their homes in "/var" lead to them through a link.
TEST(ProtectedPaths, TakesAHomeBehindALinkForWhereItIsNamed) {
    const test::ScratchTree tree;
    std::string real = "/var/tmp/veilkeep-test-XXXXXX";
    ASSERT_NE(::mkdtemp(real.data()), nullptr);
    const std::string home = tree.path("named");
    ASSERT_EQ(::symlink(real.c_str(), home.c_str()), 0);
    expectRows(ProtectedPaths(surroundingsOf(home)), home, {"~/Desktop", "~", real + "/x", "/var/tmp/x"},
               {"~/x"});
    ::rmdir(real.c_str());
}

} // namespace
} // namespace veilkeep
