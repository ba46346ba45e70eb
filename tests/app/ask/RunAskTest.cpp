#include "core/base/UniqueFd.h"
#include "platform/linux/SessionBusConnection.h"
#include "tests/app/process/Screen.h"
#include "tests/support/BackgroundProgram.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/bus/PrivateBus.h"
#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QObject>

#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <functional>
#include <optional>

namespace veilkeep::test {

class SignalListener : public QObject {
    Q_OBJECT

public:
    std::vector<QDBusMessage> heard;

public slots:
    void received(const QDBusMessage& signal) { heard.push_back(signal); }
};

namespace {

using namespace std::string_literals;

unsigned int person() {
    return isRoot() ? ordinaryUser : 0;
}

// The program with its input and output, as the worker starts it.
class Asking {
public:
    Asking(
        const std::string& kind, const std::string& input, const std::function<void()>& inChild = [] {}) {
        int ends[2];
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
        m_socket.reset(ends[0]);
        const UniqueFd theirs(ends[1]);
        EXPECT_EQ(::send(m_socket.get(), input.data(), input.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(input.size()));
        m_program.emplace(std::vector{bundledProgram("Veilkeep"), "--ask"s, kind}, [&] {
            ::dup2(theirs.get(), STDIN_FILENO);
            ::dup2(theirs.get(), STDOUT_FILENO);
            if (person() != 0 && (::setgid(person()) != 0 || ::setuid(person()) != 0))
                ::_exit(125);
            inChild();
        });
    }

    bool isInFront() const {
        const auto window = m_screen.waitForDialog();
        return window && window->process == m_program->process() && window->isOnTop;
    }
    void press(const char* key) {
        EXPECT_TRUE(isInFront());
        m_screen.key(key);
    }
    void hangUp() { m_socket.reset(); }
    int end(int signal = 0) { return m_program->end(signal); }

    std::string line() { // empty at its end
        std::string text;
        for (char byte = 0; ::recv(m_socket.get(), &byte, 1, 0) == 1 && byte != '\n';)
            text += byte;
        return text;
    }

private:
    Screen m_screen;
    UniqueFd m_socket;
    std::optional<BackgroundProgram> m_program;
};

const std::string applicationsRequest = "/d/a\0VLC\0\0"s;

TEST(RunAsk, ShowsAWindowInFrontAndTellsTheButton) {
    for (const auto& [key, answer] : {std::pair{"Return", "Continue"}, {"Escape", "Cancel"}}) {
        Asking asking("recents-applications", applicationsRequest);
        asking.press(key);
        EXPECT_EQ(asking.line(), answer);
        EXPECT_EQ(asking.end(), 0);
    }
}

TEST(RunAsk, ClosesUnansweredWhenNobodyWantsTheAnswer) {
    for (const int signal : {0, SIGTERM, SIGINT}) {
        Asking asking("recents-applications", applicationsRequest);
        ASSERT_TRUE(asking.isInFront());
        if (signal == 0)
            asking.hangUp();
        EXPECT_EQ(asking.end(signal), 1);
        EXPECT_EQ(asking.line(), "");
    }
}

TEST(RunAsk, RefusesWithoutAWord) {
    struct Row {
        std::string name, kind, input;
        std::function<void()> inChild;
    };
    const auto nothing = [] {};
    const Row rows[] = {
        {"no display", "error", "a\0b\0\0"s, [] { ::unsetenv("DISPLAY"), ::unsetenv("WAYLAND_DISPLAY"); }},
        {"nobody there", "error", "a\0b\0\0"s, [] { ::setenv("VEILKEEP_NOBODY_THERE", "1", 1); }},
        {"under pkexec", "error", "a\0b\0\0"s, [] { ::setenv("PKEXEC_UID", "1000", 1); }},
        {"no kind", "other", "\0"s, nothing},
        {"no request", "recents", "a\0\0"s, nothing},
    };
    for (const Row& row : rows) {
        Asking asking(row.kind, row.input, row.inChild);
        EXPECT_EQ(asking.line(), "") << row.name;
        EXPECT_EQ(asking.end(), 2) << row.name;
    }
    const std::string program = bundledProgram("Veilkeep");
    if (isRoot()) {
        EXPECT_EQ(runProgram({program, "--ask", "recents"}).exitStatus, 2);
    }
    EXPECT_EQ(runProgram({program, "--ask"}, {.asUser = person(), .directory = {}}).exitStatus, 2);
}

// The application is busy with the batch that the question came from, and hears of the answer when it is
// through.
TEST(RunAsk, TheAnswerAboutRecentItemsReachesABusyApplication) {
    const ScratchTree tree;
    const PrivateBus bus(tree, PrivateBus::Place::Session);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    SessionBusConnection connection;
    SignalListener listener;
    ASSERT_TRUE(connection.connection().connect({}, "/com/ostrel/Veilkeep", "com.ostrel.Veilkeep",
                                                "ShouldCleanRecents", &listener,
                                                SLOT(received(QDBusMessage))));
    ASSERT_EQ(connection.askBus("NameHasOwner", "com.ostrel.Veilkeep").type(), QDBusMessage::ReplyMessage);
    Asking asking("recents", "\0"s);
    asking.press("Return");
    EXPECT_EQ(asking.line(), "Yes");
    asking.hangUp(); // as the worker does
    ASSERT_TRUE(eventually([&] { return !listener.heard.empty(); }));
    EXPECT_EQ(listener.heard.front().arguments(), QVariantList{"Yes"});
    const QDBusMessage user = connection.askBus("GetConnectionUnixUser", listener.heard.front().service());
    EXPECT_EQ(user.arguments().value(0).toUInt(), person() != 0 ? person() : ::getuid())
        << "who has left the bus is not believed";
    EXPECT_EQ(asking.end(SIGTERM), 0);
}

} // namespace
} // namespace veilkeep::test

#include "RunAskTest.moc"
