#include "tests/app/process/ProcessWorld.h"

#include <signal.h>

namespace veilkeep::test {
namespace {

class CrashTest : public ProcessWorld {
protected:
    std::string state(const std::string& name) const {
        return m_tree.path("home/.local/state/Veilkeep/" + name);
    }
    std::vector<std::string> reports() const {
        std::vector<std::string> paths;
        for (const std::string& name : namesIn(state("")))
            if (name.starts_with("Problem Report "))
                paths.push_back(state(name));
        return paths;
    }
    // The main window and, where a crash is told, the report, which comes before an answer.
    std::size_t windowsOfNextStart(std::size_t expected) {
        EXPECT_TRUE(startToWindow());
        EXPECT_EQ(ctl({"status"}).exitStatus, 0);
        waitUntil([&] { return windowCount() >= expected; });
        return windowCount();
    }
};

TEST_F(CrashTest, IsToldOnceAtTheNextStart) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer listens to the signal";
#endif
    const std::string secret = "marker-of-mine";
    const std::string item = m_tree.makeFile("home/" + secret + "/" + secret + ".txt", secret);
    ASSERT_TRUE(startToWindow());
    EXPECT_EQ(ctl({"add", item}).exitStatus, 0);
    EXPECT_EQ(ctl({"group", "add", secret}).exitStatus, 0);
    EXPECT_EQ(end(SIGSEGV), -1) << "ended by its signal";
    const std::string note = readFile(state("Running"));
    EXPECT_NE(note.find("signal 11"), std::string::npos) << note;
    EXPECT_EQ(note.find(secret), std::string::npos) << note;

    EXPECT_EQ(windowsOfNextStart(2), 2U);
    ASSERT_EQ(reports().size(), 1U);
    const std::string report = readFile(reports().front());
    for (const char* const part :
         {"Reason: SIGSEGV (Segmentation fault), version 0.", "Stack:\n", "Veilkeep(+0x", "Qt: 6.",
          "Desktop: ", "Display: xcb", "A former run crashed: SIGSEGV"})
        EXPECT_NE(report.find(part), std::string::npos) << part << "\n" << report;
    for (const std::string& part : {secret, std::string("/home"), m_tree.root()})
        EXPECT_EQ(report.find(part), std::string::npos) << part << "\n" << report;
    EXPECT_EQ(end(SIGTERM), 0);

    EXPECT_EQ(windowsOfNextStart(1), 1U) << "told once";
    EXPECT_EQ(end(SIGKILL), -1);
    EXPECT_EQ(windowsOfNextStart(1), 1U) << "no crash";
    EXPECT_TRUE(isLogged("The last run was cut off"));
    EXPECT_EQ(end(SIGTERM), 0);
    EXPECT_EQ(reports().size(), 1U);
    EXPECT_FALSE(exists(state("Running")) || exists(state("Crash Note")));
}

TEST_F(CrashTest, OfAProcessWithoutTheListIsToldAsWell) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer listens to the signal";
#endif
    start({"--hide", m_tree.path("gone")});
    ASSERT_TRUE(waitUntil([this] { return windowCount() > 0; }));
    EXPECT_EQ(end(SIGSEGV), -1);
    EXPECT_EQ(windowsOfNextStart(2), 2U);
    EXPECT_EQ(end(SIGTERM), 0);
    EXPECT_EQ(reports().size(), 1U);
}

} // namespace
} // namespace veilkeep::test
