#pragma once

#include "core/storage/UserDefaults.h"
#include "platform/LoginItem.h"
#include "prefs/LSUIElementManipulation.h"
#include "prefs/PasswordManager.h"
#include "prefs/PrefsView.h"
#include "prefs/SettingBoxes.h"

#include <QObject>
#include <QString>

#include <functional>
#include <initializer_list>
#include <optional>
#include <vector>

namespace veilkeep {

// What the preferences work with. Nothing of it is owned; what is missing cannot be changed there.
struct PrefsParts {
    UserDefaults& defaults;
    LSUIElementManipulation& dockIcon;
    LoginItem* loginItem = nullptr;
    std::function<bool()> finderPluginInstalled = {};
    std::function<void(bool isWished)> setFinderPluginInstalled = {}; // tells of failures itself
    std::function<void()> requestRelaunch = {};
    std::function<void()> checkForUpdates = {};
};

// Who shows the icon in the panel. An empty function is not asked.
struct PrefsDelegate {
    std::function<void()> setStatusBarItem = {};
    std::function<void()> removeStatusBarItem = {};
};

// A page in the toolbar, or with an identifier alone one that is not in there.
struct PrefsItem {
    QString itemIdentifier;
    QString label = {};
    QString image = {};
};

// The settings that users change, and the password. The window that shows them comes when it is first asked
// for; without one it answers, and shows nothing. Owned by the application; main thread.
class PrefsController : public QObject {
    Q_OBJECT

public:
    explicit PrefsController(PrefsParts parts) : m_parts(std::move(parts)), m_boxes(m_parts.defaults) {}

    static std::vector<PrefsItem> toolbarItems(); // in their order
    static std::optional<PrefsItem> itemForItemIdentifier(const QString& itemIdentifier);

    const PrefsDelegate& delegate() const { return m_delegate; }
    void setDelegate(PrefsDelegate delegate) { m_delegate = std::move(delegate); }
    void setPasswordManager(PasswordManager* passwordManager) { m_passwordManager = passwordManager; }

    // --- The window and its pages ---
    void setView(PrefsView* view) { m_view = view; } // not owned; null for none
    void awakeFromNib();
    void windowDidLoad();
    void windowWillAppear(); // the boxes say what holds now
    void windowWillClose();  // writes the user defaults, forgets what was entered
    void setSelectedTab(const QString& identifier);
    void makeActiveTabWithIdentifier(const QString& identifier); // of an item of the toolbar, else nothing
    void setPrefView(const std::optional<PrefsItem>& item);

    // --- Settings ---
    bool passwordProtected() const;
    bool dockIconIsHidden() const { return m_parts.dockIcon.shouldBeUIElement(); }
    void setDockIconIsHidden(bool hidden);
    bool shouldLaunchAtLogin() const;
    void setShouldLaunchAtLogin(bool launches);
    bool finderPluginInstalled() const;
    void setFinderPluginInstalled(bool isWished);
    bool needToCreateAutoHideExample(); // true once for each user, who gets an example of an AutoHide group
    bool showsMenuIcon(); // stored as true where it has no value; without an entry in the taskbar, always

    // --- What the user does in the window ---
    void boxClick(PrefsBox box); // it shows its new state
    void showIconInMenuBarClick();
    void checkNowClick();
    void requirePasswordClick();
    void changePasswordClick();
    void setPasswordOkClick();
    void setPasswordCancelClick();
    void changePasswordOkClick();
    void enterPasswordOkClick();
    void passwordCancelClick();

    void lastCheckChanged(); // the Update page says it

signals:
    void passwordProtectedChanged(bool isProtected);
    void PasswordChanged();

private:
    void showPage(const char* identifier);
    void forgetEntries();
    void showBoxes();
    void settingClick(PrefsBox box);
    bool isIconNeeded() const { return dockIconIsHidden() || m_parts.dockIcon.willBeUIElement(); }
    void tell(const QString& what, const Error& error);
    static bool isKept(const Result<void>& stored); // that a power cut may undo it is for the log alone
    bool store(std::initializer_list<const char*> keys);

    void askForNewPassword();
    void askForPassword();
    void setPasswordProtectedInternal(bool isProtected);
    void tell(PrefsText text, PrefsField field);
    void empty(std::initializer_list<PrefsField> fields);
    void hide(std::initializer_list<PrefsText> texts);

    const PrefsParts m_parts;
    SettingBoxes m_boxes;
    PrefsDelegate m_delegate;
    PasswordManager* m_passwordManager = nullptr;
    PrefsView* m_view = nullptr;
    int m_tryCount = 0; // wrong entries on the page that asks for the password
};

} // namespace veilkeep
