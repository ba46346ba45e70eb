#include "wiring/RequestRoute.h"

#include "core/storage/ListOwnership.h"
#include "format/ErrorText.h"
#include "prefs/PasswordManager.h"
#include "requests/CallerPrompt.h"
#include "requests/RequestRules.h"

#include <QCoreApplication>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds busInterval{500}; // between two looks whether the application runs

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(RequestRoute)
};

bool onlyReads(const Request& request) {
    const RequestRule* rule = requestRule(request.command);
    return rule && rule->onlyReads();
}

} // namespace

std::optional<std::string> usableWorker(const TellTrouble& tell) {
    const std::string worker = MainWindowController::cloakWorkerPath();
    if (::access(worker.c_str(), X_OK) == 0)
        return worker;
    tell(worker, Texts::tr("this program is missing or may not be run; please install Veilkeep anew"));
    return std::nullopt;
}

RequestRoute::RequestRoute(RequestCaller& caller, UserDefaults& defaults, RequestRouteOptions options)
    : m_caller(caller), m_defaults(defaults), m_options(std::move(options)) {}

RequestStatus RequestRoute::run(const Request& request) {
    if (!isPasswordGiven(request))
        return RequestStatus::Refused;
    const auto ownership = ListOwnership::take(m_places.dataDirectory, std::chrono::milliseconds(0));
    if (ownership)
        return runHere(request, true);
    if (ownership.error().systemError != EWOULDBLOCK)
        return runWithoutOwnership(request, ownership.error());
    if (!onlyReads(request))
        return waitForList(request);
    if (const auto status = runInApplication(request))
        return *status;
    m_options.ownerFound(RequestOwner::Other);
    return runHere(request, false);
}

// Asks where this program is about to work by itself, before it takes the list: others, a screen locker among
// them, need not wait for a person. Whoever has the list then decides whether the entry is the right one.
bool RequestRoute::isPasswordGiven(const Request& request) {
    PasswordManager passwords(m_defaults);
    if (!passesGate(request) || !passwords.isPasswordEnabled() || m_application.isServed())
        return true;
    const bool isGiven = isGivenByCaller(passwords, m_caller);
    if (isGiven)
        m_options.repeatPassword();
    return isGiven;
}

RequestStatus RequestRoute::waitForList(const Request& request) {
    const auto end = Clock::now() + ownerWait;
    while (!m_caller.isCancelled()) {
        if (const auto status = runInApplication(request))
            return *status;
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        const auto wait = std::clamp(left, std::chrono::milliseconds(0), busInterval);
        const auto ownership = ListOwnership::take(m_places.dataDirectory, wait);
        if (ownership)
            return runHere(request, true);
        if (ownership.error().systemError != EWOULDBLOCK)
            return runWithoutOwnership(request, ownership.error());
        if (left.count() <= 0) {
            m_caller.message(Texts::tr("another process owns the list and did not answer"));
            return RequestStatus::OwnerSilent;
        }
    }
    m_caller.message(Texts::tr("interrupted; nothing was done"));
    return RequestStatus::SomeFailed;
}

// Nothing where no application takes it.
std::optional<RequestStatus> RequestRoute::runInApplication(const Request& request) {
    if (!m_application.isServed())
        return std::nullopt;
    m_options.ownerFound(RequestOwner::Application);
    const auto status = m_application.run(request, m_caller);
    if (status == RequestStatus::OwnerSilent)
        m_caller.message(Texts::tr("the application owns the list and did not answer"));
    if (status || m_application.failure() != RequestClient::Failure::Vanished)
        return status;
    m_caller.message(Texts::tr("the application ended before it was through"));
    return RequestStatus::SomeFailed;
}

// An item that is hidden comes back wherever it can, though the list cannot be kept.
RequestStatus RequestRoute::runWithoutOwnership(const Request& request, const Error& error) {
    const RequestRule* rule = requestRule(request.command);
    const bool bringsBack = rule && rule->command == RequestCommand::Unhide;
    if (!onlyReads(request))
        m_caller.itemFailed(error.path, errorReason(error));
    return onlyReads(request) || bringsBack ? runHere(request, bringsBack) : RequestStatus::Refused;
}

RequestStatus RequestRoute::runHere(const Request& request, bool mayChange) {
    const auto worker = usableWorker(
        [this](const std::string& path, const QString& reason) { m_caller.itemFailed(path, reason); });
    if (!worker)
        return RequestStatus::SomeFailed;
    return OwnList(m_defaults, *worker, m_places, m_options.list).run(request, m_caller, mayChange);
}

} // namespace veilkeep
