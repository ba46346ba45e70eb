#include "tests/ctl/CtlCalls.h"
#include "tests/support/ItemSnapshot.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/SilentSocket.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <chrono>
#include <map>

namespace veilkeep::test {
namespace {

std::map<std::string, std::string> statuses(const std::string& json) {
    std::map<std::string, std::string> found;
    for (const QJsonValue& finding : QJsonDocument::fromJson(QByteArray::fromStdString(json)).array())
        found[finding["check"].toString().toStdString()] = finding["status"].toString().toStdString();
    return found;
}

// Without a bus, with buses that hang, and with damaged files: it ends, says so, and leaves all as it was.
TEST(DoctorTest, ChangesNothingAndDoesNotWaitForABusThatHangs) {
    const ScratchTree tree;
    tree.makeFile("home/.config/com.ostrel.Veilkeep.plist", "rubbish");
    tree.makeFile("home/.local/share/Veilkeep/FilesInfo.Veilkeep", "rubbish");
    const UniqueFd hanging = listenAt(tree.path("hanging"));
    ASSERT_TRUE(hanging);
    const std::string addresses[] = {"unix:path=" + tree.path("none"), "unix:path=" + tree.path("hanging")};
    const auto before = snapshotOf(tree.home());
    for (const std::string& address : addresses) {
        ::setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
        ::setenv("DBUS_SYSTEM_BUS_ADDRESS", address.c_str(), 1);
        const auto begin = std::chrono::steady_clock::now();
        const ProgramRun run = runCtl({"doctor", "--json"}, tree.root());
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10)) << address;
        EXPECT_EQ(run.exitStatus, 1) << run.errors;
        EXPECT_EQ(run.errors, "");
        const auto found = statuses(run.output);
        for (const char* const failing : {"session-bus", "session", "list", "settings"})
            EXPECT_EQ(found.count(failing) ? found.at(failing) : "", "fails") << failing << " " << address;
        EXPECT_EQ(found.count("updates"), 1U);
        EXPECT_EQ(snapshotOf(tree.home()), before);
    }
}

} // namespace
} // namespace veilkeep::test
