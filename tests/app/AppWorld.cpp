#include "tests/app/AppWorld.h"
#include "core/storage/DefaultsKeys.h"

#include "core/base/PathText.h"
#include "core/names/BaseCloakLogic.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace veilkeep::test {
namespace {

bool isSeen(const QWidget& widget) {
    return widget.isVisible() && !widget.visibleRegion().isEmpty();
}

QString plain(QString text) {
    return text.section(u'\t', 0, 0).remove(u'&').trimmed();
}

QString textOf(const QWidget& widget) {
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    return button ? plain(button->text()) : QString();
}

QMenu* openMenu() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

} // namespace

AppWorld::AppWorld(StartOptions options) {
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setDesktopSettingsAware(false);
    UserDefaults defaults;
    defaults.set(defaultsKey::noOfferToInstall, true); // a build tree's copy would
    EXPECT_TRUE(defaults.synchronize());
    m_app = std::make_unique<ADApp>(m_count, m_arguments, std::move(options));
    QApplication::setCursorFlashTime(0);
}

AppWorld::~AppWorld() {
    for (const QString& title : m_expected)
        ADD_FAILURE() << "has not come: " << title.toStdString();
}

bool AppWorld::start() {
    if (!m_app->start())
        return false;
    settle();
    if (!parts().window.isVisible())
        return true;
    // What follows the window a moment later takes the selection back.
    return giveKeyboard() && eventually([this] { return groups().autoUnhideHappened() && isAtRest(); });
}

bool AppWorld::quits(const std::function<void()>& steps) {
    constexpr int limit = 42;
    QTimer::singleShot(0, m_app.get(), steps);
    QTimer::singleShot(std::chrono::seconds(20), m_app.get(), [] { QCoreApplication::exit(limit); });
    return m_app->exec() == 0;
}

void AppWorld::setPassword(const QString& password) {
    UserDefaults defaults;
    defaults.set(defaultsKey::passwordEnabled, true);
    defaults.set(defaultsKey::passwordDigest, PasswordManager::cypher(password).toStdString());
    EXPECT_TRUE(defaults.synchronize());
}

// --- Items ---

std::string AppWorld::addFile(const std::string& name, const std::string& content) {
    const std::string path = appScratch().makeFile("home/Docs/" + name, content);
    files().addFiles({path});
    files().waitForAdding();
    settle();
    return path;
}

std::string AppWorld::addFileToGroup(const std::string& name, const std::string& group) {
    const std::string path = addFile(name);
    files().moveFiles(std::vector{path}, groups().groupForName(group)->groupID().value_or(0));
    settle();
    return path;
}

bool AppWorld::isHiddenOnDisk(const std::string& path) const {
    return !exists(path) && exists(hiddenPathOf(path));
}

std::string AppWorld::hiddenPathOf(const std::string& path) {
    return BaseCloakLogic::constructHidenFullFileName(path, joinPath(parentPath(path), hiddenDirectoryName));
}

bool AppWorld::isHidden(const std::string& path) {
    return eventually([&] {
        const ListedFile file = files().findFileWithOriginalPath(path);
        return file && file->state() == File::Hidden && isHiddenOnDisk(path) && isAtRest();
    });
}

bool AppWorld::isShown(const std::string& path) {
    return eventually([&] {
        const ListedFile file = files().findFileWithOriginalPath(path);
        return file && file->state() == File::Visible && exists(path) && isAtRest();
    });
}

bool AppWorld::shows(std::vector<std::string> names) {
    return eventually([&] {
        std::vector<std::string> rows;
        for (const ListedFile& file : table().filesModel().files())
            rows.emplace_back(file->name());
        return rows == names;
    });
}

void AppWorld::waitForBatch() {
    EXPECT_TRUE(eventually([this] { return isAtRest(); }, std::chrono::seconds(60)));
    settle();
}

// What is typed and clicked before is turned away.
bool AppWorld::isAtRest() {
    return !parts().list.turns().isRunning() && !QApplication::activeModalWidget();
}

bool AppWorld::giveKeyboard() {
    realInput::moveTo(window()->geometry().center()); // the display takes no focus by an older time
    const bool isGiven = showAndActivate(*window());
    settle();
    return isGiven;
}

void AppWorld::expectKeysToArrive() {
    EXPECT_TRUE(eventually([this] { return isAtRest() && window()->isActiveWindow(); }));
    FilterController& filter = files().filterController();
    realInput::key("Ctrl+2");
    EXPECT_TRUE(filter.showOnlyHidden());
    realInput::key("Ctrl+1");
    EXPECT_TRUE(filter.showAll());
    realInput::key("Home");
    realInput::key("Down");
    EXPECT_EQ(table().currentIndex().row(), 1);
}

// --- The window ---

bool AppWorld::clickTool(Command command) {
    for (QToolButton* const button : window()->findChildren<QToolButton*>())
        if (isSeen(*button) && button->defaultAction() == window()->action(command)) {
            realInput::click(*button);
            return true;
        }
    return false;
}

bool AppWorld::choose(QStringList fromMenu) {
    QMenuBar& bar = *window()->menuBar();
    const QString first = fromMenu.takeFirst();
    for (QAction* const menu : bar.actions())
        if (plain(menu->text()) == first)
            realInput::click(bar, bar.actionGeometry(menu).center());
    return std::ranges::all_of(fromMenu, [this](const QString& title) { return chooseInPopup(title); });
}

// --- The table and the list ---

int AppWorld::rowOf(const std::string& name) {
    table().filesModel().update();
    const auto& shown = table().filesModel().files();
    const auto found = std::ranges::find(shown, name, [](const auto& file) { return file->name(); });
    return found == shown.end() ? -1 : static_cast<int>(found - shown.begin());
}

void AppWorld::clickRow(const std::string& name, Part part) {
    const int row = rowOf(name);
    if (row < 0)
        throw std::logic_error("no row " + name);
    const RowLayout layout = table().rowLayout(row);
    realInput::click(*table().viewport(),
                     (part == Part::Elsewhere ? layout.name : layout.rectOf(part)).center());
}

void AppWorld::clickGroup(const std::string& name) {
    const auto row = groups().rowOf(groups().groupForName(name));
    const QModelIndex index = groupList().model()->index(static_cast<int>(row.value()), 0);
    realInput::click(*groupList().viewport(), groupList().visualRect(index).center());
}

// --- Menus and dialogs ---

bool AppWorld::chooseInPopup(const QString& title) {
    QMenu* menu = nullptr;
    QAction* chosen = nullptr;
    const bool isThere = eventually([&] {
        menu = openMenu();
        for (QAction* const action : menu ? menu->actions() : QList<QAction*>())
            if (plain(action->text()) == title && action->isEnabled() && action->isVisible())
                chosen = action;
        return chosen != nullptr;
    });
    if (isThere)
        realInput::click(*menu, menu->actionGeometry(chosen).center());
    return isThere;
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

QWidget* AppWorld::openDialog(const QString& title) const {
    for (QWidget* const widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->isWindow() && widget->inherits("QDialog") &&
            (widget->windowTitle() == title || widget->accessibleName() == title))
            return widget;
    return nullptr;
}

void AppWorld::when(const QString& what, std::function<bool()> condition, std::function<void()> steps) {
    m_expected.push_back(what);
    auto* const look = new QTimer(m_app.get());
    QObject::connect(look, &QTimer::timeout, m_app.get(),
                     [this, look, what, condition = std::move(condition), steps = std::move(steps)] {
                         if (!condition())
                             return;
                         look->stop();
                         look->deleteLater();
                         steps();
                         m_expected.erase(std::ranges::find(m_expected, what));
                     });
    look->start(std::chrono::milliseconds(5));
}

void AppWorld::whenOpen(const QString& title, std::function<void(QWidget&)> steps) {
    when(
        title, [this, title] { return openDialog(title) != nullptr; },
        [this, title, steps = std::move(steps)] {
            QWidget& dialog = *openDialog(title);
            EXPECT_TRUE(showAndActivate(dialog)) << title.toStdString();
            settle();
            steps(dialog);
        });
}

void AppWorld::answer(const QString& title, const QString& button) {
    whenOpen(title, [title, button](QWidget& dialog) {
        if (clickButton(dialog, button))
            return;
        ADD_FAILURE() << title.toStdString() << " has no button " << button.toStdString();
        dialog.close();
    });
}

bool AppWorld::areAllAnswered() {
    return eventually([this] { return m_expected.empty(); }, std::chrono::seconds(20));
}

bool AppWorld::clickButton(QWidget& dialog, const QString& text) {
    for (QAbstractButton* const button : dialog.findChildren<QAbstractButton*>())
        if (isSeen(*button) && textOf(*button) == text) {
            realInput::click(*button);
            return true;
        }
    return false;
}

bool AppWorld::says(const QWidget& dialog, const QString& text) {
    return std::ranges::any_of(dialog.findChildren<QLabel*>(), [&](const QLabel* label) {
        return label->isVisible() && label->text().contains(text);
    });
}

} // namespace veilkeep::test
