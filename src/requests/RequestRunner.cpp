#include "requests/RequestRunner.h"

#include "requests/CallerPrompt.h"
#include "requests/ItemRequests.h"
#include "requests/ListRequests.h"
#include "requests/SearchRequests.h"

#include <QCoreApplication>

#include <algorithm>

namespace veilkeep {
namespace {

QString text(const char* source) {
    return QCoreApplication::translate("RequestRunner", source);
}

bool isWellFormed(const Request& request, const RequestRule* rule) {
    return rule && request.paths.size() >= rule->leastPaths && request.paths.size() <= rule->mostPaths &&
           std::ranges::all_of(request.paths, [](const std::string& path) {
               return path.starts_with('/') && path.find('\0') == std::string::npos;
           });
}

// Has alerts and progress go to the caller for as long as it lives.
class Attention {
public:
    Attention(const RequestRunnerParts& parts, RequestCaller& caller) : m_parts(parts) { give(&caller); }
    ~Attention() { give(nullptr); }
    Attention(const Attention&) = delete;
    Attention& operator=(const Attention&) = delete;

private:
    void give(RequestCaller* caller) {
        m_parts.presenter.setCaller(caller);
        m_parts.progressView.setCaller(caller);
    }

    const RequestRunnerParts& m_parts;
};

} // namespace

void RequestRunner::handle(const Request& request, RequestCaller& caller, Done done) {
    m_parts.turns.run([this, request, &caller, done = std::move(done)] { done(run(request, caller)); });
}

RequestStatus RequestRunner::run(const Request& request, RequestCaller& caller) {
    const RequestRule* rule = requestRule(request.command);
    if (!isWellFormed(request, rule)) {
        caller.message(text("This request is not understood."));
        return RequestStatus::WrongUsage;
    }
    if (!isAllowed(*rule, caller))
        return RequestStatus::Refused;
    const Attention attention(m_parts, caller);
    RequestWork work{m_parts.controller,
                     m_parts.cloakWorker,
                     m_parts.progress,
                     m_parts.presenter,
                     m_parts.inProgressFolder,
                     request,
                     caller};
    this->work(rule->command, work);
    if (m_parts.controller.saveTrouble() && !rule->onlyReads()) {
        caller.message(text("the list could not be saved: %1").arg(m_parts.controller.whyItCannotBeSaved()));
        work.status = std::max(work.status, RequestStatus::SomeFailed);
    }
    return work.status;
}

bool RequestRunner::isAllowed(const RequestRule& rule, RequestCaller& caller) {
    if (rule.changesList && m_parts.dataFile.isOfNewerVersion()) {
        caller.message(text("The list was written by a newer version of Veilkeep and cannot be changed."));
        return false;
    }
    if (!rule.passesGate || !m_parts.gate || m_parts.gate->operationAllowedWithoutAsking())
        return true;
    if (askPassword(caller))
        return true;
    caller.message(text("The password was not given."));
    return false;
}

bool RequestRunner::askPassword(RequestCaller& caller) {
    if (m_parts.askCaller)
        return isAllowedByCaller(*m_parts.gate, *m_parts.askCaller, caller);
    caller.message(text("Veilkeep asks for its password in a window."));
    return m_parts.gate->operationAllowed();
}

void RequestRunner::work(RequestCommand command, RequestWork& work) {
    switch (command) {
    case RequestCommand::Add:
        return ItemRequests(work).add();
    case RequestCommand::Remove:
        return ItemRequests(work).remove();
    case RequestCommand::Hide:
        return ItemRequests(work).hide();
    case RequestCommand::Unhide:
        return ItemRequests(work).unhide();
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
    }
}

} // namespace veilkeep
