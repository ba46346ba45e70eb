#pragma once

#include "widgets/preferences/PrefsControls.h"

#include <QWidget>

class QGridLayout;
class QPushButton;

namespace veilkeep {

class NoticeLine;
class SecretField;

// A page on which a password is entered: fields, a line for what is wrong with them, OK and Cancel. Main
// thread.
class PasswordPage : public QWidget {
    Q_OBJECT

public:
    QPushButton& okButton() const { return *m_ok; } // Return stands for it

    static PasswordPage* makeSetPasswordView(PrefsControls& controls);
    static PasswordPage* makeChangePasswordView(PrefsControls& controls);
    static PasswordPage* makeEnterPasswordView(PrefsControls& controls);

signals:
    void okClicked();
    void cancelClicked();

private:
    PasswordPage(PrefsControls& controls, const QString& heading);
    void addField(PrefsField field, const QString& label, bool isNew);
    void addError(PrefsText text, const QString& error); // all at the same place
    void addRow(QWidget* content);
    void finish();

    PrefsControls& m_controls;
    QGridLayout* m_grid;
    QWidget* m_errors;
    NoticeLine* m_capsLock;
    NoticeLine* m_notAscii = nullptr;
    QPushButton* m_ok = nullptr;
};

} // namespace veilkeep
