#include "platform/linux/RequestService.h"

#include "platform/linux/BusRequest.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEvent>
#include <QPointer>

#include <algorithm>
#include <cerrno>

namespace veilkeep {
namespace {

constexpr std::size_t mostWaiting = 32;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(RequestService)
};

} // namespace

RequestService::RequestService(RequestHandler& handler) : m_handler(handler) {
    m_callers.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_callers, &QDBusServiceWatcher::serviceUnregistered, this, &RequestService::cancel);
}

RequestService::~RequestService() {
    for (const Requests* const requests : {&m_urgent, &m_requests})
        for (const auto& request : *requests)
            request->cancel();
    // The connection itself may last: whoever answers a call later holds it.
    if (m_bus && m_bus->isConnected())
        m_bus->connection().unregisterService(requestService);
}

Result<void> RequestService::start() {
    if (m_bus && m_bus->isConnected())
        return {};
    while (m_requests.size() > (m_isBusy ? 1 : 0))
        cancel(m_requests.back()->sender());
    if (m_isBusy)
        m_requests.front()->cancel();
    registerRequestTypes();
    m_bus = std::make_unique<SessionBusConnection>();
    QDBusConnection& connection = m_bus->connection();
    if (!connection.isConnected()) {
        m_bus.reset();
        return Error::system("connect", {}, ENOTCONN);
    }
    m_callers.setConnection(connection);
    if (!connection.registerObject(requestObject, this, QDBusConnection::ExportScriptableSlots))
        return Error::system("registerObject", {}, EEXIST);
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        connection.interface()->registerService(requestService, QDBusConnectionInterface::DontQueueService,
                                                QDBusConnectionInterface::DontAllowReplacement);
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered)
        return {};
    const int reason = reply.isValid() ? EEXIST : ENOTCONN;
    m_bus.reset();
    return Error::system("registerService", {}, reason);
}

std::optional<std::size_t> RequestService::find(const Requests& requests, const QString& sender) {
    const auto found =
        std::ranges::find_if(requests, [&](const auto& request) { return request->sender() == sender; });
    if (found == requests.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - requests.begin());
}

bool RequestService::refuses(const QString& sender, const Requests& requests) {
    if (!m_bus->isOwnUsers(sender))
        sendErrorReply(accessDenied, Texts::tr("Only the same user's programs may ask for this."));
    else if (find(m_requests, sender) || find(m_urgent, sender))
        sendErrorReply(limitsExceeded, Texts::tr("One request after the other, please."));
    else if (requests.size() >= mostWaiting)
        sendErrorReply(limitsExceeded, Texts::tr("Too many requests are waiting."));
    else
        return false;
    return true;
}

int RequestService::Run(const QString& command, const QByteArrayList& paths, const QVariantMap& options,
                        const QDBusObjectPath& caller) {
    const QString sender = message().service();
    const bool isUrgent = m_handler.isUrgent(command);
    Requests& requests = isUrgent ? m_urgent : m_requests;
    if (refuses(sender, requests))
        return 0;
    const ReadValues read = readValues(options);
    QString fault = faultOfRequest(command, paths, read.values);
    if (fault.isEmpty() && !read.isComplete)
        fault = Texts::tr("An option of the request is of an unknown kind.");
    if (!fault.isEmpty()) {
        sendErrorReply(invalidArguments, fault);
        return 0;
    }
    Request request{command, {}, read.values};
    for (const QByteArray& path : paths)
        request.paths.push_back(path.toStdString());
    setDelayedReply(true);
    const auto lookAtBus = [service = QPointer(this)] {
        if (service)
            service->lookAtBus();
    };
    m_callers.addWatchedService(sender);
    const auto added =
        std::make_shared<RemoteCaller>(connection(), message(), caller.path(), std::move(request), lookAtBus);
    requests.push_back(added);
    added->tellAccepted();
    if (isUrgent)
        begin(added);
    else
        QMetaObject::invokeMethod(this, &RequestService::startNext, Qt::QueuedConnection);
    return 0;
}

void RequestService::Cancel() {
    cancel(message().service());
}

void RequestService::Yield() {
    const QDBusMessage call = message();
    if (!m_bus->isOwnUsers(call.service()))
        return sendErrorReply(accessDenied, Texts::tr("Only the same user's programs may ask for this."));
    if (!m_give)
        return sendErrorReply(notSupported, Texts::tr("The list stays with this program."));
    setDelayedReply(true);
    m_give(call.service(), [bus = connection(), call] { bus.send(call.createReply()); });
}

// The request in hand ends when the handler has seen it; others are over at once.
void RequestService::cancel(const QString& sender) {
    if (const auto urgent = find(m_urgent, sender))
        m_urgent[*urgent]->cancel();
    const auto position = find(m_requests, sender);
    if (!position)
        return;
    m_requests[*position]->cancel();
    if (*position == 0 && m_isBusy)
        return;
    m_requests[*position]->finish(RequestStatus::SomeFailed);
    remove(*position);
}

void RequestService::startNext() {
    if (m_isBusy || m_requests.empty())
        return;
    m_isBusy = true;
    begin(m_requests.front());
}

// The caller may have given up, or be gone, while the request waited or this program hung: it is asked once
// more before anything is done.
void RequestService::begin(const std::shared_ptr<RemoteCaller>& caller) {
    auto* const answer = new QDBusPendingCallWatcher(caller->askWhetherToBegin(), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, caller] {
        answer->deleteLater();
        const QDBusPendingReply<bool> reply = *answer;
        work(caller, !reply.isError() && reply.value());
    });
}

// The handler may finish later, even when this service is gone.
void RequestService::work(const std::shared_ptr<RemoteCaller>& caller, bool isWanted) {
    const auto done = [service = QPointer(this), caller](RequestStatus status) {
        caller->finish(status);
        if (service)
            service->workIsDone(caller);
    };
    if (isWanted && !caller->isCancelled())
        m_handler.handle(caller->request(), *caller, done);
    else
        done(RequestStatus::SomeFailed);
}

void RequestService::workIsDone(const std::shared_ptr<RemoteCaller>& caller) {
    if (std::erase(m_urgent, caller) > 0) {
        m_callers.removeWatchedService(caller->sender());
        return;
    }
    remove(0);
    m_isBusy = false;
    QMetaObject::invokeMethod(this, &RequestService::startNext, Qt::QueuedConnection);
}

void RequestService::remove(std::size_t position) {
    m_callers.removeWatchedService(m_requests[position]->sender());
    m_requests.erase(m_requests.begin() + static_cast<std::ptrdiff_t>(position));
}

// The handler keeps the event loop from running. Calls and vanishing callers are delivered all the same, and
// nothing else is.
void RequestService::lookAtBus() {
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    QCoreApplication::sendPostedEvents(&m_callers, QEvent::MetaCall);
}

} // namespace veilkeep
