#include "app/ADApp.h"
#include "app/ADAppParts.h"

#include "core/log/Log.h"
#include "widgets/dialogs/AlertWindow.h"

namespace veilkeep {

void ADApp::applicationWillBeRelaunched() {
    m_willBeRelaunched = true;
}

// What the user has to decide stays, and the relaunch waits for it.
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

} // namespace veilkeep
