#pragma once

#include "platform/OpenRequest.h"
#include "platform/linux/SessionBusConnection.h"

#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <chrono>
#include <memory>

namespace veilkeep {

// This program as the one that the desktop knows (org.freedesktop.Application at "com.ostrel.Veilkeep"): of a
// user's processes one has the name, and later ones hand on to it what they are asked for. Callers of the
// same user are obeyed, once their call is answered. Main thread.
class ApplicationOnBus : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Outcome { Primary, AnotherRuns, NoBus };

    ApplicationOnBus();
    ~ApplicationOnBus() override; // the name is free then

    // Does nothing while it has the name; on a bus that was started anew it takes it again.
    Outcome start();

    // Asks the process that has the name; false where it has not answered within the limit. Needs no object
    // and starts nobody. Where there is nothing to open the window is asked for.
    static bool forwardToRunning(const OpenRequest& request, const QString& token,
                                 std::chrono::milliseconds limit = std::chrono::seconds(10));

signals:
    void activated(const QString& token);
    void opened(const veilkeep::OpenRequest& request, const QString& token); // never empty

public slots:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameters,
                                     const QVariantMap& platformData);

private:
    bool refuses(bool isHarmless); // and has said so
    void take(const QStringList& uris, const QVariantMap& platformData, bool shows);
    bool takeName();

    std::unique_ptr<SessionBusConnection> m_bus;
};

} // namespace veilkeep
