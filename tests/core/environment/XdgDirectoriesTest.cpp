#include "core/environment/XdgDirectories.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace veilkeep::test {
namespace {

TEST(XdgDirectories, FollowTheEnvironment) {
    const ScratchTree tree; // whose end the variables that are changed here do not outlive
    const struct {
        const char* home;
        const char* dataHome;
        std::string data;
        std::string inProgress;
    } rows[] = {
        {"/home/ada", "/data", "/data", "/data/Veilkeep/InProgress"},
        {"/home/ada", "", "/home/ada/.local/share", "/home/ada/.local/share/Veilkeep/InProgress"},
        {"/home/ada/", "relative", "/home/ada/.local/share", "/home/ada/.local/share/Veilkeep/InProgress"},
        {"/home/ada", "/data//./x/", "/data/x", "/data/x/Veilkeep/InProgress"},
    };
    for (const auto& row : rows) {
        ::setenv("HOME", row.home, 1);
        ::setenv("XDG_DATA_HOME", row.dataHome, 1);
        EXPECT_EQ(XdgDirectories::current().dataHome, row.data);
        EXPECT_EQ(OwnPlaces::current().inProgressDirectory, row.inProgress);
    }
}

TEST(XdgDirectories, NoHomeLeavesNoPlaceInTheWorkingDirectory) {
    const OwnPlaces places = OwnPlaces::in({});
    EXPECT_EQ(places.dataDirectory + places.inProgressDirectory + places.defaultsFile + places.stateDirectory,
              "");
}

} // namespace
} // namespace veilkeep::test
