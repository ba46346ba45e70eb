#include "widgets/mainwindow/MainToolBar.h"

#include "widgets/controls/RowControls.h"
#include "widgets/images/ProgramImages.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOption>
#include <QStylePainter>
#include <QToolButton>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int controlHeight = 32;
constexpr int searchWidth = 230, leastSearchWidth = 120;
constexpr int padding = 12; // beside a button's text
constexpr int gap = 6, markGap = 4;

// A tool button that looks like a push button.
class FramedButton : public QToolButton {
public:
    using QToolButton::QToolButton;

    QSize sizeHint() const override {
        const int icon = toolButtonStyle() == Qt::ToolButtonTextOnly ? 0 : iconSize().width() + markGap;
        return {fontMetrics().horizontalAdvance(text()) + icon + 2 * padding,
                std::max(controlHeight, fontMetrics().height() + 12)};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent*) override {
        QStylePainter painter(this);
        QStyleOptionButton button;
        button.initFrom(this);
        button.state |= isDown() ? QStyle::State_Sunken : QStyle::State_Raised;
        painter.drawControl(QStyle::CE_PushButtonBevel, button);
        drawLabel(painter);
        if (!hasFocus())
            return;
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect.adjust(3, 3, -3, -3);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }

private:
    // Styles leave no room beside the text of a button with an icon from right to left.
    void drawLabel(QStylePainter& painter) const {
        QRect place = rect();
        if (toolButtonStyle() != Qt::ToolButtonTextOnly) {
            const QRect mark(QPoint(padding, (height() - iconSize().height()) / 2), iconSize());
            icon().paint(&painter, QStyle::visualRect(layoutDirection(), rect(), mark), Qt::AlignCenter,
                         isEnabled() ? QIcon::Normal : QIcon::Disabled);
            place.adjust(mark.right() + 1 + markGap, 0, -padding, 0);
        }
        painter.drawItemText(QStyle::visualRect(layoutDirection(), rect(), place),
                             Qt::AlignCenter | Qt::TextSingleLine, palette(), isEnabled(), text(),
                             QPalette::ButtonText);
    }
};

} // namespace

MainToolBar::MainToolBar(CommandActions& actions, QWidget* parent) : QWidget(parent), m_actions(actions) {
    setAccessibleName(tr("Toolbar"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(gap, gap, gap, gap);
    row->setSpacing(gap);
    addButton(*row, Command::AddFiles, QStringLiteral("add"));
    addButton(*row, Command::RemoveFiles, QStringLiteral("remove"));
    addButton(*row, Command::Password, QStringLiteral("key"));
    row->addStretch(1);
    m_searchField = makeSearchField();
    row->addWidget(m_searchField, 1000); // as wide as it may be, before there are gaps
    addButton(*row, Command::ToggleInfo, {});
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&m_actions, &CommandActions::validated, this, &MainToolBar::nameButtons);
    nameButtons();
}

void MainToolBar::addButton(QBoxLayout& row, Command command, const QString& image) {
    QAction* const action = m_actions.action(command);
    if (!action)
        return;
    auto* const button = new FramedButton(this);
    button->setIconSize({16, 16});
    button->setToolButtonStyle(image.isEmpty() ? Qt::ToolButtonTextOnly : Qt::ToolButtonTextBesideIcon);
    if (!image.isEmpty())
        action->setIcon(programImage::symbol(image));
    button->setDefaultAction(action);
    button->setFocusPolicy(Qt::TabFocus);
    row.addWidget(button);
}

QLineEdit* MainToolBar::makeSearchField() {
    auto* const field = new QLineEdit(this);
    field->setPlaceholderText(tr("Search"));
    field->setAccessibleName(tr("Search"));
    auto* const clear =
        field->addAction(programImage::symbol(QStringLiteral("clear")), QLineEdit::TrailingPosition);
    clear->setText(tr("Clear Search"));
    clear->setVisible(false);
    connect(clear, &QAction::triggered, field, &QLineEdit::clear);
    connect(field, &QLineEdit::textChanged, clear,
            [clear](const QString& text) { clear->setVisible(!text.isEmpty()); });
    field->addAction(programImage::symbol(QStringLiteral("search")), QLineEdit::LeadingPosition)
        ->setText(tr("Search"));
    field->setMinimumWidth(leastSearchWidth);
    field->setMaximumWidth(searchWidth);
    field->setMinimumHeight(controlHeight);
    field->installEventFilter(this);
    return field;
}

// Labels may begin with a blank, which nobody wants to hear.
void MainToolBar::nameButtons() {
    for (QToolButton* const button : findChildren<QToolButton*>())
        if (const QAction* const action = button->defaultAction())
            button->setAccessibleName(action->iconText().trimmed());
}

void MainToolBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    fillSeparator(painter, rect(), Qt::BottomEdge, separatorColor(palette()));
}

bool MainToolBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_searchField || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
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
