#pragma once

#include "alerts/Alerts.h"

#include <QString>
#include <QStringList>

namespace veilkeep {

// The fixed alerts, which answer with a word instead of a code. Main thread.
class ADAlertManager {
public:
    explicit ADAlertManager(Alerts& alerts) : m_alerts(alerts) {}

    void showGenericError(const QString& title, const QString& errorDescription);

    // "Replace", "Rename" or "Cancel".
    QString showOverwriteOriginalAlertForFile(const QString& item, const QString& newOriginalFileName);

    // "Continue", "Cancel", or null.
    QString showAppForRecentsAlertForFile(const QString& item, const QStringList& applications);

    // "Yes", "No", or null where nobody was there to decide.
    QString showRecentsAlert();

private:
    Alerts& m_alerts;
};

} // namespace veilkeep
