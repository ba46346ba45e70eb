#include "alerts/ADAlertManager.h"

#include <QCoreApplication>

namespace veilkeep {
namespace {

Alert fixedAlert(Alert::Style style, const QString& title, const QString& message) {
    Alert alert;
    alert.style = style;
    alert.title = title;
    alert.message = message;
    return alert;
}

} // namespace

void ADAlertManager::showGenericError(const QString& title, const QString& errorDescription) {
    m_alerts.runAlert(fixedAlert(Alert::Style::Warning, title, errorDescription),
                      {QCoreApplication::translate("ADAlertManager", "OK")});
}

QString ADAlertManager::showOverwriteOriginalAlertForFile(const QString& item,
                                                          const QString& newOriginalFileName) {
    const QString message = QCoreApplication::translate(
        "ADAlertManager", "The item “%1” you want to unhide already exists. Do you want to "
                          "replace or rename it to “%2”?");
    const int code = m_alerts.runAlert(
        fixedAlert(Alert::Style::Warning,
                   QCoreApplication::translate("ADAlertManager", "Some items cannot be unhidden."),
                   message.arg(item, newOriginalFileName)),
        {QCoreApplication::translate("ADAlertManager", "Replace"),
         QCoreApplication::translate("ADAlertManager", "Rename"),
         QCoreApplication::translate("ADAlertManager", "Cancel")});
    if (code == Alerts::firstButton)
        return "Replace";
    return code == Alerts::firstButton + 1 ? "Rename" : "Cancel";
}

QString ADAlertManager::showAppForRecentsAlertForFile(const QString& item, const QStringList& applications) {
    const QString message = QCoreApplication::translate(
        "ADAlertManager",
        "The item “%1” you want to hide is in the ‘Open Recent’ list of some applications. If you "
        "want to remove it from that list, please close the applications below before continuing.");
    Alert alert = fixedAlert(Alert::Style::Warning,
                             QCoreApplication::translate(
                                 "ADAlertManager", "The item you want to hide is in the ‘Open Recent’ list."),
                             message.arg(item));
    alert.applications = applications;
    const int code =
        m_alerts.runAlert(std::move(alert), {QCoreApplication::translate("ADAlertManager", "Continue"),
                                             QCoreApplication::translate("ADAlertManager", "Cancel")});
    if (code == Alerts::firstButton)
        return "Continue";
    return code == Alerts::firstButton + 1 ? "Cancel" : QString();
}

QString ADAlertManager::showRecentsAlert() {
    const QString message =
        QCoreApplication::translate(
            "ADAlertManager",
            "Veilkeep can clean the 'Open Recent' list of some applications and Finder. This will "
            "avoid finding your files in that list, but the hiding operation will take a bit longer. "
            "You can enable/disable this option in Veilkeep Preferences.") +
        '\n' + QCoreApplication::translate("ADAlertManager", "Would you like to enable this feature now?");
    Alert alert =
        fixedAlert(Alert::Style::Informational,
                   QCoreApplication::translate("ADAlertManager", "Recent files list removal."), message);
    alert.cancellingCode = 0; // what was closed unanswered is asked again
    const AlertAnswer answer = m_alerts.answerTo(
        std::move(alert), {QCoreApplication::translate("ADAlertManager", "Remove Recents"),
                           QCoreApplication::translate("ADAlertManager", "Don't Remove Recents")});
    if (answer.nobodyThere)
        return {}; // what the user never decided must not be remembered as a No
    if (answer.code == Alerts::firstButton)
        return "Yes";
    return answer.code == Alerts::firstButton + 1 ? "No" : QString();
}

} // namespace veilkeep
