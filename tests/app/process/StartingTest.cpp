#include "tests/app/process/ProcessWorld.h"

#include <signal.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

namespace veilkeep::test {
namespace {

class StartingTest : public ProcessWorld {
protected:
    // Files of the running program's lists.
    std::string data(const std::string& name) const {
        return m_tree.path("home/.local/share/Veilkeep/" + name);
    }
};

TEST_F(StartingTest, SaysOnTheTerminalWhatIsWrong) {
    const auto nothing = [] {};
    const auto noDisplay = [] { ::unsetenv("DISPLAY"), ::unsetenv("QT_QPA_PLATFORM"); };
    const auto wrongDisplay = [] { ::setenv("DISPLAY", ":98765", 1); };
    const struct {
        std::vector<std::string> arguments;
        std::function<void()> inChild;
        int exitStatus;
        std::string output, errors; // beginnings
    } rows[] = {
        {{"--version"}, noDisplay, 0, "veilkeep ", ""},
        {{"--help"}, noDisplay, 0, "usage: veilkeep ", ""},
        {{"--nonsense"}, nothing, 2, "", "veilkeep: unknown option "},
        {{"-x", "--version"}, nothing, 2, "", "veilkeep: unknown option "},
        {{}, noDisplay, 1, "", "veilkeep: there is no display; veilkeepctl works without one\n"},
        {{}, wrongDisplay, 1, "", "veilkeep: could not connect to display :98765"},
        {{"--self-test"}, noDisplay, 0, "ok: ", ""},
        {{"--self-test"}, nothing, 0, "ok: ", ""},
    };
    for (const auto& row : rows) {
        std::vector<std::string> all{bundledProgram("Veilkeep")};
        all.insert(all.end(), row.arguments.begin(), row.arguments.end());
        const ProgramRun run = runProgram(all, {.directory = {}, .inChild = row.inChild});
        const std::string trace = ::testing::PrintToString(row.arguments);
        EXPECT_EQ(run.exitStatus, row.exitStatus) << trace << run.output << run.errors;
        EXPECT_EQ(run.output.substr(0, row.output.size()), row.output) << trace;
        EXPECT_EQ(row.errors.empty() ? run.errors : run.errors.substr(0, row.errors.size()), row.errors)
            << trace << run.errors;
    }
}

TEST_F(StartingTest, TheSelfTestFindsWhatIsMissing) {
    const std::string bundle = m_tree.path("T.app");
    std::filesystem::copy(VEILKEEP_BUNDLE, bundle, std::filesystem::copy_options::recursive);
    const struct {
        const char* missing;
        const char* what;
    } rows[] = {
        {"MacOS/cloakWorker", "FAILED: an item is hidden and brought back: "},
        {"MacOS/cloakTraces", "FAILED: the programs are there: "},
        {"Resources/guide/index.html", "FAILED: what they need is there: "},
    };
    const std::string program = bundle + "/Contents/MacOS/Veilkeep";
    EXPECT_EQ(runProgram({program, "--self-test"}).exitStatus, 0);
    for (const auto& row : rows) {
        const std::string path = bundle + "/Contents/" + row.missing;
        std::filesystem::rename(path, path + ".away");
        const ProgramRun run = runProgram({program, "--self-test"});
        EXPECT_EQ(run.exitStatus, 1) << row.missing;
        EXPECT_NE(run.output.find(row.what), std::string::npos) << row.missing << "\n" << run.output;
        std::filesystem::rename(path + ".away", path);
    }
}

TEST_F(StartingTest, InTheBackgroundThereIsNoWindow) {
    for (const char* option : {"--login", "--service"}) {
        start({option});
        ASSERT_TRUE(
            waitUntil([] { return ctl({"status"}).output.find("owner\tapplication") != std::string::npos; }));
        EXPECT_EQ(windowCount(), 0U) << option;
        EXPECT_EQ(run({option}).exitStatus, 0);
        EXPECT_EQ(ctl({"status"}).exitStatus, 0);
        EXPECT_EQ(windowCount(), 0U) << option;
        EXPECT_EQ(run({}).exitStatus, 0);
        EXPECT_TRUE(window()) << option;
        EXPECT_EQ(end(SIGTERM), 0);
    }
}

TEST_F(StartingTest, WithoutASessionBusTheSecondGivesUp) {
    stopSessionBus();
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    ASSERT_TRUE(startToWindow());
    BackgroundProgram second({bundledProgram("Veilkeep")});
    ASSERT_TRUE(waitUntil([&] { return m_screen.windowsOf(second.process()).size() == 1; }));
    const auto told = m_screen.windowsOf(second.process());
    ASSERT_TRUE(waitUntil([&] { return m_screen.hasKeyboard(told[0]); }));
    m_screen.key("Escape");
    EXPECT_EQ(second.end(0), 1);
    m_screen.close(m_screen.windowsOf(process()).at(0));
    EXPECT_EQ(end(0), 0) << "there is no other way back to the window";
}

TEST_F(StartingTest, ADamagedListIsToldOnce) {
    const std::string item = m_tree.makeFile("Docs/a");
    ASSERT_EQ(ctl({"add", item}).exitStatus, 0);
    ASSERT_EQ(ctl({"hide", item}).exitStatus, 0); // keeps a copy of what was added
    writeFile(data("FilesInfo.Veilkeep"), "rubbish");
    start();
    ASSERT_TRUE(m_screen.waitForDialog());
    EXPECT_EQ(windowCount(), 1U);
    m_screen.key("Return");
    EXPECT_TRUE(becomesListed(item));
    EXPECT_TRUE(window());
    EXPECT_EQ(end(SIGTERM), 0);
}

TEST_F(StartingTest, AReadOnlyListIsRefused) {
    m_tree.makeDirectory("home/.local/share/Veilkeep", 0500);
    start();
    ASSERT_TRUE(m_screen.waitForDialog());
    m_screen.key("Escape");
    EXPECT_EQ(end(0), 1);
}

} // namespace
} // namespace veilkeep::test
