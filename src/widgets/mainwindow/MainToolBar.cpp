#include "widgets/mainwindow/MainToolBar.h"

#include "widgets/images/ProgramImages.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

namespace veilkeep {
namespace {

constexpr int buttonHeight = 32;
constexpr int searchWidth = 230;

} // namespace

MainToolBar::MainToolBar(CommandActions& actions, QWidget* parent) : QToolBar(parent), m_actions(actions) {
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setIconSize({16, 16});
    setContentsMargins(8, 6, 8, 6);
    setWindowTitle(tr("Toolbar"));
    addButton(Command::AddFiles, QStringLiteral("add"));
    addButton(Command::RemoveFiles, QStringLiteral("remove"));
    addButton(Command::Password, QStringLiteral("key"));
    addGap();
    addSearchField();
    addButton(Command::ToggleInfo, {});
    connect(&m_actions, &CommandActions::validated, this, &MainToolBar::nameButtons);
    nameButtons();
}

void MainToolBar::addButton(Command command, const QString& image) {
    QAction* const action = m_actions.action(command);
    if (!action)
        return;
    auto* const button = new QToolButton(this);
    if (image.isEmpty())
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    else
        action->setIcon(programImage::symbol(image));
    button->setDefaultAction(action);
    button->setMinimumHeight(buttonHeight);
    button->setFocusPolicy(Qt::TabFocus);
    addWidget(button);
}

void MainToolBar::addGap() {
    auto* const gap = new QWidget(this);
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(gap);
}

void MainToolBar::addSearchField() {
    m_searchField = new QLineEdit(this);
    m_searchField->setPlaceholderText(tr("Search"));
    m_searchField->setAccessibleName(tr("Search"));
    m_searchField->setClearButtonEnabled(true);
    m_searchField->addAction(programImage::symbol(QStringLiteral("search")), QLineEdit::LeadingPosition);
    m_searchField->setFixedWidth(searchWidth);
    m_searchField->setMinimumHeight(buttonHeight);
    m_searchField->installEventFilter(this);
    addWidget(m_searchField);
}

// Labels may begin with a blank, which nobody wants to hear.
void MainToolBar::nameButtons() {
    for (QToolButton* const button : findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (const QAction* const action = button->defaultAction())
            button->setAccessibleName(action->iconText().trimmed());
    }
}

bool MainToolBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_searchField || event->type() != QEvent::KeyPress)
        return QToolBar::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
        if (m_searchField->text().isEmpty())
            emit leaveSearch();
        else
            m_searchField->clear();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit leaveSearch();
        return true;
    default:
        return false;
    }
}

} // namespace veilkeep
