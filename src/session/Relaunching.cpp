#include "session/Relaunching.h"

#include "core/base/PathText.h"
#include "core/environment/Bundle.h"
#include "core/log/Log.h"
#include "core/process/DetachedProcess.h"
#include "core/storage/BundleInfo.h"
#include "filelist/Texts.h"
#include "session/MovedBundle.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

namespace veilkeep {
namespace {

std::string programOf(const std::string& bundle) {
    const std::string named = BundleInfo::ofBundle(bundle).executable();
    return bundledProgramPath(bundle, named.empty() ? "Veilkeep" : named);
}

// The marker is for the new process alone: what else is started before the end does not replace this one.
Result<pid_t> start(const std::string& program) {
    ::setenv(Relaunching::marker, std::to_string(::getpid()).c_str(), 1);
    auto started = startDetachedProcess(program, {});
    ::unsetenv(Relaunching::marker);
    return started;
}

} // namespace

Relaunching::Relaunching(Alerts& alerts, RelaunchDelegate delegate)
    : m_alerts(alerts), m_delegate(std::move(delegate)) {}

void Relaunching::requestRelaunch() {
    const int answer = m_alerts.ADRunAlertSheet(
        Alert::Window::None, tr("Relaunch required"),
        tr("%1 needs to be relaunched for some changes to take effect").arg(applicationName()),
        tr("Relaunch"), tr("Later"));
    if (answer == Alerts::defaultAnswer)
        relaunch();
}

void Relaunching::relaunchFromPath(const std::string& bundle) {
    if (m_started != 0)
        return; // it is under way
    const std::string program = programOf(bundle.empty() ? applicationBundlePath() : bundle);
    const QString title = tr("%1 could not be relaunched.").arg(applicationName());
    if (::access(program.c_str(), X_OK) != 0)
        return tell(title, Error::system("start", program, errno));
    emit QSApplicationWillRelaunchNotification();
    if (m_delegate.isHeldUp && m_delegate.isHeldUp())
        return logLine("A relaunch is not begun while the user has something to decide");
    const auto started = start(program);
    if (!started)
        return tell(title, started.error());
    m_started = *started;
    m_delegate.applicationWillBeRelaunched();
    m_delegate.terminate();
}

void Relaunching::takeBack() {
    if (isUnderWay())
        ::kill(m_started, SIGTERM);
    m_started = 0;
}

// A child that has ended keeps its number until it is asked for, so signals still reach it.
bool Relaunching::isUnderWay() const {
    siginfo_t ended = {};
    return m_started != 0 &&
           ::waitid(P_PID, static_cast<id_t>(m_started), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           ended.si_pid == 0;
}

void Relaunching::relaunchAtPath(const std::string& path, const std::string& movedFromPath) {
    if (moveTo(path, movedFromPath))
        relaunchFromPath(path);
}

void Relaunching::relaunchAfterMovingFromPath(const std::string& source) {
    relaunchAtPath(applicationBundlePath(), source);
}

bool Relaunching::replaceWithUpdateFromPath(const std::string& source) {
    return moveTo(applicationBundlePath(), source);
}

bool Relaunching::moveTo(const std::string& path, const std::string& source) {
    const auto moved = moveToPath(path, source);
    if (!moved)
        tell(tr("%1 could not be replaced. The former one is still there.").arg(applicationName()),
             moved.error());
    return moved.has_value();
}

void Relaunching::tell(const QString& title, const Error& error) {
    logError(title.toStdString(), error);
    m_alerts.ADRunCriticalAlertSheet(Alert::Window::None, title, errorWithPath(error), tr("OK"));
}

} // namespace veilkeep
