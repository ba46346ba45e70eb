#include "platform/linux/checkup/SessionBusCheckup.h"

#include "platform/linux/BusRequest.h"
#include "platform/linux/LogindCalls.h"
#include "platform/linux/ScreenSaverNames.h"
#include "platform/linux/TrayHost.h"

#include <QDBusVariant>

#include <algorithm>
#include <iterator>

namespace veilkeep {
namespace {

constexpr QLatin1String applicationService("com.ostrel.Veilkeep");

} // namespace

void SessionBusCheckup::begin(SessionBusFacts& facts) {
    m_facts = &facts;
    start([this] { askForNames("ListNames", [this](const QStringList& names) { takeNames(names); }); });
}

void SessionBusCheckup::takeNames(const QStringList& names) {
    m_facts->areNamesTold = true;
    m_facts->isApplicationThere = names.contains(applicationService);
    m_facts->isListServed = names.contains(requestService);
    m_facts->isTrayThere = names.contains(trayWatcher);
    m_facts->isHintingLockerThere = std::ranges::any_of(
        hintingLockers, [&](const QLatin1String& locker) { return names.contains(locker); });
    if (m_facts->isTrayThere)
        askTray();
    askScreenSavers(names);
}

void SessionBusCheckup::askTray() {
    ask(propertyCall(trayWatcher, trayWatcherObject, trayWatcher, trayHostProperty),
        [this](const QDBusMessage& answer) {
            const QVariant host = answeredValue(answer, "v").value<QDBusVariant>().variant();
            if (host.typeId() == QMetaType::Bool)
                m_facts->hasTrayHost = host.toBool();
        });
}

void SessionBusCheckup::askScreenSavers(const QStringList& names) {
    for (const ScreenSaverName& saver : screenSaverNames) {
        if (!names.contains(saver.name))
            continue;
        const std::size_t index = m_facts->screenSavers.size();
        m_facts->screenSavers.push_back({saver.name});
        ask(QDBusMessage::createMethodCall(saver.name, saver.path, saver.interface,
                                           QStringLiteral("GetActive")),
            [this, index](const QDBusMessage& answer) {
                m_facts->screenSavers[index].hasAnswered = answeredValue(answer, "b").isValid();
            });
    }
}

} // namespace veilkeep
