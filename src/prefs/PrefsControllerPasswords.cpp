#include "prefs/PrefsController.h"

#include "core/storage/DefaultsKeys.h"

namespace veilkeep {

// The box never changes by the click itself; what counts is what holds, which another program may have
// changed.
void PrefsController::requirePasswordClick() {
    const bool isProtected = passwordProtected();
    m_view->setOn(PrefsBox::RequirePasswordBox, isProtected);
    isProtected ? askForPassword() : askForNewPassword();
}

void PrefsController::askForPassword() {
    using enum PrefsText;
    empty({PrefsField::EnterPasswordSecureField});
    m_tryCount = 0;
    hide({EnterWrongPasswordText, EnterTryNumberText, EnterTryNumberAppendixText});
    showPage("ASK_PASSWORD");
    m_view->makeFirstResponder(PrefsField::EnterPasswordSecureField);
}

void PrefsController::askForNewPassword() {
    hide({PrefsText::SetDoesntMutchText, PrefsText::SetBlankPasswordText});
    empty({PrefsField::SetPasswordSecureField, PrefsField::SetConfirfmSecureField});
    showPage("SET_PASSWORD");
    m_view->makeFirstResponder(PrefsField::SetPasswordSecureField);
}

void PrefsController::changePasswordClick() {
    m_view->showTrouble({});
    const bool isProtected = passwordProtected();
    m_view->setOn(PrefsBox::RequirePasswordBox, isProtected);
    if (!isProtected)
        return askForNewPassword();
    using enum PrefsField;
    hide({PrefsText::ChangeDoesntMutchText, PrefsText::WrongOldPasswordText});
    empty({ChangeOldPasswordSecureField, ChangeNewPasswordSecureField, ChangeConfirmSecureField});
    showPage("CHANGE_PASSWORD");
    m_view->makeFirstResponder(ChangeOldPasswordSecureField);
}

// The switch and the digest are stored together: a switch alone would lock the user out.
void PrefsController::setPasswordOkClick() {
    const QString password = m_view->stringValue(PrefsField::SetPasswordSecureField);
    hide({PrefsText::SetDoesntMutchText, PrefsText::SetBlankPasswordText});
    if (password != m_view->stringValue(PrefsField::SetConfirfmSecureField))
        return tell(PrefsText::SetDoesntMutchText, PrefsField::SetPasswordSecureField);
    if (password.isEmpty())
        return tell(PrefsText::SetBlankPasswordText, PrefsField::SetPasswordSecureField);
    setPasswordProtectedInternal(true);
    if (const auto stored = m_passwordManager->setPassword(password); !isKept(stored)) {
        m_parts.defaults.discard(defaultsKey::passwordDigest);
        m_parts.defaults.discard(defaultsKey::passwordEnabled);
        emit passwordProtectedChanged(passwordProtected());
        emit PasswordChanged();
        tell(tr("The password could not be stored."), stored.error());
    }
    showPage("TOOLBAR_SECURITY");
}

void PrefsController::setPasswordCancelClick() {
    m_parts.defaults.set(defaultsKey::passwordEnabled, false);
    if (!store({defaultsKey::passwordEnabled}))
        m_view->setOn(PrefsBox::RequirePasswordBox, passwordProtected());
    showPage("TOOLBAR_SECURITY");
}

// An empty new password is accepted.
void PrefsController::changePasswordOkClick() {
    using enum PrefsField;
    hide({PrefsText::ChangeDoesntMutchText});
    if (!m_passwordManager->checkPassword(m_view->stringValue(ChangeOldPasswordSecureField)))
        return tell(PrefsText::WrongOldPasswordText, ChangeOldPasswordSecureField);
    m_view->setHidden(PrefsText::WrongOldPasswordText, true);
    const QString password = m_view->stringValue(ChangeNewPasswordSecureField);
    if (password != m_view->stringValue(ChangeConfirmSecureField))
        return tell(PrefsText::ChangeDoesntMutchText, ChangeNewPasswordSecureField);
    if (const auto stored = m_passwordManager->setPassword(password); !isKept(stored)) {
        m_parts.defaults.discard(defaultsKey::passwordDigest);
        tell(tr("The password could not be stored."), stored.error());
    }
    showPage("TOOLBAR_SECURITY");
}

// Three wrong entries are counted, the fourth ends it.
void PrefsController::enterPasswordOkClick() {
    constexpr int mostCounted = 2;
    const bool isRight =
        m_passwordManager->checkPassword(m_view->stringValue(PrefsField::EnterPasswordSecureField));
    if (!isRight && m_tryCount <= mostCounted) {
        using enum PrefsText;
        m_view->setStringValue(EnterTryNumberText, QString::number(++m_tryCount));
        for (const PrefsText text : {EnterWrongPasswordText, EnterTryNumberText, EnterTryNumberAppendixText})
            m_view->setHidden(text, false);
        return m_view->makeFirstResponder(PrefsField::EnterPasswordSecureField);
    }
    setPasswordProtectedInternal(!isRight);
    if (!store({defaultsKey::passwordEnabled})) {
        emit passwordProtectedChanged(passwordProtected());
        emit PasswordChanged();
    }
    showPage("TOOLBAR_SECURITY");
}

void PrefsController::passwordCancelClick() {
    showPage("TOOLBAR_SECURITY");
}

// Pending yet: whoever calls it stores it.
void PrefsController::setPasswordProtectedInternal(bool isProtected) {
    m_parts.defaults.set(defaultsKey::passwordEnabled, isProtected);
    emit passwordProtectedChanged(isProtected);
    emit PasswordChanged();
}

// What is wrong, and the field in which it is put right.
void PrefsController::tell(PrefsText text, PrefsField field) {
    m_view->setHidden(text, false);
    m_view->makeFirstResponder(field);
}

void PrefsController::empty(std::initializer_list<PrefsField> fields) {
    for (const PrefsField field : fields)
        m_view->setStringValue(field, QString());
}

void PrefsController::hide(std::initializer_list<PrefsText> texts) {
    for (const PrefsText text : texts)
        m_view->setHidden(text, true);
}

} // namespace veilkeep
