#include "platform/linux/BusLink.h"

#include "core/environment/SessionBus.h"
#include "core/log/Log.h"
#include "platform/linux/BusProbe.h"
#include "platform/linux/BusRequest.h"

#include <QDBusPendingCallWatcher>
#include <QUuid>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::chrono::milliseconds greetingLimit = std::chrono::seconds(5);
constexpr std::chrono::milliseconds shortestPause(250);
constexpr std::chrono::milliseconds longestPause = std::chrono::seconds(4);

std::string systemBusAddress() {
    const char* const address = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    return address && *address ? address : "unix:path=/var/run/dbus/system_bus_socket";
}

} // namespace

BusLink::BusLink(Bus bus) : m_bus(bus), m_connection(QString()), m_pause(shortestPause) {
    m_timer.setSingleShot(true);
}

BusLink::~BusLink() {
    QDBusConnection::disconnectFromBus(m_connection.name());
}

std::string BusLink::addressOf(Bus bus) {
    return bus == Bus::System ? systemBusAddress() : sessionBusAddress();
}

void BusLink::start() {
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (m_answer)
            lookAgainLater();
        else
            look();
    });
    look();
}

void BusLink::hook(const QString& service, const QString& path, const QString& interface, const char* signal,
                   QObject* receiver, const char* slot) {
    m_connection.connect(service, path, interface, QLatin1String(signal), receiver, slot);
}

void BusLink::ask(const QDBusMessage& call, const QObject& asker,
                  std::function<void(const QDBusMessage&)> answered) {
    auto* const watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(call, withoutLimit), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, watcher, &QObject::deleteLater);
    connect(watcher, &QDBusPendingCallWatcher::finished, &asker,
            [this, watcher, answered = std::move(answered)] {
                if (m_isUp && m_connection.isConnected())
                    answered(watcher->reply());
            });
}

void BusLink::look() {
    const std::string address = addressOf(m_bus);
    if (address.empty()) // the bus library would start a bus
        lookAgainLater();
    else
        greet(address);
}

// The bus library waits without end for one that takes connections and does not answer: it is asked only
// when there is an answer.
void BusLink::greet(const std::string& address) {
    auto socket = greetBus(address);
    if (!socket) {
        connectTo(address);
    } else if (!*socket) {
        lookAgainLater();
    } else {
        m_greeted = std::move(*socket);
        m_answer = std::make_unique<QSocketNotifier>(m_greeted.get(), QSocketNotifier::Read);
        connect(m_answer.get(), &QSocketNotifier::activated, this, [this, address] { connectTo(address); });
        m_timer.start(greetingLimit);
    }
}

void BusLink::connectTo(const std::string& address) {
    endGreeting();
    QDBusConnection::disconnectFromBus(m_connection.name());
    m_connection = QDBusConnection::connectToBus(QString::fromStdString(address),
                                                 QUuid::createUuid().toString(QUuid::WithoutBraces));
    hook(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
         QStringLiteral("org.freedesktop.DBus.Local"), "Disconnected", this, SLOT(lose()));
    if (!m_connection.isConnected()) {
        lookAgainLater();
        return;
    }
    m_isUp = true;
    m_pause = shortestPause;
    if (std::exchange(m_isMissed, false))
        logLine(std::string("The ") + name() + " bus is there now.");
    emit cameUp();
}

void BusLink::lose() {
    if (!std::exchange(m_isUp, false))
        return;
    lookAgainLater();
    emit wentDown();
}

// The notifier may be the one that is just telling of the answer.
void BusLink::endGreeting() {
    m_timer.stop();
    if (m_answer) {
        m_answer->setEnabled(false);
        m_answer.release()->deleteLater();
    }
    m_greeted.reset();
}

void BusLink::lookAgainLater() {
    endGreeting();
    if (!std::exchange(m_isMissed, true))
        logLine(std::string("The ") + name() + " bus cannot be reached.");
    m_timer.start(m_pause);
    m_pause = std::min(m_pause * 2, longestPause);
}

} // namespace veilkeep
