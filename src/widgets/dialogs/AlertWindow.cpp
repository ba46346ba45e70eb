#include "widgets/dialogs/AlertWindow.h"

#include "filelist/Texts.h"
#include "widgets/controls/CheckBox.h"
#include "widgets/dialogs/ErrorTable.h"
#include "widgets/dialogs/IconView.h"
#include "widgets/dialogs/TextBlock.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int spacing = 12, iconExtent = 48;

QString withoutMnemonics(QString title) {
    return title.replace(u'&', QLatin1String("&&"));
}

} // namespace

AlertWindow::AlertWindow(const Alert& alert, QWidget* parent)
    : QDialog(parent), m_alert(alert), m_answer(alert.codeWhenCancelled()) {
    setWindowTitle(applicationName());
    setAccessibleName(alert.title);
    setAccessibleDescription(alert.message);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(20, 20, 20, 16);
    rows->setSpacing(16);
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(16);
    rows->addLayout(columns, 1);
    columns->addWidget(new IconView(styleIcon(), iconExtent), 0, Qt::AlignTop);
    auto* const column = new QVBoxLayout;
    column->setSpacing(spacing);
    columns->addLayout(column, 1);
    addTexts(*column);
    addAccessoryViews(*column);
    auto* const box = new QDialogButtonBox;
    rows->addWidget(box);
    addButtons(*box);
}

QIcon AlertWindow::styleIcon() const {
    switch (m_alert.style) {
    case Alert::Style::Warning:
        return style()->standardIcon(QStyle::SP_MessageBoxWarning);
    case Alert::Style::Informational:
        return style()->standardIcon(QStyle::SP_MessageBoxInformation);
    case Alert::Style::Critical:
        return style()->standardIcon(QStyle::SP_MessageBoxCritical);
    case Alert::Style::Plain:
        break;
    }
    return QApplication::windowIcon();
}

void AlertWindow::addTexts(QVBoxLayout& column) {
    constexpr int mostTitleLines = 8, mostMessageLines = 14;
    auto* const title = new TextBlock(m_alert.title, mostTitleLines);
    QFont bold = font();
    bold.setBold(true);
    title->setFont(bold);
    title->setAccessibleName(m_alert.title);
    column.addWidget(title);
    if (m_alert.message.isEmpty())
        return;
    auto* const message = new TextBlock(m_alert.message, mostMessageLines);
    message->setAccessibleName(m_alert.message);
    column.addWidget(message);
}

void AlertWindow::addAccessoryViews(QVBoxLayout& column) {
    if (!m_alert.errors.empty()) {
        m_errors = new ErrorTable(m_alert.errors);
        column.addWidget(m_errors, 1);
    }
    if (!m_alert.applications.isEmpty()) {
        constexpr qsizetype mostRows = 6;
        auto* const list = new QListWidget;
        list->setAccessibleName(tr("Applications"));
        list->addItems(m_alert.applications);
        const int rows = static_cast<int>(std::min(m_alert.applications.size(), mostRows));
        list->setFixedHeight(rows * list->sizeHintForRow(0) + 2 * list->frameWidth());
        column.addWidget(list);
    }
    if (m_alert.offersSuppression) {
        m_suppress = new CheckBox(tr("Do not ask again"));
        column.addWidget(m_suppress);
    }
    if (!m_errors)
        column.addStretch(1);
}

void AlertWindow::addButtons(QDialogButtonBox& box) {
    const std::size_t last = m_alert.buttons.size() - 1;
    for (std::size_t number = 0; number <= last; ++number) {
        const auto role = number == 0      ? QDialogButtonBox::AcceptRole
                          : number == last ? QDialogButtonBox::RejectRole
                                           : QDialogButtonBox::ActionRole;
        auto* const button = box.addButton(withoutMnemonics(m_alert.buttons[number].title), role);
        connect(button, &QPushButton::clicked, this, [this, number] {
            m_answer = m_alert.buttons[number].code;
            done(Accepted);
        });
        if (number > 0)
            continue;
        button->setDefault(true);
        button->setFocus();
    }
}

AlertAnswer AlertWindow::answer() const {
    return {m_answer, m_suppress && m_suppress->isChecked(), false};
}

void AlertWindow::reject() {
    m_answer = m_alert.codeWhenCancelled();
    QDialog::reject();
}

void AlertWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void AlertWindow::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Copy))
        return QDialog::keyPressEvent(event);
    const QString errors = m_errors ? m_errors->textToCopy() : QString();
    QGuiApplication::clipboard()->setText(QStringList{m_alert.title, m_alert.message, errors}.join(u'\n'));
}

} // namespace veilkeep
