#include "widgets/preferences/PasswordPages.h"

#include "filelist/Texts.h"
#include "prefs/PasswordManager.h"
#include "widgets/controls/Mnemonics.h"
#include "widgets/preferences/NoticeLine.h"
#include "widgets/preferences/SecretField.h"
#include "widgets/preferences/SettingRows.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace veilkeep {
namespace {

constexpr int fieldWidth = 240, columnGap = 12, spacing = 10;

QLabel* plainLabel(const QString& text) {
    auto* const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

PasswordPage::PasswordPage(PrefsControls& controls, const QString& heading)
    : m_controls(controls),
      m_grid(new QGridLayout(this)),
      m_errors(new QWidget),
      m_capsLock(new NoticeLine(NoticeLine::Kind::Mind, tr("⇪ Caps Lock is on"))) {
    m_grid->setContentsMargins(pageMargin(), pageMargin() - 4, pageMargin(), pageMargin() - 4);
    m_grid->setHorizontalSpacing(columnGap);
    m_grid->setVerticalSpacing(spacing);
    m_grid->setColumnStretch(1, 1);
    QLabel* const title = plainLabel(heading);
    QFont bold = font();
    bold.setBold(true);
    title->setFont(bold);
    m_grid->addWidget(title, 0, 0, 1, 2);
    setAccessibleName(heading);
    auto* const errors = new QGridLayout(m_errors);
    errors->setContentsMargins({});
}

void PasswordPage::addField(PrefsField field, const QString& label, bool isNew) {
    auto* const edit = new SecretField;
    edit->setMinimumWidth(fieldWidth);
    m_controls.fields.emplace(field, edit);
    connect(edit, &SecretField::capsLockNoticed, m_capsLock, [this](bool isOn) {
        if (isOn && m_capsLock->isHidden())
            m_capsLock->tell();
        else if (!isOn)
            m_capsLock->hide();
    });
    if (isNew && !m_notAscii) {
        m_notAscii =
            new NoticeLine(NoticeLine::Kind::Mind, tr("Only plain letters, digits and signs protect."));
        connect(edit, &QLineEdit::textChanged, m_notAscii, [this](const QString& text) {
            if (PasswordManager::isAscii(text))
                m_notAscii->hide();
            else if (m_notAscii->isHidden())
                m_notAscii->tell();
        });
    }
    auto* const title = new QLabel(label);
    title->setBuddy(edit);
    edit->setAccessibleName(label.chopped(label.endsWith(u':') ? 1 : 0));
    const int row = m_grid->rowCount();
    m_grid->addWidget(title, row, 0, Qt::AlignTrailing | Qt::AlignVCenter);
    m_grid->addWidget(edit, row, 1);
}

void PasswordPage::addError(PrefsText text, const QString& error) {
    auto* const line = new NoticeLine(NoticeLine::Kind::Wrong, error);
    m_controls.texts.emplace(text, line);
    static_cast<QGridLayout*>(m_errors->layout())->addWidget(line, 0, 0);
}

void PasswordPage::addRow(QWidget* content) {
    m_grid->addWidget(content, m_grid->rowCount(), 1);
}

void PasswordPage::finish() {
    addRow(m_errors);
    auto* const hints = new QWidget;
    auto* const row = new QHBoxLayout(hints);
    row->setContentsMargins({});
    row->addWidget(m_capsLock);
    if (m_notAscii)
        row->addWidget(m_notAscii);
    row->addStretch(1);
    addRow(hints);
    auto* const box = new QDialogButtonBox;
    m_ok = box->addButton(tr("OK"), QDialogButtonBox::AcceptRole);
    connect(m_ok, &QPushButton::clicked, this, &PasswordPage::okClicked);
    connect(box->addButton(tr("Cancel"), QDialogButtonBox::RejectRole), &QPushButton::clicked, this,
            &PasswordPage::cancelClicked);
    m_grid->addWidget(box, m_grid->rowCount(), 0, 1, 2);
}

PasswordPage* PasswordPage::makeSetPasswordView(PrefsControls& controls) {
    auto* const page =
        new PasswordPage(controls, tr("Set the password that opens %1").arg(applicationName()));
    page->addField(PrefsField::SetPasswordSecureField, tr("Password:"), true);
    page->addField(PrefsField::SetConfirfmSecureField, tr("Once more:"), true);
    page->addError(PrefsText::SetDoesntMutchText, tr("The two entries differ."));
    page->addError(PrefsText::SetBlankPasswordText, tr("The password is empty."));
    page->finish();
    return page;
}

PasswordPage* PasswordPage::makeChangePasswordView(PrefsControls& controls) {
    auto* const page =
        new PasswordPage(controls, tr("Change the password that opens %1").arg(applicationName()));
    page->addField(PrefsField::ChangeOldPasswordSecureField, tr("Old password:"), false);
    page->addField(PrefsField::ChangeNewPasswordSecureField, tr("New password:"), true);
    page->addField(PrefsField::ChangeConfirmSecureField, tr("Once more:"), true);
    page->addError(PrefsText::WrongOldPasswordText, tr("The old password is wrong."));
    page->addError(PrefsText::ChangeDoesntMutchText, tr("The two new entries differ."));
    page->finish();
    return page;
}

PasswordPage* PasswordPage::makeEnterPasswordView(PrefsControls& controls) {
    auto* const page = new PasswordPage(controls, tr("Enter the password to switch it off"));
    page->addField(PrefsField::EnterPasswordSecureField, tr("Password:"), false);
    auto* const row = new QHBoxLayout;
    row->setSpacing(page->fontMetrics().horizontalAdvance(u' '));
    const auto add = [&](PrefsText text, const QString& words) {
        auto* const line = new NoticeLine(NoticeLine::Kind::Wrong, words);
        controls.texts.emplace(text, line);
        row->addWidget(line);
    };
    add(PrefsText::EnterWrongPasswordText, tr("Wrong password:"));
    add(PrefsText::EnterTryNumberText, {});
    add(PrefsText::EnterTryNumberAppendixText,
        tr("of %1 attempts used").arg(PasswordManager::mostRetries + 1));
    row->addStretch(1);
    static_cast<QGridLayout*>(page->m_errors->layout())->addLayout(row, 0, 0);
    page->finish();
    return page;
}

} // namespace veilkeep
