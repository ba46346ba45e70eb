// Leaving with 1,000 items in an AutoHide group, from logind's signal to the inhibitor that is let go,
// against a shell loop that moves as many files; then what a thousand passes leave in memory.

#include "benchmarks/support/SideBySide.h"
#include "core/base/UniqueFd.h"
#include "tests/support/BackgroundProgram.h"
#include "tests/support/RunProgram.h"
#include "tests/support/WaitUntil.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace veilkeep;
using benchmark::Report;
using test::ScratchTree;

constexpr int fileCount = 1000;
constexpr int passes = 1000;
constexpr int itemsOfPass = 10;

// Knows one session and hands out inhibitors.
class FakeLogind {
public:
    void tell(const char* signal, bool value) {
        QDBusMessage message = QDBusMessage::createSignal(
            "/org/freedesktop/login1", "org.freedesktop.login1.Manager", QLatin1String(signal));
        m_service.connection().send(message << value);
    }

    // Waits for an inhibitor of sleep that is held; what it answers has no writer any more when it is let go.
    int heldInhibitor() {
        int held = -1;
        test::waitUntil([&] {
            const std::lock_guard lock(m_mutex);
            if (m_sleep && !isLetGo(m_sleep->get(), 0))
                held = m_sleep->get();
            return held >= 0;
        });
        return held;
    }

    static bool isLetGo(int inhibitor, int milliseconds) {
        pollfd waiting = {inhibitor, 0, 0};
        return ::poll(&waiting, 1, milliseconds) == 1;
    }

private:
    QDBusMessage answer(const QDBusMessage& call) {
        const QDBusObjectPath session("/org/freedesktop/login1/session/one");
        if (call.member() == "Inhibit")
            return call.createReply(QVariant::fromValue(inhibitor(call.arguments().value(0).toString())));
        if (call.member() == "GetSession" || call.member() == "GetUser")
            return call.createReply(QVariant::fromValue(session));
        if (call.member() == "GetAll")
            return call.createReply(QVariantMap{{"Class", "user"}, {"Active", true}, {"LockedHint", false}});
        if (call.member() == "Get")
            return call.createReply(QVariant::fromValue(QDBusVariant(false)));
        return call.createErrorReply(QDBusError::UnknownMethod, call.member());
    }

    QDBusUnixFileDescriptor inhibitor(const QString& what) {
        int ends[2] = {-1, -1};
        if (::pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error("pipe2");
        UniqueFd reader(ends[0]);
        const UniqueFd writer(ends[1]);
        const std::lock_guard lock(m_mutex);
        (what.contains("sleep") ? m_sleep : m_other) = std::move(reader);
        return QDBusUnixFileDescriptor(writer.get());
    }

    std::mutex m_mutex;
    std::optional<UniqueFd> m_sleep, m_other;
    test::BusService m_service{"org.freedesktop.login1",
                               [this](const QDBusMessage& call) { return answer(call); }};
};

std::string ctl(const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {test::bundledProgram("veilkeepctl")};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const test::ProgramRun run = test::runProgram(command);
    if (run.exitStatus != 0)
        throw std::runtime_error("veilkeepctl " + arguments.front() + ": " + run.errors);
    return run.output;
}

std::vector<std::string> makeFiles(const ScratchTree& tree, const std::string& folder, int count) {
    fs::remove_all(tree.path(folder));
    std::vector<std::string> paths;
    for (int index = 0; index < count; ++index)
        paths.push_back(tree.makeFile(folder + "/document " + std::to_string(index) + ".txt", "content"));
    return paths;
}

void makeAutoHideGroup(const std::string& name, const std::vector<std::string>& paths) {
    ctl({"group", "add", name});
    std::vector<std::string> move = {"add"};
    move.insert(move.end(), paths.begin(), paths.end());
    ctl(move);
    move.front() = "move";
    move.insert(move.end(), {"--group", name});
    ctl(move);
    ctl({"group", "autohide", name, "on"});
}

class Watch {
public:
    Watch() : m_program({test::bundledProgram("veilkeepctl"), "watch"}) {}

    // In KiB.
    static double memory(pid_t process) {
        std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
        for (std::string line; std::getline(file, line);)
            if (line.starts_with("Pss:"))
                return static_cast<double>(std::stol(line.substr(4)));
        throw std::runtime_error("veilkeepctl watch is gone");
    }

    pid_t process() const { return m_program.process(); }

private:
    test::BackgroundProgram m_program;
};

void leave(Report& report, const ScratchTree& tree) {
    FakeLogind logind;
    const std::vector<std::string> files = makeFiles(tree, "leaving", fileCount);
    makeAutoHideGroup("Leaving", files);
    const Watch watch;
    int inhibitor = -1;
    const std::string moveIn =
        "cd \"$0\" && mkdir .SYS_INDEX && for f in *; do mv -- \"$f\" \".SYS_INDEX/$f\"; done";
    benchmark::sideBySide(report,
                          {"leave with 1,000 items",
                           [&] {
                               logind.tell("PrepareForSleep", true);
                               if (!FakeLogind::isLetGo(inhibitor, 60'000))
                                   throw std::runtime_error("the inhibitor was not let go");
                           },
                           [&] {
                               logind.tell("PrepareForSleep", false);
                               test::waitUntil([&] { return test::exists(files.back()); });
                               test::waitUntil([&] { return test::exists(files.front()); });
                               inhibitor = logind.heldInhibitor();
                               ctl({"status"}); // waits until the list is saved
                           }},
                          {"mkdir and a loop of mv, 1,000 files",
                           [&] {
                               test::runProgram({"/bin/bash", "-c", moveIn, tree.path("moved")});
                           },
                           [&] { makeFiles(tree, "moved", fileCount); }});
}

void stayTheSame(Report& report, const ScratchTree& tree) {
    ctl({"group", "autohide", "Leaving", "off"});
    makeAutoHideGroup("Passes", makeFiles(tree, "passes", itemsOfPass));
    const Watch watch;
    const auto runPasses = [](int count) {
        for (int pass = 0; pass < count; ++pass) {
            ctl({"autohide"});
            ctl({"autounhide"});
        }
    };
    runPasses(passes / 10);
    const double before = Watch::memory(watch.process());
    runPasses(passes);
    const double after = Watch::memory(watch.process());
    char detail[120];
    std::snprintf(detail, sizeof detail, "%.0f KiB before, %.0f KiB after", before, after);
    report.tell("memory after 1,000 passes", after / before, detail);
}

} // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    const ScratchTree tree;
    using test::PrivateBus;
    const PrivateBus systemBus(tree, PrivateBus::Place::System), sessionBus(tree, PrivateBus::Place::Session);
    for (const std::string& why : {systemBus.whyMissing(), sessionBus.whyMissing()})
        if (!why.empty())
            return Report::skipAll(why);
    Report report;
    leave(report, tree);
    stayTheSame(report, tree);
    return report.exitStatus();
}
