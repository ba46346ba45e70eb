#include "tests/app/process/ProcessWorld.h"

#include "core/base/FileUri.h"

#include <signal.h>

#include <functional>

namespace veilkeep::test {
namespace {

using namespace std::string_literals;

class SecondStartTest : public ProcessWorld {
protected:
    // The uppermost of all windows is one of the first process.
    bool comesToTheTop() const {
        return waitUntil([this] {
            const auto all = m_screen.windows();
            return !all.empty() && all.back().process == process();
        });
    }

    void closeWindow() {
        const auto shown = window();
        ASSERT_TRUE(shown);
        m_screen.close(*shown);
        ASSERT_TRUE(waitUntil([this] { return windowCount() == 0; }));
    }
};

TEST_F(SecondStartTest, ShowsTheWindowOfTheFirst) {
    const struct {
        const char* name;
        std::function<void()> before;
    } rows[] = {
        {"covered", [this] { m_screen.cover(); }},
        {"closed", [this] { closeWindow(); }},
    };
    ASSERT_TRUE(startToWindow());
    for (const auto& row : rows) {
        row.before();
        const ProgramRun second = run({});
        EXPECT_EQ(second.exitStatus, 0) << row.name << second.errors;
        EXPECT_TRUE(comesToTheTop()) << row.name;
        EXPECT_EQ(windowCount(), 1U) << row.name;
    }
    EXPECT_EQ(end(SIGTERM), 0);
}

TEST_F(SecondStartTest, AsksForThePasswordWhereTheWindowIsClosed) {
    const std::string item = m_tree.makeFile("Docs/a");
    setPassword();
    start({item});
    for (const bool isFirst : {true, false}) {
        if (!isFirst) {
            EXPECT_EQ(run({item}).exitStatus, 0);
        }
        ASSERT_TRUE(m_screen.waitForDialog());
        EXPECT_EQ(windowCount(), 1U);
        m_screen.key("Escape");
        ASSERT_TRUE(waitUntil([this] { return windowCount() == 0; }));
        EXPECT_NE(ctl({"status"}).output.find("items\t0\n"), std::string::npos);
    }
    EXPECT_EQ(run({item}).exitStatus, 0);
    ASSERT_TRUE(m_screen.waitForDialog());
    m_screen.type(password);
    m_screen.key("Return");
    EXPECT_TRUE(window());
    EXPECT_TRUE(becomesListed(item));
}

TEST_F(SecondStartTest, HandsOnFiles) {
    const std::string plain = m_tree.makeFile("Docs/plain");
    const std::string bytes = m_tree.makeFile("Docs/by\xFFtes\nand a line");
    const std::string spelled = m_tree.makeFile("Docs/with 50%41 & more");
    ASSERT_TRUE(startToWindow({plain}));
    EXPECT_TRUE(becomesListed("visible\t" + plain + "\n"));
    EXPECT_EQ(run({fileUri(bytes, UriSpelling::GLib), spelled, "Docs/missing"}).exitStatus, 0);
    EXPECT_TRUE(becomesListed(spelled));
    EXPECT_NE(ctl({"list", "-0"}).output.find(bytes), std::string::npos);
    std::vector<std::string> many;
    for (int number = 0; number < 1000; ++number)
        many.push_back(m_tree.makeFile("Many/" + std::to_string(number)));
    EXPECT_EQ(run(many).exitStatus, 0);
    EXPECT_TRUE(waitUntil([] { return ctl({"status"}).output.find("items\t1003\n") != std::string::npos; }));
}

// What a web page may hand to the program.
TEST_F(SecondStartTest, LogsHostileLinksAndDoesNothing) {
    const struct {
        std::string link, logged;
    } rows[] = {
        {"veilkeep:?a=1&b", "Got url to handle: veilkeep:?a=1&b"},
        {"VEILKEEP://hide?path=/etc", "hide?path=/etc"},
        {"veilkeep:?" + std::string(10240, 'x'), "xxxx…"},
        {"veilkeep:?%00%ff%zz%", "%zz%"},
        {"javascript:alert(1)", "Unsupported URL scheme javascript. Just ignoring this."},
    };
    ASSERT_TRUE(startToWindow());
    closeWindow();
    for (const auto& row : rows) {
        EXPECT_EQ(run({row.link}).exitStatus, 0) << row.link;
        EXPECT_TRUE(isLogged(row.logged)) << row.link;
    }
    EXPECT_EQ(listed(), "");
    EXPECT_EQ(windowCount(), 0U);
    EXPECT_EQ(end(SIGTERM), 0);
}

TEST_F(SecondStartTest, OfTwoAtOnceOneStays) {
    constexpr int rounds = 20;
    for (int round = 0; round < rounds; ++round) {
        start();
        BackgroundProgram other({bundledProgram("Veilkeep")});
        ASSERT_TRUE(window()) << "round " << round;
        const bool isFirst = windowCount() == 1;
        BackgroundProgram& loser = isFirst ? other : *m_application;
        EXPECT_EQ(loser.end(0), 0);
        EXPECT_EQ((isFirst ? *m_application : other).end(SIGTERM), 0);
        ASSERT_TRUE(m_screen.waitForNothing());
    }
}

} // namespace
} // namespace veilkeep::test
