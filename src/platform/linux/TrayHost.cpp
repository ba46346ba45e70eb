#include "platform/linux/TrayHost.h"

#include "platform/linux/LogindCalls.h"

#include <QDBusVariant>

#include <utility>

namespace veilkeep {

TrayHost::TrayHost(BusLink& sessionBus) : m_bus(sessionBus), m_watcher(sessionBus, {trayWatcher}) {
    connect(&m_watcher, &BusOwners::changed, this,
            [this](const QString&, const QString& owner) { talkTo(owner); });
    connect(&m_bus, &BusLink::wentDown, this, [this] { talkTo({}); });
}

void TrayHost::talkTo(const QString& watcher) {
    m_owner = watcher;
    ++m_questions;
    set(false); // whoever takes another's place knows none of its items
    if (watcher.isEmpty())
        return;
    for (const char* const signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        m_bus.hook(watcher, trayWatcherObject, trayWatcher, signal, this, SLOT(hostsChanged(QDBusMessage)));
    askForHosts();
}

void TrayHost::hostsChanged(const QDBusMessage& signal) {
    if (signal.service() == m_owner)
        askForHosts();
}

// The signals do not say whether another host is left.
void TrayHost::askForHosts() {
    const QDBusMessage question = propertyCall(m_owner, trayWatcherObject, trayWatcher, trayHostProperty);
    m_bus.ask(question, *this, [this, number = ++m_questions](const QDBusMessage& answer) {
        if (number == m_questions) // answers may overtake each other
            set(answer.arguments().value(0).value<QDBusVariant>().variant() == QVariant(true));
    });
}

void TrayHost::set(bool isAvailable) {
    if (std::exchange(m_isAvailable, isAvailable) != isAvailable)
        emit availableChanged(isAvailable);
}

} // namespace veilkeep
