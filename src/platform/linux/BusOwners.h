#pragma once

#include "platform/linux/BusLink.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

namespace veilkeep {

// Who stands behind some names of a message bus, without ever starting a service for one of them. Main
// thread.
class BusOwners : public QObject {
    Q_OBJECT

public:
    BusOwners(BusLink& bus, QStringList names);

    // A unique name, or empty. Stays as it was while there is no bus.
    QString ownerOf(const QString& name) const { return m_owners.value(name); }

signals:
    // Told of each name once after the bus came up, also when nobody owns it, and then with every change.
    void changed(const QString& name, const QString& owner);

private slots:
    void noticed(const QString& name, const QString& before, const QString& owner);

private:
    void askAgain();
    void set(const QString& name, const QString& owner);

    BusLink& m_bus;
    QStringList m_names;
    QHash<QString, QString> m_owners;
    QSet<QString> m_told; // since the bus came up
};

} // namespace veilkeep
