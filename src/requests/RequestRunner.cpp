#include "requests/RequestRunner.h"

#include "format/ErrorText.h"
#include "requests/CallerPrompt.h"
#include "requests/GroupRequests.h"
#include "requests/ItemRequests.h"
#include "requests/ListRequests.h"
#include "requests/SearchRequests.h"

#include <QCoreApplication>

#include <algorithm>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(RequestRunner)
};

bool hasRightPaths(const Request& request, const RequestRule& rule) {
    const bool namesGroup = request.options.contains(QLatin1String(requestOption::group));
    const bool meansAll = request.options.value(QLatin1String(requestOption::all)).toBool();
    if (rule.groupUse == GroupUse::InsteadOfPaths && (namesGroup || meansAll))
        return request.paths.empty() && namesGroup != meansAll;
    return request.paths.size() >= rule.leastPaths && request.paths.size() <= rule.mostPaths;
}

bool isWellFormed(const Request& request, const RequestRule* rule) {
    return rule && hasRightPaths(request, *rule) &&
           std::ranges::all_of(request.paths, [](const std::string& path) {
               return path.starts_with('/') && path.find('\0') == std::string::npos;
           });
}

// Has alerts and progress go to the caller for as long as it lives. Whoever sees the progress can stop it.
class Attention {
public:
    Attention(const RequestRunnerParts& parts, RequestCaller& caller, bool withProgress) : m_parts(parts) {
        m_parts.presenter.setCaller(&caller);
        if (withProgress)
            m_parts.progressView.setCaller(&caller);
    }
    ~Attention() {
        m_parts.presenter.setCaller(nullptr);
        m_parts.progressView.setCaller(nullptr);
    }
    Attention(const Attention&) = delete;
    Attention& operator=(const Attention&) = delete;

private:
    const RequestRunnerParts& m_parts;
};

} // namespace

void RequestRunner::handle(const Request& request, RequestCaller& caller, Done done) {
    const auto work = [this, request, &caller, done = std::move(done)] { done(run(request, caller)); };
    if (!isUrgent(request.command))
        m_parts.turns.run(work);
    else if (m_parts.window)
        m_parts.window->leave(work);
    else
        m_parts.turns.leave(work);
}

bool RequestRunner::isUrgent(const QString& command) const {
    const RequestRule* rule = requestRule(command);
    return rule && rule->command == RequestCommand::AutoHide;
}

RequestStatus RequestRunner::run(const Request& request, RequestCaller& caller) {
    const LanguageGuard callersLanguage(m_parts.language, isFromMenu(request));
    const RequestRule* rule = requestRule(request.command);
    if (!isWellFormed(request, rule)) {
        caller.message(Texts::tr("This request is not understood."));
        return RequestStatus::WrongUsage;
    }
    if (!isAllowed(*rule, request, caller))
        return RequestStatus::Refused;
    // What hides when the user leaves runs to its end, even if the screen locker that asked for it is gone.
    const Attention attention(m_parts, caller, rule->command != RequestCommand::AutoHide);
    RequestWork work{m_parts.controller,
                     m_parts.cloakWorker,
                     m_parts.progress,
                     m_parts.presenter,
                     m_parts.inProgressFolder,
                     request,
                     caller,
                     m_parts.groups,
                     m_parts.window};
    this->work(rule->command, work);
    if (!rule->onlyReads())
        tellSaveTrouble(work);
    return work.status;
}

void RequestRunner::tellSaveTrouble(RequestWork& work) {
    const auto tell = [&](const QString& trouble) {
        work.caller.message(trouble);
        work.status = std::max(work.status, RequestStatus::SomeFailed);
    };
    if (m_parts.controller.saveTrouble())
        tell(Texts::tr("the list could not be saved: %1").arg(m_parts.controller.whyItCannotBeSaved()));
    if (const auto& trouble = m_parts.groups.saveTrouble())
        tell(Texts::tr("the groups could not be saved: %1").arg(errorReason(*trouble)));
}

bool RequestRunner::isAllowed(const RequestRule& rule, const Request& request, RequestCaller& caller) {
    if (rule.changesList && m_parts.dataFile.isOfNewerVersion()) {
        caller.message(
            Texts::tr("The list was written by a newer version of Veilkeep and cannot be changed."));
        return false;
    }
    if (rule.command == RequestCommand::Group && m_parts.groupsFile.isOfNewerVersion()) {
        caller.message(
            Texts::tr("The groups were written by a newer version of Veilkeep and cannot be changed."));
        return false;
    }
    if (!passesGate(request) || !m_parts.gate || m_parts.gate->operationAllowedWithoutAsking())
        return true;
    if (askPassword(caller))
        return true;
    caller.message(Texts::tr("The password was not given."));
    return false;
}

bool RequestRunner::askPassword(RequestCaller& caller) {
    if (m_parts.askCaller)
        return isAllowedByCaller(*m_parts.gate, *m_parts.askCaller, caller);
    caller.message(Texts::tr("Veilkeep asks for its password in a window."));
    const LanguageGuard usersLanguage(m_parts.language, true);
    return m_parts.gate->operationAllowed();
}

void RequestRunner::work(RequestCommand command, RequestWork& work) {
    const bool hasPaths = !work.request.paths.empty();
    switch (command) {
    case RequestCommand::Add:
        return ItemRequests(work).add();
    case RequestCommand::Remove:
        return ItemRequests(work).remove();
    case RequestCommand::Hide:
        return hasPaths ? ItemRequests(work).hide() : GroupRequests(work).hideItems();
    case RequestCommand::Unhide:
        return hasPaths ? ItemRequests(work).unhide() : GroupRequests(work).unhideItems();
    case RequestCommand::List:
        return tellList(work);
    case RequestCommand::Status:
        return tellStatus(work);
    case RequestCommand::Check:
        return SearchRequests(work).check();
    case RequestCommand::Locate:
        return SearchRequests(work).locate();
    case RequestCommand::Restore:
        return SearchRequests(work).restore();
    case RequestCommand::Merge:
        return SearchRequests(work).merge();
    case RequestCommand::Groups:
        return GroupRequests(work).tellGroups();
    case RequestCommand::Group:
        return GroupRequests(work).change();
    case RequestCommand::Move:
        return GroupRequests(work).moveItems();
    case RequestCommand::AutoHide:
        return GroupRequests(work).autoHide();
    case RequestCommand::AutoUnhide:
        return GroupRequests(work).autoUnhide();
    }
}

} // namespace veilkeep
