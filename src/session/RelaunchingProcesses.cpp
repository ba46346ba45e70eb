#include "session/Relaunching.h"

#include "core/environment/Bundle.h"
#include "core/log/Log.h"
#include "core/process/ChildProcess.h"
#include "platform/EventLoop.h"

#include <QEventLoop>
#include <QTimer>

#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace veilkeep {
namespace {

pid_t numberIn(std::string_view text) {
    pid_t number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size() ? number : 0;
}

// The signal is worked on by the event loop, which ends every loop when the program is to end.
bool isEnding(std::chrono::milliseconds patience) {
    QEventLoop loop;
    QTimer limit;
    bool isOver = false;
    QObject::connect(&limit, &QTimer::timeout, &loop, [&] {
        isOver = true;
        loop.quit();
    });
    limit.setSingleShot(true);
    limit.start(patience);
    wakeEventLoop();
    loop.exec();
    return !isOver;
}

void runScript(const std::string& script, const std::vector<std::string>& arguments) {
    std::vector<std::string> all{"-c", script, ""};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const ChildProcessResult result = runChildProcess("/bin/sh", all);
    if (result.end == ChildProcessResult::End::NotStarted)
        logError("The program cannot end itself", result.error);
}

[[noreturn]] void failStillRunning(const std::string& told) {
    logLine(told + applicationBundlePath() + " should have been terminated, but we are still running");
    logLine("We should not be running!");
    std::abort();
}

} // namespace

bool Relaunching::waitForFormerProcess(const Processes& processes, std::chrono::milliseconds limit) {
    const char* const text = std::getenv(marker);
    const pid_t former = numberIn(text ? text : "");
    ::unsetenv(marker);
    return former > 0 && processes.waitForFormer(former, limit);
}

void Relaunching::killOurselves(std::chrono::milliseconds patience) {
    logLine("Application is going to kill ourselves");
    runScript("kill -15 $1", {std::to_string(::getpid())});
    if (!isEnding(patience))
        failStillRunning("Error: ");
}

// The new process is started by nobody who is still there, and waits as well.
void Relaunching::restartOurselves(std::chrono::milliseconds patience) {
    logLine("Application is going to restart ourselves");
    runScript("kill -15 $1\n" + std::string(marker) +
                  "=$1 setsid \"$2/Contents/MacOS/Veilkeep\" </dev/null >/dev/null 2>&1 &",
              {std::to_string(::getpid()), applicationBundlePath()});
    if (!isEnding(patience))
        failStillRunning("ERROR: ");
}

} // namespace veilkeep
