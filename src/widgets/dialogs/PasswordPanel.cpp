#include "widgets/dialogs/PasswordPanel.h"

#include "prefs/PasswordManager.h"
#include "prefs/PasswordPrompt.h"
#include "widgets/dialogs/CapsLock.h"
#include "widgets/dialogs/IconView.h"
#include "widgets/dialogs/WindowShake.h"

#include <QAccessible>
#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int usualWidth = 420, margin = 12, iconExtent = 48;
constexpr int growth = PasswordPrompt::heightWithWarning - PasswordPrompt::compactHeight;

QLabel* plainLabel(const QString& text = {}) {
    auto* const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

PasswordPanel::PasswordPanel(const QString& title, const QString& line)
    : m_content(new QWidget(this)),
      m_passwordField(makeField(line)),
      m_warning(makeWarning()),
      m_buttons(makeButtons()),
      m_shake(new WindowShake(*this, *m_content)) {
    setWindowTitle(title);
    setWindowModality(Qt::ApplicationModal);
    setAccessibleName(line);
    auto* const lableField = plainLabel(line);
    lableField->setBuddy(m_passwordField);
    layOut(lableField);
    m_ok->setDefault(true);
    m_warning->hide();
    fit();
}

QLineEdit* PasswordPanel::makeField(const QString& line) {
    auto* const field = new QLineEdit;
    field->setEchoMode(QLineEdit::Password);
    field->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText |
                               Qt::ImhNoAutoUppercase);
    field->setAccessibleName(line);
    field->installEventFilter(this);
    return field;
}

QWidget* PasswordPanel::makeWarning() {
    auto* const warning = new QWidget;
    auto* const row = new QHBoxLayout(warning);
    row->setContentsMargins({});
    row->setSpacing(fontMetrics().horizontalAdvance(u' '));
    m_wrongPasswordWorningField = plainLabel(tr("Wrong password:"));
    m_tryNumberField = plainLabel();
    m_tryNumberAppendixField = plainLabel(tr("of %1 attempts used").arg(PasswordManager::mostRetries + 1));
    for (QLabel* const field : {m_wrongPasswordWorningField, m_tryNumberField, m_tryNumberAppendixField})
        row->addWidget(field);
    row->addStretch(1);
    return warning;
}

QWidget* PasswordPanel::makeButtons() {
    auto* const buttons = new QWidget;
    auto* const row = new QHBoxLayout(buttons);
    row->setContentsMargins({});
    m_capsLock = plainLabel(tr("⇪ Caps Lock is on"));
    QSizePolicy kept = m_capsLock->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    m_capsLock->setSizePolicy(kept);
    m_capsLock->hide();
    auto* const box = new QDialogButtonBox;
    m_ok = box->addButton(tr("OK"), QDialogButtonBox::AcceptRole);
    connect(m_ok, &QPushButton::clicked, this, [this] { emit entered(m_passwordField->text()); });
    connect(box->addButton(tr("Cancel"), QDialogButtonBox::RejectRole), &QPushButton::clicked, this,
            &PasswordPanel::reject);
    row->addWidget(m_capsLock);
    row->addStretch(1);
    row->addWidget(box);
    return buttons;
}

// The content is moved as a whole when it shakes.
void PasswordPanel::layOut(QLabel* lableField) {
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(m_content);
    auto* const columns = new QHBoxLayout(m_content);
    columns->setContentsMargins(margin + 4, margin, margin + 4, margin);
    columns->setSpacing(margin + 2);
    columns->addWidget(new IconView(QApplication::windowIcon(), iconExtent), 0, Qt::AlignTop);
    auto* const rows = new QVBoxLayout;
    columns->addLayout(rows, 1);
    rows->setSpacing(0);
    rows->addWidget(lableField);
    rows->addSpacing(margin / 2);
    rows->addWidget(m_passwordField);
    rows->addStretch(1);
    rows->addWidget(m_warning);
    rows->addStretch(1);
    rows->addWidget(m_buttons);
    QWidget::setTabOrder(m_passwordField, m_buttons);
}

// What a larger font or longer texts need beyond the usual size is added to both heights; the top edge stays.
void PasswordPanel::fit() {
    const bool hasWarning = !m_warning->isHidden();
    m_warning->show();
    m_content->layout()->activate();
    const QSize needed = m_content->layout()->minimumSize();
    m_warning->setVisible(hasWarning);
    const int compact = std::max(PasswordPrompt::compactHeight, needed.height() - growth);
    setFixedSize(std::max(usualWidth, needed.width()), compact + (hasWarning ? growth : 0));
}

void PasswordPanel::showWrongEntries(int count) {
    m_tryNumberField->setText(QString::number(count));
    m_warning->show();
    fit();
    const QString warning = QStringList{m_wrongPasswordWorningField->text(), m_tryNumberField->text(),
                                        m_tryNumberAppendixField->text()}
                                .join(u' ');
    m_passwordField->setAccessibleDescription(warning);
    QAccessibleEvent alert(m_warning, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    m_passwordField->setFocus();
    m_passwordField->selectAll();
    m_shake->shake();
}

void PasswordPanel::finish() {
    m_shake->stop();
    done(Rejected);
}

void PasswordPanel::reject() {
    emit cancelled();
    if (isVisible())
        finish();
}

bool PasswordPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_passwordField && event->type() == QEvent::KeyPress)
        if (const auto isOn = capsLockAfter(static_cast<const QKeyEvent&>(*event)))
            setCapsLock(*isOn);
    return QDialog::eventFilter(watched, event);
}

void PasswordPanel::setCapsLock(bool isOn) {
    if (isOn == m_capsLock->isVisible())
        return;
    m_capsLock->setVisible(isOn);
    QAccessibleEvent alert(m_capsLock, QAccessible::Alert);
    if (isOn)
        QAccessible::updateAccessibility(&alert);
}

void PasswordPanel::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (event->spontaneous())
        return;
    activateWindow();
    raise();
    m_passwordField->setFocus();
}

void PasswordPanel::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (layout() && (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange))
        fit();
}

} // namespace veilkeep
