#pragma once

#include "alerts/Alerts.h"
#include "core/storage/UserDefaults.h"
#include "platform/Installation.h"

#include <QCoreApplication>

namespace veilkeep {

// Offers a copy that runs from elsewhere to be installed for its user. Main thread.
class InstallationOffer {
    Q_DECLARE_TR_FUNCTIONS(InstallationOffer)

public:
    // Nothing of it is owned.
    InstallationOffer(Alerts& alerts, UserDefaults& defaults, Installation& installation)
        : m_alerts(alerts), m_defaults(defaults), m_installation(installation) {}

    // When the user quits. Nothing is asked of one that is installed, or where the user did not want it.
    void handleApplicationLaunchFromDiskImage();

private:
    bool isWanted(const QString& name);
    bool mayOverwrite(const QString& name);

    Alerts& m_alerts;
    UserDefaults& m_defaults;
    Installation& m_installation;
};

} // namespace veilkeep
