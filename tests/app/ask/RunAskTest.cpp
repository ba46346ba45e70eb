#include "app/ask/RunAsk.h"

#include "core/base/UniqueFd.h"
#include "platform/linux/SessionBusConnection.h"
#include "tests/app/ask/SignalListener.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/bus/PrivateBus.h"
#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace veilkeep::test {
namespace {

using namespace std::string_literals;

unsigned int person() {
    return isRoot() ? ordinaryUser : 0;
}

void clickAt(const QString& line) {
    const QStringList words = line.split(' ');
    realInput::moveTo({words.at(0).toInt(), words.at(1).toInt()});
    realInput::press();
    realInput::release();
}

// The asking program with its input and output, as the worker starts it.
class Asking {
public:
    Asking(
        const std::string& kind, const std::string& input, const std::function<void()>& inChild = [] {}) {
        int ends[2];
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
        m_socket.reset(ends[0]);
        const UniqueFd theirs(ends[1]);
        int errors[2];
        EXPECT_EQ(::pipe2(errors, O_CLOEXEC), 0);
        m_errors.reset(errors[0]);
        const UniqueFd errorsWriter(errors[1]);
        EXPECT_EQ(::send(m_socket.get(), input.data(), input.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(input.size()));
        m_process = ::fork();
        if (m_process != 0)
            return;
        ::dup2(theirs.get(), STDIN_FILENO);
        ::dup2(theirs.get(), STDOUT_FILENO);
        ::dup2(errorsWriter.get(), STDERR_FILENO);
        if (person() != 0 && (::setgid(person()) != 0 || ::setuid(person()) != 0))
            ::_exit(125);
        inChild();
        ::execl(VEILKEEP_ASK_PROGRAM, VEILKEEP_ASK_PROGRAM, "--ask", kind.c_str(), nullptr);
        ::_exit(123);
    }
    ~Asking() {
        if (m_process > 0)
            ::kill(m_process, SIGKILL), (void)exitStatus();
    }
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;

    // The lines that tell where the buttons are; empty where no window came.
    QStringList shownButtons() { return buttonsIn(m_errors.get()); }

    static QStringList buttonsIn(int errors) {
        std::string text;
        char bytes[4096];
        while (text.find("shown on top\n") == std::string::npos) {
            const ssize_t count = ::read(errors, bytes, sizeof bytes);
            if (count <= 0)
                return {};
            text.append(bytes, static_cast<std::size_t>(count));
        }
        return QString::fromStdString(text).split('\n').filter(QRegularExpression("^[0-9]+ [0-9]+ "));
    }

    void click(const QString& title) { clickAt(shownButtons().filter(title).value(0, "0 0")); }
    void hangUp() { m_socket.reset(); }
    void signal(int number) { ::kill(m_process, number); }

    std::string line() { // empty at its end
        std::string text;
        for (char byte = 0; ::recv(m_socket.get(), &byte, 1, 0) == 1 && byte != '\n';)
            text += byte;
        return text;
    }

    int exitStatus() {
        int status = 0;
        const pid_t process = std::exchange(m_process, -1);
        ::waitpid(process, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    UniqueFd m_socket, m_errors;
    pid_t m_process = -1;
};

const std::string applicationsRequest = "/d/a\0VLC\0\0"s;

TEST(RunAsk, ShowsAWindowInFrontAndTellsTheButton) {
    for (const QString title : {"Continue", "Cancel"}) {
        Asking asking("recents-applications", applicationsRequest);
        asking.click(title);
        EXPECT_EQ(asking.line(), title.toStdString());
        EXPECT_EQ(asking.exitStatus(), 0);
    }
}

TEST(RunAsk, ClosesUnansweredWhenNobodyWantsTheAnswer) {
    const std::function<void(Asking&)> ends[] = {[](Asking& asking) { asking.hangUp(); },
                                                 [](Asking& asking) { asking.signal(SIGTERM); },
                                                 [](Asking& asking) { asking.signal(SIGINT); }};
    for (const auto& end : ends) {
        Asking asking("recents-applications", applicationsRequest);
        ASSERT_EQ(asking.shownButtons().size(), 2);
        end(asking);
        EXPECT_EQ(asking.line(), "");
        EXPECT_EQ(asking.exitStatus(), 1);
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
        EXPECT_EQ(asking.exitStatus(), 2) << row.name;
    }
    if (isRoot()) {
        EXPECT_EQ(runProgram({VEILKEEP_ASK_PROGRAM, "--ask", "recents"}).exitStatus, 2);
    }
    EXPECT_EQ(runProgram({VEILKEEP_ASK_PROGRAM, "--ask"}, {.asUser = person(), .directory = {}}).exitStatus,
              2);
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
    asking.click("Remove Recents");
    EXPECT_EQ(asking.line(), "Yes");
    asking.hangUp(); // as the worker does
    ASSERT_TRUE(eventually([&] { return !listener.heard.empty(); }));
    EXPECT_EQ(listener.heard.front().arguments(), QVariantList{"Yes"});
    const QDBusMessage user = connection.askBus("GetConnectionUnixUser", listener.heard.front().service());
    EXPECT_EQ(user.arguments().value(0).toUInt(), person() != 0 ? person() : ::getuid())
        << "who has left the bus is not believed";
    asking.signal(SIGTERM);
    EXPECT_EQ(asking.exitStatus(), 0);
}

} // namespace
} // namespace veilkeep::test
