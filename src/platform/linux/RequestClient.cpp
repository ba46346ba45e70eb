#include "platform/linux/RequestClient.h"

#include "platform/EventLoop.h"
#include "platform/linux/BusRequest.h"
#include "platform/linux/CallerObject.h"

#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QEventLoop>
#include <QTimer>

namespace veilkeep {
namespace {

constexpr std::chrono::milliseconds cancelPause(50);

QDBusMessage callTo(const QString& owner, const char* method) {
    return QDBusMessage::createMethodCall(owner, requestObject, requestInterface, QLatin1String(method));
}

RequestStatus statusFrom(int number) {
    const bool isKnown = number >= 0 && number <= static_cast<int>(RequestStatus::OwnerSilent);
    return isKnown ? static_cast<RequestStatus>(number) : RequestStatus::SomeFailed;
}

} // namespace

bool RequestClient::connect() {
    registerRequestTypes();
    if (!m_bus || !m_bus->isConnected())
        m_bus = std::make_unique<SessionBusConnection>();
    return m_bus->isConnected();
}

bool RequestClient::isServed() {
    return connect() && m_bus->askBus(QStringLiteral("NameHasOwner"), requestService).arguments().value(0) ==
                            QVariant(true);
}

QString RequestClient::owner() {
    if (!connect())
        return {};
    const QDBusMessage reply = m_bus->askBus(QStringLiteral("GetNameOwner"), requestService);
    const QString name =
        reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString() : QString();
    return !name.isEmpty() && m_bus->isOwnUsers(name) ? name : QString();
}

std::optional<RequestStatus> RequestClient::failed(Failure failure) {
    m_failure = failure;
    return std::nullopt;
}

std::optional<RequestStatus> RequestClient::run(const Request& request, RequestCaller& caller) {
    m_failure = Failure::None;
    const QString name = owner();
    if (name.isEmpty())
        return failed(Failure::NotServed);
    if (const QString fault = faultOfRequest(request.command, busPaths(request.paths), request.options);
        !fault.isEmpty()) {
        caller.message(fault);
        return RequestStatus::WrongUsage;
    }
    return runAt(name, request, caller);
}

std::optional<RequestStatus> RequestClient::runAt(const QString& owner, const Request& request,
                                                  RequestCaller& caller) {
    QDBusConnection& connection = m_bus->connection();
    CallerObject object(caller, owner);
    if (!connection.registerObject(callerObject, &object, QDBusConnection::ExportScriptableSlots))
        return failed(Failure::NotServed);
    QDBusMessage call = callTo(owner, "Run");
    call << request.command << QVariant::fromValue(busPaths(request.paths)) << busValues(request.options)
         << QVariant::fromValue(QDBusObjectPath(callerObject));
    const QDBusPendingCallWatcher answer(connection.asyncCall(call, withoutLimit));
    const bool isAnswered = wait(answer, owner, object, caller);
    connection.unregisterObject(callerObject);
    if (!isAnswered) {
        m_bus.reset(); // tells the owner, should it wake up, that nobody waits
        return RequestStatus::OwnerSilent;
    }
    const QDBusPendingReply<int> reply = answer;
    return reply.isError() ? afterError(reply.error(), caller) : statusFrom(reply.value());
}

bool RequestClient::wait(const QDBusPendingCallWatcher& answer, const QString& owner, CallerObject& object,
                         RequestCaller& caller) {
    QEventLoop loop;
    QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &loop, [&] {
        caller.cancelQuestion(); // of an owner that ended
        loop.quit();
    });
    QTimer cancelTimer;
    QObject::connect(&cancelTimer, &QTimer::timeout, &loop, [&] {
        if (!caller.isCancelled())
            return;
        cancelTimer.stop();
        m_bus->connection().send(callTo(owner, "Cancel"));
    });
    cancelTimer.start(cancelPause);
    QTimer acceptTimer;
    acceptTimer.setSingleShot(true);
    QObject::connect(&acceptTimer, &QTimer::timeout, &loop, [&] {
        if (!object.isAccepted())
            loop.quit();
    });
    acceptTimer.start(m_acceptLimit);
    wakeEventLoop();
    if (!answer.isFinished())
        loop.exec();
    return answer.isFinished();
}

std::optional<RequestStatus> RequestClient::afterError(const QDBusError& error, RequestCaller& caller) {
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
        return failed(Failure::NotServed);
    case QDBusError::NoReply:
    case QDBusError::Disconnected:
        return failed(Failure::Vanished);
    default:
        break;
    }
    caller.message(error.message());
    if (error.type() == QDBusError::InvalidArgs)
        return RequestStatus::WrongUsage;
    const bool isRefused =
        error.type() == QDBusError::AccessDenied || error.type() == QDBusError::LimitsExceeded;
    return isRefused ? RequestStatus::Refused : RequestStatus::OwnerSilent;
}

} // namespace veilkeep
