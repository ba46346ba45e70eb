#pragma once

#include "core/storage/DefaultsKeys.h"
#include "prefs/PrefsController.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/gui/RealInput.h"
#include "widgets/controls/MessageBar.h"
#include "widgets/preferences/PrefsWindow.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>

#include <optional>

namespace veilkeep::test {

class FakeLoginItem : public LoginItem {
public:
    bool shouldLaunchAtLogin() const override { return launches; }
    Result<void> setShouldLaunchAtLogin(bool wished) override {
        if (fails)
            return Error::system("open", "/autostart", EROFS);
        launches = wished;
        return {};
    }
    bool launches = false, fails = false;
};

// The window and the logic of the preferences over real user defaults, and a desktop that notes what it is
// asked for. Made anew it is the program's next start.
class PrefsWorld {
public:
    explicit PrefsWorld(const ScratchTree& tree,
                        const std::string& defaultsFile = OwnPlaces::current().defaultsFile)
        : defaults(defaultsFile), bundle(BundleInfo::ofBundle(tree.root())) {
        controller.setPasswordManager(&passwords);
        controller.setDelegate({[this] { asked += "icon "; }, [this] { asked += "no icon "; }});
        QObject::connect(&controller, &PrefsController::PasswordChanged, [this] { ++notifications; });
    }

    bool show() {
        if (!window)
            window.emplace(controller);
        return showAndActivate(*window);
    }

    // The one that can be seen and has that title; a failure where there is none.
    template <class Widget>
    Widget* find(const QString& title) {
        for (Widget* const widget : window->template findChildren<Widget*>())
            if (widget->isVisible() && (plain(widget->text()) == title || widget->accessibleName() == title))
                return widget;
        ADD_FAILURE() << "there is no " << title.toStdString();
        return nullptr;
    }
    void click(const QString& title) {
        if (auto* const button = find<QAbstractButton>(title))
            realInput::click(*button, QPoint(12, button->height() / 2));
    }

    QStringList lines() const { // of what is wrong
        QStringList shown;
        for (const QLabel* const label : window->findChildren<QLabel*>())
            if (label->isVisible() && label->inherits("veilkeep::NoticeLine"))
                shown << label->text();
        return shown;
    }
    QString trouble() const {
        const auto* const bar = window->findChild<MessageBar*>();
        return bar->isVisible() ? bar->text() : QString();
    }
    static std::optional<Value> stored(const char* key) { return UserDefaults().value(key); }
    static QString plain(QString text) { return text.remove(u'&'); }

    UserDefaults defaults;
    const BundleInfo bundle;
    LSUIElementManipulation dockIcon{defaults, bundle};
    FakeLoginItem loginItem;
    bool isPluginInstalled = false;
    QString asked; // what the desktop was asked for
    int notifications = 0;
    PasswordManager passwords{defaults};
    PrefsController controller{
        {.defaults = defaults,
         .dockIcon = dockIcon,
         .loginItem = &loginItem,
         .finderPluginInstalled = [this] { return isPluginInstalled; },
         .setFinderPluginInstalled = [this](bool) { isPluginInstalled = !isPluginInstalled; },
         .requestRelaunch = [this] { asked += "relaunch "; },
         .checkForUpdates = [this] { asked += "updates "; }}};
    std::optional<PrefsWindow> window;
};

} // namespace veilkeep::test
