#include "widgets/controls/FocusAfterMenu.h"

#include <QAccessible>
#include <QApplication>
#include <QMenu>

namespace veilkeep {

void tellFocusAfter(const QMenu& menu) {
    const auto tell = [] {
        QWidget* const focused = QApplication::focusWidget();
        if (!focused || QApplication::activePopupWidget())
            return;
        QAccessibleEvent event(focused, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    };
    QObject::connect(&menu, &QMenu::aboutToHide, qApp, tell, Qt::QueuedConnection);
}

} // namespace veilkeep
