#include "widgets/dialogs/windowPlacement.h"

#include "format/WindowCentering.h"
#include "widgets/dialogs/MainWindowAnswer.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace veilkeep {
namespace {

QPoint keptWithin(const QRect& area, QPoint place, QSize size) {
    const int x = std::min(place.x(), area.x() + area.width() - size.width());
    const int y = std::min(place.y(), area.y() + area.height() - size.height());
    return {std::max(x, area.x()), std::max(y, area.y())};
}

void giveSize(QWidget& window) {
    if (!window.isVisible() && !window.testAttribute(Qt::WA_Resized))
        window.adjustSize();
}

} // namespace

QWidget* visibleWindow(const MainWindowAnswer& mainWindow) {
    QWidget* const window = mainWindow ? mainWindow() : nullptr;
    return window && window->isVisible() ? window : nullptr;
}

void betterCenter(QWidget& window) {
    giveSize(window);
    window.move(betterCenter(window.frameGeometry().size(), window.screen()->availableGeometry()).topLeft());
}

void placeWindow(QWidget& window) {
    const QWidget* const parent = window.parentWidget();
    if (window.windowModality() != Qt::WindowModal || !parent || !parent->isVisible())
        return betterCenter(window);
    giveSize(window);
    const QSize size = window.frameGeometry().size();
    window.move(keptWithin(parent->screen()->availableGeometry(),
                           betterCenter(size, parent->window()->frameGeometry()).topLeft(), size));
}

} // namespace veilkeep
