#pragma once

#include "platform/Request.h"

#include <QByteArrayList>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QEventLoop>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace veilkeep {

// One request from the bus and the program that made it. What is told goes to the caller's object without
// waiting; items are collected for a tenth of a second. Owned by RequestService and whoever is to finish it;
// main thread.
class RemoteCaller : public RequestCaller {
public:
    // run is the call that is answered at the end; lookAtBus takes what has arrived for the service.
    RemoteCaller(QDBusConnection connection, QDBusMessage run, QString object, Request request,
                 std::function<void()> lookAtBus);

    const Request& request() const { return m_request; }
    QString sender() const { return m_run.service(); }

    void tellAccepted() const;
    QDBusPendingCall askWhetherToBegin() const; // answered with a boolean
    void finish(RequestStatus status);
    void cancel(); // answers an open question with its last button as well

    void itemDone(const std::string& path, const std::string& newPath) override;
    void itemFailed(const std::string& path, const QString& reason) override;
    void message(const QString& text) override;
    void listed(const std::vector<QVariantMap>& rows) override;
    void progress(const QString& stage, const QString& subStage, std::size_t done,
                  std::size_t total) override;
    std::size_t ask(const Question& question) override;
    std::optional<QString> askPassword(const QString& line, int wrongEntries) override;
    void cancelQuestion() override;
    bool isCancelled() const override;

private:
    using Clock = std::chrono::steady_clock;

    QDBusMessage callTo(const char* method, const QVariantList& arguments) const;
    void send(const char* method, const QVariantList& arguments);
    void sendItems();
    bool waitFor(const QDBusPendingCall& question); // false: taken back, or this program is about to end

    QDBusConnection m_connection;
    QDBusMessage m_run;
    QString m_object;
    Request m_request;
    std::function<void()> m_lookAtBus;
    QByteArrayList m_donePaths, m_newPaths;
    Clock::time_point m_itemsSent{}, m_progressSent{};
    QString m_stage, m_subStage;
    std::vector<QEventLoop*> m_questions; // each asked while the one before is open
    bool m_isCancelled = false;
};

} // namespace veilkeep
