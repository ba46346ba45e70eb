#pragma once

#include "platform/linux/BusLink.h"
#include "platform/linux/BusOwners.h"

#include <QDBusMessage>
#include <QObject>
#include <QSet>
#include <QString>

#include <memory>

namespace veilkeep {

// The desktops' screen savers: whether one of them covers the screen, locked or not. What they last said
// holds while there is no bus; one that leaves a bus covers nothing any more. Main thread.
class ScreenSavers : public QObject {
    Q_OBJECT

public:
    explicit ScreenSavers(BusLink& bus);

signals:
    void activeChanged(bool isAnyActive);      // told again with each word of one of them
    void hintingLockerChanged(bool isRunning); // one that tells logind when it locks, always

private slots:
    void heard(const QDBusMessage& signal);

private:
    void ownerChanged(const QString& name, const QString& owner);
    void listenTo(const QString& owner, const QString& name, const QString& path, const QString& interface);
    void correct(const QString& name, bool isActive); // without a word of its own
    void setActive(const QString& name, bool isActive);

    BusLink& m_bus;
    BusOwners m_owners;
    std::unique_ptr<QObject> m_asker; // goes with the bus that it asked
    QSet<QString> m_active;           // names of those that cover the screen
};

} // namespace veilkeep
