#include "app/ADApp.h"
#include "app/ADAppParts.h"

#include "core/log/Log.h"
#include "widgets/dialogs/AlertWindow.h"

#include <QDialog>

namespace veilkeep {

void ADApp::applicationWillBeRelaunched() {
    m_willBeRelaunched = true;
}

// What the user has to decide stays, see isRelaunchHeldUp().
void ADApp::updaterWillRelaunchApplication() {
    for (QWidget* const window : topLevelWidgets()) {
        auto* const sheet = qobject_cast<AlertWindow*>(window);
        if (!sheet || !sheet->isVisible() || sheet->windowModality() != Qt::WindowModal ||
            !sheet->isDismissible())
            continue;
        logLine(QStringLiteral("Dismisssed sheet %1 to allow software update.")
                    .arg(sheet->accessibleName())
                    .toStdString());
        sheet->reject();
    }
}

// What is open would be lost with the program: it is brought to the front, and can be asked for again.
bool ADApp::isRelaunchHeldUp() {
    for (QWidget* const window : topLevelWidgets()) {
        if (!window->isVisible() || !window->isModal() || !qobject_cast<QDialog*>(window))
            continue;
        window->raise();
        window->activateWindow();
        return true;
    }
    return false;
}

} // namespace veilkeep
