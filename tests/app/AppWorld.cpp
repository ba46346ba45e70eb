#include "tests/app/AppWorld.h"

#include "core/base/PathText.h"
#include "core/names/BaseCloakLogic.h"

#include <QAbstractButton>
#include <QStyle>

#include <utility>

namespace veilkeep::test {
namespace {

bool isSeen(const QWidget& widget) {
    return widget.isVisible() && !widget.visibleRegion().isEmpty();
}

QString plain(QString text) {
    return text.remove(u'&');
}

} // namespace

AppWorld::AppWorld(StartOptions options) {
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setDesktopSettingsAware(false);
    m_app = std::make_unique<ADApp>(m_count, m_arguments, std::move(options));
    QApplication::setCursorFlashTime(0);
}

AppWorld::~AppWorld() = default;

bool AppWorld::start() {
    if (!m_app->start())
        return false;
    return !window() || eventually([this] { return window()->isActiveWindow(); });
}

std::string AppWorld::addFile(const std::string& name, const std::string& content) {
    const std::string path = appScratch().makeFile("home/Docs/" + name, content);
    files().addFiles({path});
    files().waitForAdding();
    settle();
    return path;
}

bool AppWorld::isHiddenOnDisk(const std::string& path) const {
    return !exists(path) &&
           exists(BaseCloakLogic::constructHidenFullFileName(path, parentPath(path) + "/.SYS_INDEX"));
}

void AppWorld::waitForBatch() {
    (void)eventually([this] { return !parts().list.turns().isRunning(); }, std::chrono::seconds(60));
    settle();
}

QWidget* AppWorld::find(const QString& name) {
    QWidget* const top = window();
    if (!top)
        return nullptr;
    for (QWidget* const widget : top->findChildren<QWidget*>())
        if (isSeen(*widget) && (widget->objectName() == name || widget->accessibleName() == name))
            return widget;
    return nullptr;
}

QWidget* AppWorld::dialog() {
    QWidget* found = nullptr;
    const auto look = [&] {
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (widget != window() && widget->isVisible() && widget->windowType() != Qt::ToolTip)
                found = widget;
        return found != nullptr;
    };
    return eventually(look) ? found : nullptr;
}

bool AppWorld::clickButton(QWidget& dialog, const QString& text) {
    for (QAbstractButton* const button : dialog.findChildren<QAbstractButton*>())
        if (isSeen(*button) && plain(button->text()) == text) {
            realInput::click(*button);
            return true;
        }
    return false;
}

} // namespace veilkeep::test
