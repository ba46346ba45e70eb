#include "core/environment/UserDatabase.h"

#include "core/names/LinuxProtectedPaths.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>

namespace veilkeep::test {
namespace {

constexpr unsigned int unknownUser = 3999999999;

TEST(UserDatabase, ListsTheHomesOfTheLocalFile) {
    const ScratchTree tree;
    const std::string users = tree.makeFile("passwd", "root:x:0:0:root:/root:/bin/sh\n"
                                                      "ada:x:3999999999:100:Ada:/export/./far//ada/:/bin/sh\n"
                                                      "none:x:8:8::relative:/bin/sh\n"
                                                      "bob:x:9:9::/export/bob:/bin/sh\n");
    const PrivateMount standIn(users, "/etc/passwd", nullptr, MS_BIND);
    if (!standIn.whyMissing().empty())
        GTEST_SKIP() << standIn.whyMissing();
    EXPECT_EQ(homesInLocalFile(), (std::vector<std::string>{"/root", "/export/far/ada", "/export/bob"}));
    EXPECT_EQ(homeInUserDatabase(9), "/export/bob");
    EXPECT_EQ(userInDatabase(unknownUser).value_or(User()).group, 100u);
    const auto further = LinuxProtectedPaths::Surroundings::current().furtherDirectories();
    EXPECT_EQ(std::count(further.begin(), further.end(), "/export/bob"), 1) << "another user's home";
}

// Users that only the name services know, played by a program in getent's place.
TEST(UserDatabase, AsksTheNameServicesForOthers) {
    const std::pair<std::string, std::string> rows[] = {
        {"printf 'ada:*:3999999999:100:Ada,,,:/home/./far//ada:/bin/sh\\n'", "/home/far/ada"},
        {"printf 'ada:*:3999999999:100::/home/ada'", "/home/ada"},
        {"printf 'ada:*:3999999999:100::relative:/bin/sh\\n'", ""},
        {"printf 'ada:*:3999999999'", ""},
        {"printf 'bob:*:9:100::/home/bob:/bin/sh\\n'", ""},
        {"printf 'ada:*:3999999999:100::/home/ada:/bin/sh'; exit 2", ""},
        {"[ \"$*\" = 'passwd 3999999999' ] && printf 'ada::3999999999:9::/asked/rightly:'", "/asked/rightly"},
    };
    const ScratchTree tree;
    for (const auto& [script, home] : rows) {
        const std::string getent = tree.makeFile("getent", "#!/bin/sh\n" + script + "\n", 0755);
        {
            const PrivateMount standIn(getent, "/usr/bin/getent", nullptr, MS_BIND);
            if (!standIn.whyMissing().empty())
                GTEST_SKIP() << standIn.whyMissing();
            EXPECT_EQ(homeInUserDatabase(unknownUser), home) << script;
        }
        ASSERT_EQ(::unlink(getent.c_str()), 0);
    }
}

} // namespace
} // namespace veilkeep::test
