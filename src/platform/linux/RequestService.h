#pragma once

#include "core/base/Result.h"
#include "platform/Request.h"
#include "platform/linux/RemoteCaller.h"
#include "platform/linux/SessionBusConnection.h"

#include <QByteArrayList>
#include <QDBusContext>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantMap>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace veilkeep {

// Offers a RequestHandler on the session bus (docs/bus.md) and gives it one request after the other, urgent
// ones at once. Owned by the program that owns the list; main thread.
class RequestService : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.ostrel.Veilkeep.Requests1")

public:
    // Gives the list to the program with that unique name on the bus, which waits to be told that it is free.
    using GiveList = std::function<void(const QString& program, std::function<void()> tellThatItIsFree)>;

    explicit RequestService(RequestHandler& handler);
    ~RequestService() override; // cancels the request in hand; the name is free then

    void setGiveList(GiveList give) { m_give = std::move(give); } // without it the list is kept

    // ENOTCONN without a bus, EEXIST where another program serves already. Does nothing while it serves; on a
    // bus that was started anew it serves again, and what was asked on the old one is cancelled.
    [[nodiscard]] Result<void> start();

public slots:
    Q_SCRIPTABLE int Run(const QString& command, const QByteArrayList& paths, const QVariantMap& options,
                         const QDBusObjectPath& caller);
    Q_SCRIPTABLE void Cancel();
    Q_SCRIPTABLE void Yield();

private:
    using Requests = std::deque<std::shared_ptr<RemoteCaller>>;

    void startNext();
    void begin(const std::shared_ptr<RemoteCaller>& caller);
    void work(const std::shared_ptr<RemoteCaller>& caller, bool isWanted);
    void workIsDone(const std::shared_ptr<RemoteCaller>& caller);
    void cancel(const QString& sender);
    void lookAtBus();
    void remove(std::size_t position);
    bool refuses(const QString& sender, const Requests& requests); // and has said so
    static std::optional<std::size_t> find(const Requests& requests, const QString& sender);

    RequestHandler& m_handler;
    GiveList m_give;
    std::unique_ptr<SessionBusConnection> m_bus;
    QDBusServiceWatcher m_callers;
    Requests m_requests; // while busy the first is the one in hand
    Requests m_urgent;   // all in hand
    bool m_isBusy = false;
};

} // namespace veilkeep
