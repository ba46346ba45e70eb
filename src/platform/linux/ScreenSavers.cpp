#include "platform/linux/ScreenSavers.h"

#include "platform/linux/ScreenSaverNames.h"

namespace veilkeep {
namespace {

QStringList watchedNames() {
    QStringList names;
    for (const ScreenSaverName& saver : screenSaverNames)
        names << saver.name;
    for (const QLatin1String& name : hintingLockers)
        if (!names.contains(name))
            names << name;
    return names;
}

} // namespace

ScreenSavers::ScreenSavers(BusLink& bus) : m_bus(bus), m_owners(bus, watchedNames()) {
    connect(&m_bus, &BusLink::cameUp, this, [this] { m_asker = std::make_unique<QObject>(); });
    connect(&m_owners, &BusOwners::changed, this, &ScreenSavers::ownerChanged);
}

void ScreenSavers::ownerChanged(const QString& name, const QString& owner) {
    bool isHintingLockerThere = false;
    for (const QLatin1String& locker : hintingLockers)
        isHintingLockerThere = isHintingLockerThere || !m_owners.ownerOf(locker).isEmpty();
    emit hintingLockerChanged(isHintingLockerThere);
    for (const ScreenSaverName& saver : screenSaverNames) {
        if (saver.name != name)
            continue;
        if (owner.isEmpty())
            correct(name, false);
        else
            listenTo(owner, saver.name, saver.path, saver.interface);
    }
}

// What it said before may have been missed. Called by its unique name it is not started.
void ScreenSavers::listenTo(const QString& owner, const QString& name, const QString& path,
                            const QString& interface) {
    m_bus.hook(owner, path, interface, "ActiveChanged", this, SLOT(heard(QDBusMessage)));
    const QDBusMessage call =
        QDBusMessage::createMethodCall(owner, path, interface, QStringLiteral("GetActive"));
    m_bus.ask(call, *m_asker, [this, name, owner](const QDBusMessage& answer) {
        if (m_owners.ownerOf(name) == owner)
            correct(name, answer.arguments().value(0) == QVariant(true));
    });
}

// One program may have several of the names; each says everything for itself.
void ScreenSavers::heard(const QDBusMessage& signal) {
    const QVariant isActive = signal.arguments().value(0);
    if (isActive.typeId() != QMetaType::Bool)
        return;
    for (const ScreenSaverName& saver : screenSaverNames)
        if (saver.path == signal.path() && saver.interface == signal.interface() &&
            m_owners.ownerOf(saver.name) == signal.service())
            setActive(saver.name, isActive.toBool());
}

void ScreenSavers::correct(const QString& name, bool isActive) {
    if (isActive != m_active.contains(name))
        setActive(name, isActive);
}

void ScreenSavers::setActive(const QString& name, bool isActive) {
    if (isActive)
        m_active.insert(name);
    else
        m_active.remove(name);
    emit activeChanged(!m_active.isEmpty());
}

} // namespace veilkeep
