#pragma once

#include "platform/Request.h"
#include "platform/linux/SessionBusConnection.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>

namespace veilkeep {

class CallerObject;

// Hands requests to the program that owns the list, over the session bus. Connects with the first call. Needs
// a QCoreApplication; one thread.
class RequestClient {
public:
    // Why run() has no status to tell.
    enum class Failure {
        None,
        NotServed, // nobody serves; nothing was done
        Vanished,  // the owner ended before it answered; what it told until then is done
    };

    // The limit is for taking the request, not for working on it.
    explicit RequestClient(std::chrono::milliseconds acceptLimit = std::chrono::seconds(10))
        : m_acceptLimit(acceptLimit) {}

    bool isServed(); // starts nobody

    // Runs an event loop until the request is through, however long that takes: the caller is told, asked,
    // and its isCancelled() looked at every 50 ms. OwnerSilent when the owner does not take the request in
    // time; it will not begin it later either.
    std::optional<RequestStatus> run(const Request& request, RequestCaller& caller);

    Failure failure() const { return m_failure; } // of the last run()

private:
    bool connect();
    QString owner(); // the unique name, empty where nobody of this user's serves
    std::optional<RequestStatus> failed(Failure failure);
    std::optional<RequestStatus> runAt(const QString& owner, const Request& request, RequestCaller& caller);
    bool wait(const QDBusPendingCallWatcher& answer, const QString& owner, CallerObject& object,
              RequestCaller& caller); // false when the owner was silent
    std::optional<RequestStatus> afterError(const QDBusError& error, RequestCaller& caller);

    std::chrono::milliseconds m_acceptLimit;
    std::unique_ptr<SessionBusConnection> m_bus;
    Failure m_failure = Failure::None;
};

} // namespace veilkeep
