#include "ctl/RescueCommand.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemPath.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/storage/DefaultsKeys.h"
#include "core/storage/UserDefaults.h"
#include "ctl/Interruption.h"
#include "ctl/RescueCopyRun.h"
#include "ctl/RescueRun.h"
#include "format/ErrorText.h"
#include "format/PrintableName.h"
#include "prefs/PasswordManager.h"
#include "requests/CallerPrompt.h"
#include "wiring/RequestRoute.h"

#include <QCoreApplication>

#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <future>
#include <utility>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(RescueCommand)
};

QString shown(const std::string& path) {
    return QString::fromStdString(printableName(path));
}

QString reasonOf(const RescueStep& step) {
    if (step.error == ENOTDIR)
        return Texts::tr(
            "its .SYS_INDEX does not belong to, or is not open to, the same users as the folder around it");
    if (step.error == E2BIG)
        return Texts::tr(
            "its path is too long for an argument of a program; with --to DIRECTORY it is copied");
    return workerErrorText(workerErrorFromErrno(step.error));
}

} // namespace

RescueCommand::RescueCommand(RescueWishes wishes, TerminalOutput& output, TerminalQuestions& questions,
                             TerminalCaller& caller)
    : m_wishes(std::move(wishes)),
      m_output(output),
      m_questions(questions),
      m_caller(caller),
      m_search(m_wishes.staysOnVolume) {}

RequestStatus RescueCommand::run() {
    if (!isPasswordGiven())
        return RequestStatus::Refused;
    findRoots();
    if (m_wishes.copyTo && !isTargetUsable())
        return RequestStatus::Refused;
    search();
    if (Interruption::isAsked()) {
        message(Texts::tr("interrupted; nothing was moved"));
        return RequestStatus::SomeFailed;
    }
    tellTroubles();
    if (isNothingFound())
        return m_status;
    tellHiddenAround();
    return m_wishes.copyTo ? copyAll() : moveAll();
}

// Where there is none the settings stay as they are, or absent: the manager would store that.
bool RescueCommand::isPasswordGiven() {
    UserDefaults defaults;
    if (!defaults.boolean(defaultsKey::passwordEnabled).value_or(false))
        return true;
    PasswordManager passwords(defaults);
    return !passwords.isPasswordEnabled() || isGivenByCaller(passwords, m_caller);
}

void RescueCommand::findRoots() {
    for (const std::string& argument : m_wishes.paths) {
        const auto path = absoluteItemPath(argument);
        auto root = path ? RescueRoot::of(*path) : Result<RescueRoot>(path.error());
        if (!root && root.error().code == ErrorCode::NotAFile)
            itemFailed(argument, Texts::tr("neither a folder nor a hidden item"));
        else if (!root)
            itemFailed(argument, errorReason(root.error()));
        else if (isWritable(*root, argument))
            m_roots.push_back(*std::move(root));
    }
}

bool RescueCommand::isWritable(const RescueRoot& root, const std::string& argument) {
    struct statvfs status = {};
    if (m_wishes.copyTo || ::statvfs(root.path.c_str(), &status) != 0 || (status.f_flag & ST_RDONLY) == 0)
        return true;
    itemFailed(argument,
               Texts::tr("the disk is read-only, so nothing can be moved there; with --to DIRECTORY "
                         "what is hidden is copied to another place"));
    return false;
}

// It may be missing. What is copied must not lead back into what is searched.
bool RescueCommand::isTargetUsable() {
    const auto path = absoluteItemPath(*m_wishes.copyTo);
    if (!path) {
        itemFailed(*m_wishes.copyTo, errorReason(path.error()));
        return false;
    }
    m_target = *path;
    LinkResolver links;
    const std::string resolved = links.resolved(cleanPath(*path));
    for (const RescueRoot& root : m_roots)
        if (isSameOrBelow(resolved, root.path)) {
            itemFailed(
                *m_wishes.copyTo,
                Texts::tr("lies in %1, which is searched; please name another place").arg(shown(root.path)));
            return false;
        }
    return true;
}

// The walk takes the processors; this thread shows how far it is.
void RescueCommand::search() {
    constexpr std::chrono::milliseconds interval(100);
    for (const RescueRoot& root : m_roots) {
        auto looked = std::async(std::launch::async, [&] { return m_search.lookInto(root); });
        while (looked.wait_for(interval) != std::future_status::ready) {
            m_output.showProgress(
                Texts::tr("Looking for hidden items; folders seen: %1").arg(m_search.directoriesSeen()));
            if (Interruption::isAsked())
                m_search.cancel();
        }
        if (const auto result = looked.get(); !result)
            itemFailed(result.error().path, errorReason(result.error()));
    }
    m_output.showProgress({});
    m_search.found().arrange();
}

void RescueCommand::tellTroubles() {
    for (const Error& trouble : m_search.troubles())
        itemFailed(trouble.path, errorReason(trouble));
    if (m_search.unreadable() > m_search.troubles().size())
        message(Texts::tr("folders that could not be looked into, in all: %1").arg(m_search.unreadable()));
}

bool RescueCommand::isNothingFound() {
    if (m_search.found().isEmpty() && !m_roots.empty())
        message(Texts::tr("nothing is hidden there"));
    return m_search.found().isEmpty();
}

void RescueCommand::tellHiddenAround() {
    for (const RescueRoot& root : m_roots)
        if (const std::string around = root.itemAround();
            !m_wishes.copyTo && !around.empty() && !m_search.found().contains(around))
            message(
                Texts::tr("%1 lies in a hidden folder and stays hidden with it; to bring that back as well, "
                          "name it:\n%2")
                    .arg(shown(root.path), shown(around)));
}

RequestStatus RescueCommand::moveAll() {
    if (m_wishes.onlyShows || !m_questions.answersBeforehand())
        showPlan();
    if (m_wishes.onlyShows)
        return m_status;
    const auto worker =
        usableWorker([this](const std::string& path, const QString& reason) { itemFailed(path, reason); });
    if (!worker)
        return RequestStatus::SomeFailed;
    if (!isWanted(Texts::tr("Bring hidden items back?"),
                  Texts::tr("Each is moved beside the .SYS_INDEX that it lies in, items: %1")
                      .arg(m_search.found().itemCount()),
                  Texts::tr("Bring Back")))
        return RequestStatus::Refused;
    moveEach(*worker);
    return m_status;
}

void RescueCommand::showPlan() {
    std::size_t staying = 0;
    RescuePlan(m_search.found()).forEach([&](const RescueStep& step) {
        staying += step.outcome == RescueStep::Outcome::CannotBeMoved ? 1 : 0;
        showStep(step);
        return !Interruption::isAsked();
    });
    message(Texts::tr("items that can come back: %1; items that cannot: %2")
                .arg(m_search.found().itemCount() - staying)
                .arg(staying));
    (void)m_output.flush(); // what could not be written is told, and known at the end as well
}

void RescueCommand::showStep(const RescueStep& step) {
    switch (step.outcome) {
    case RescueStep::Outcome::CannotBeMoved:
        return itemFailed(step.hiddenPath, reasonOf(step));
    case RescueStep::Outcome::GetsNumber:
        m_output.printError(step.hiddenPath, "its place is taken, so it gets another name");
        break;
    case RescueStep::Outcome::KeepsName:
        m_output.printError(step.hiddenPath, "keeps its hidden name");
        break;
    case RescueStep::Outcome::ComesBack:
        break;
    }
    m_output.printPair(step.hiddenPath, step.place);
}

bool RescueCommand::isWanted(const QString& title, const QString& text, const QString& button) {
    if (!m_questions.isInteractive()) {
        message(m_wishes.copyTo ? Texts::tr("nothing was copied; add --yes to copy without being asked")
                                : Texts::tr("nothing was moved; add --yes to bring all this back"));
        return false;
    }
    return m_questions.ask({title, text, {button, Texts::tr("Cancel")}}) == 0;
}

void RescueCommand::moveEach(const std::string& worker) {
    RescueRun run(worker, m_output, m_caller);
    run.moveAll(m_search.found());
    if (run.leftAlone() > 0)
        message(Texts::tr("interrupted; items left as they are: %1").arg(run.leftAlone()));
    if (run.failed() > 0 && run.hadTooFewRights() && ::geteuid() != 0)
        message(Texts::tr("what needs more rights comes back where an administrator does this"));
    message(Texts::tr("items that came back: %1; items that did not: %2")
                .arg(run.cameBack())
                .arg(run.failed() + run.leftAlone()));
    if (run.failed() + run.leftAlone() > 0 || !run.isDurable())
        m_status = RequestStatus::SomeFailed;
}

RequestStatus RescueCommand::copyAll() {
    RescueCopyRun run(m_search.found(), m_roots, m_target, m_wishes.staysOnVolume, m_output, m_caller);
    if (m_wishes.onlyShows || !m_questions.answersBeforehand())
        run.showPlan();
    if (m_wishes.onlyShows)
        return m_status;
    if (!isWanted(Texts::tr("Copy hidden items?"),
                  Texts::tr("To %1, items: %2. Where they lie nothing is changed.")
                      .arg(shown(m_target))
                      .arg(run.total()),
                  Texts::tr("Copy")))
        return RequestStatus::Refused;
    return run.copyAll() ? m_status : RequestStatus::SomeFailed;
}

void RescueCommand::itemFailed(const std::string& path, const QString& reason) {
    m_status = RequestStatus::SomeFailed;
    m_output.printError(path, terminalText(reason));
}

} // namespace veilkeep
