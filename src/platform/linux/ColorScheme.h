#pragma once

#include "platform/linux/BusLink.h"
#include "platform/linux/BusOwners.h"

#include <QDBusMessage>
#include <QObject>
#include <QVariant>

namespace veilkeep {

// Whether the user wants windows to be dark, as the desktop's portal tells it
// (org.freedesktop.appearance, color-scheme). Listens only, and starts nobody. Main thread.
class ColorScheme : public QObject {
    Q_OBJECT

public:
    explicit ColorScheme(BusLink& sessionBus); // before the bus is started

    bool isDark() const { return m_isDark; }

signals:
    void darkChanged(bool isDark);

private slots:
    void settingChanged(const QDBusMessage& signal);

private:
    void talkTo(const QString& portal);
    void take(QVariant value);

    BusLink& m_bus;
    BusOwners m_portal;
    QString m_owner;
    bool m_isDark = false;
};

} // namespace veilkeep
