#include "ctl/DoctorCommand.h"
#include "tests/ctl/CtlCalls.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/SilentSocket.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <chrono>
#include <filesystem>
#include <map>
#include <sstream>

namespace veilkeep::test {
namespace {

using Status = CheckupFinding::Status;

// Every file below the directory, with what is in it.
std::map<std::string, std::string> contentBelow(const std::string& directory) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory))
        files[entry.path().string()] = entry.is_regular_file() ? readFile(entry.path().string()) : "";
    return files;
}

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
    const auto before = contentBelow(tree.home());
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
        EXPECT_EQ(contentBelow(tree.home()), before);
    }
}

TEST(DoctorTest, OnlyWhatDoesNotWorkIsAFailure) {
    const auto of = [](Status status) { return CheckupFinding{"x", "X", status, "m"}; };
    EXPECT_EQ(statusOf({}), RequestStatus::AllWell);
    EXPECT_EQ(statusOf({of(Status::Works), of(Status::Limited)}), RequestStatus::AllWell);
    EXPECT_EQ(statusOf({of(Status::Fails), of(Status::Works)}), RequestStatus::SomeFailed);
}

TEST(DoctorTest, LinesFitATerminalAndMoveNoCursor) {
    const QString longText = QStringLiteral("word ").repeated(40) + QChar(0x1b) + "[2J";
    const std::string text =
        findingsText({{"tray", "Icon", Status::Fails, longText, "do it", {"a", "b"}}, {"y", "Y", {}, "m"}});
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 80U) << line;
    EXPECT_EQ(text.find('\x1b'), std::string::npos);
    EXPECT_EQ(text.rfind("Icon: does not work\n    word word", 0), 0U) << text;
    EXPECT_NE(text.find("\n    What to do: do it\n    Packages: a b\nY: works\n    m\n"), std::string::npos)
        << text;
}

} // namespace
} // namespace veilkeep::test
