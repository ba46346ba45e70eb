#include "widgets/controls/FocusAfterMenu.h"
#include "widgets/filetable/FilesContextMenu.h"
#include "widgets/filetable/FilesTableModel.h"
#include "widgets/filetable/FilesTableView.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTextDocument>
#include <QToolTip>

#include <string>

namespace veilkeep {

void FilesTableView::keyPressEvent(QKeyEvent* event) {
    m_model->update();
    if (actOnKey(*event))
        event->accept();
    else
        QTableView::keyPressEvent(event);
}

bool FilesTableView::actOnKey(const QKeyEvent& event) {
    const Qt::Key towardsGroups = isRightToLeft() ? Qt::Key_Right : Qt::Key_Left;
    const QKeyCombination keys(event.modifiers() & ~Qt::KeypadModifier, static_cast<Qt::Key>(event.key()));
    if (keys == (Qt::ControlModifier | Qt::Key_Right)) {
        m_actions.hideSelected();
    } else if (keys == (Qt::ControlModifier | Qt::Key_Left)) {
        m_actions.unhideSelected();
    } else if (keys == QKeyCombination(towardsGroups)) {
        clearSelection();
        emit leftKeyPressed();
    } else if (keys == QKeyCombination(Qt::Key_Space)) {
        emit quickLookRequested();
    } else if (keys == QKeyCombination(Qt::Key_Return) || keys == QKeyCombination(Qt::Key_Enter)) {
        m_actions.openFileAction();
    } else if (keys == QKeyCombination(Qt::Key_Delete)) {
        m_files.removeFromListAction();
    } else {
        return selectFirst(keys);
    }
    return true;
}

// Where nothing is selected: a view alone would go on from the row on which it stands.
bool FilesTableView::selectFirst(QKeyCombination keys) {
    const bool isStep = keys == QKeyCombination(Qt::Key_Down) || keys == QKeyCombination(Qt::Key_Up);
    const bool isToEnd = keys == QKeyCombination(Qt::Key_End);
    if (selectionModel()->hasSelection() || (!isStep && !isToEnd && keys != QKeyCombination(Qt::Key_Home)))
        return false;
    const QModelIndex end = m_model->index(isToEnd ? m_model->rowCount() - 1 : 0, 0);
    setCurrentIndex(isStep && currentIndex().isValid() ? currentIndex() : end);
    return true;
}

FilesTableView::PartOfRow FilesTableView::partAt(const QPoint& position) const {
    const QModelIndex at = indexAt(position);
    return at.isValid() ? PartOfRow{at.row(), rowLayout(at.row()).partAt(position)} : PartOfRow();
}

bool FilesTableView::isButton(const PartOfRow& part) const {
    return part.row >= 0 && part.part != RowLayout::Part::Elsewhere;
}

void FilesTableView::updateRow(int row) {
    if (row >= 0 && row < m_model->rowCount())
        update(m_model->index(row, 0));
}

void FilesTableView::setHovered(const PartOfRow& part) {
    const PartOfRow before = m_delegate->hovered();
    if (before == part)
        return;
    m_delegate->setHovered(part);
    updateRow(before.row);
    updateRow(part.row);
}

void FilesTableView::pressButton(const PartOfRow& part) {
    const PartOfRow before = m_delegate->pressed();
    m_delegate->setPressed(part);
    setHovered(part);
    updateRow(before.row);
    updateRow(part.row);
}

// A button neither selects its row nor begins a drag.
void FilesTableView::mousePressEvent(QMouseEvent* event) {
    m_model->update();
    const PartOfRow part = partAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && isButton(part))
        pressButton(part);
    else
        QTableView::mousePressEvent(event);
}

void FilesTableView::mouseDoubleClickEvent(QMouseEvent* event) {
    m_model->update();
    const PartOfRow part = partAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton)
        return;
    if (isButton(part))
        pressButton(part);
    else if (part.row >= 0)
        m_actions.openFileAction();
}

void FilesTableView::mouseMoveEvent(QMouseEvent* event) {
    setHovered(partAt(event->position().toPoint()));
    if (!isButton(m_delegate->pressed()))
        QTableView::mouseMoveEvent(event);
}

void FilesTableView::mouseReleaseEvent(QMouseEvent* event) {
    const PartOfRow pressed = m_delegate->pressed();
    if (!isButton(pressed)) {
        QTableView::mouseReleaseEvent(event);
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    m_model->update();
    const bool isStillThere = m_delegate->pressed() == pressed;
    pressButton({});
    if (isStillThere && partAt(event->position().toPoint()) == pressed)
        act(pressed);
}

void FilesTableView::act(const PartOfRow& part) {
    const ListedFile file = m_model->fileAt(part.row);
    const std::string path(file->path());
    switch (part.part) {
    case RowLayout::Part::Switch:
        m_files.hideOrUnhideFileInTable(path);
        break;
    case RowLayout::Part::Reveal:
        if (FilesTableDelegate::mayBeRevealed(*file))
            m_files.revealFileInFinder(path);
        break;
    case RowLayout::Part::Elsewhere:
        break;
    }
}

void FilesTableView::contextMenuEvent(QContextMenuEvent* event) {
    m_model->update();
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    if (isByKey && currentIndex().isValid())
        scrollTo(currentIndex());
    const QModelIndex at = isByKey ? currentIndex() : indexAt(viewport()->mapFromGlobal(event->globalPos()));
    if (at.isValid())
        showContextMenu(at.row(),
                        isByKey ? visualRect(at).center() : viewport()->mapFromGlobal(event->globalPos()));
}

// The last menu stays until the next one: what was chosen in it may turn the event loop.
void FilesTableView::showContextMenu(int row, const QPoint& place) {
    delete m_menu;
    auto* const menu = new FilesContextMenu(m_files, m_actions, row,
                                            m_groupName ? m_groupName() : QStringLiteral("All Files"), this);
    m_menu = menu;
    connect(menu, &FilesContextMenu::quickLookRequested, this, &FilesTableView::quickLookRequested);
    connect(menu, &FilesContextMenu::chooseApplicationRequested, this,
            &FilesTableView::chooseApplicationRequested);
    tellFocusAfter(*menu);
    m_model->update();
    menu->popup(viewport()->mapToGlobal(place));
}

bool FilesTableView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave)
        setHovered({});
    if (event->type() != QEvent::ToolTip)
        return QTableView::viewportEvent(event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    return showToolTip(help.pos(), help.globalPos());
}

// Names are no rich text, whatever they look like.
bool FilesTableView::showToolTip(const QPoint& position, const QPoint& onScreen) {
    const PartOfRow part = partAt(position);
    if (part.row < 0) {
        QToolTip::hideText();
        return true;
    }
    QString tip = m_actions.toolTipFor(*m_model->fileAt(part.row), part.part);
    if (Qt::mightBeRichText(tip))
        tip = Qt::convertFromPlainText(tip, Qt::WhiteSpaceNormal);
    QToolTip::showText(onScreen, tip, viewport(), rowLayout(part.row).rectOf(part.part));
    return true;
}

// Home and End lead to the first and the last row: there is one column.
QModelIndex FilesTableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const bool isToAnEnd = action == MoveHome || action == MoveEnd;
    return QTableView::moveCursor(action, isToAnEnd ? modifiers | Qt::ControlModifier : modifiers);
}

} // namespace veilkeep
