#pragma once

#include <QString>

namespace veilkeep {

enum class PrefsPage { None, General, Update, Security, SetPassword, ChangePassword, AskPassword };

enum class PrefsBox {
    LoginItemCheckBox,
    ShowInDockBox,
    ShowInMenuBarBox,
    InstallFinderPluginBox,
    AllowPrivilidgedFilesBox,
    PlaySoundsBox,
    AskBeforeRemovingBox,
    CleanRecentItemsBox,
    RequirePasswordBox,
    HideOnSleepBox,
    HideOnLockBox,
    HideOnSessionSwitchBox,
    HideOnQuitBox,
};

enum class PrefsField {
    SetPasswordSecureField,
    SetConfirfmSecureField,
    ChangeOldPasswordSecureField,
    ChangeNewPasswordSecureField,
    ChangeConfirmSecureField,
    EnterPasswordSecureField,
};

enum class PrefsText {
    WarningAboutRestartText,
    SetDoesntMutchText,
    SetBlankPasswordText,
    ChangeDoesntMutchText,
    WrongOldPasswordText,
    EnterWrongPasswordText,
    EnterTryNumberText,
    EnterTryNumberAppendixText,
    CurrentVersionText,
    LastCheckDateText,
};

// The preferences window, as PrefsController sees it. What the user does there goes to the controller, which
// decides what comes of it. Main thread.
class PrefsView {
public:
    virtual ~PrefsView() = default;

    // --- The toolbar ---
    virtual void installToolbar(const QString& selectedItemIdentifier) = 0; // a fresh one
    virtual QString selectedItemIdentifier() const = 0;
    virtual void selectItem(const QString& itemIdentifier) = 0;

    // --- Pages ---
    virtual PrefsPage page() const = 0; // None: none was shown yet
    virtual void showPage(PrefsPage page) = 0;
    virtual void setTitle(const QString& title) = 0;
    virtual void betterCenter() = 0;

    // --- What is on them ---
    virtual bool isOn(PrefsBox box) const = 0;
    virtual void setOn(PrefsBox box, bool isOn) = 0;
    virtual void setEnabled(PrefsBox box, bool isEnabled) = 0;
    virtual QString stringValue(PrefsField field) const = 0;
    virtual void setStringValue(PrefsField field, const QString& text) = 0;
    virtual void makeFirstResponder(PrefsField field) = 0;
    virtual void setStringValue(PrefsText text, const QString& value) = 0;
    virtual void setHidden(PrefsText text, bool isHidden) = 0;

    virtual void showTrouble(const QString& trouble) = 0; // beside whatever page; empty: none

protected:
    PrefsView() = default;
    PrefsView(const PrefsView&) = default;
    PrefsView& operator=(const PrefsView&) = default;
};

} // namespace veilkeep
