#include "widgets/grouplist/GroupsView.h"

#include "widgets/controls/FocusAfterMenu.h"
#include "widgets/grouplist/GroupDelegate.h"
#include "widgets/grouplist/GroupsModel.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

#include <utility>

namespace veilkeep {
namespace {

QString withoutMnemonics(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

GroupsView::GroupsView(GroupViewController& groups, FilesViewController& files, QWidget* parent)
    : QListView(parent),
      m_groups(groups),
      m_model(new GroupsModel(groups, files.files(), this)),
      m_delegate(new GroupDelegate(groups, *m_model, this)) {
    setAccessibleName(tr("Groups"));
    setModel(m_model);
    setItemDelegate(m_delegate);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setDragDropMode(DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    viewport()->setBackgroundRole(QPalette::Window);
    viewport()->setAttribute(Qt::WA_Hover);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &GroupsView::currentRowChanged);
    connect(&groups, &GroupViewController::currentGroupChanged, this, &GroupsView::followCurrentGroup);
    connect(&groups, &GroupViewController::groupsChanged, this, &GroupsView::followCurrentGroup);
    connect(&groups, &GroupViewController::editGroupRequested, this,
            [this] { m_delegate->finishEditing(true); });
    followCurrentGroup();
}

bool GroupsView::isEditingOffered() const {
    return m_delegate->isEditingOffered();
}

void GroupsView::setEditingOffered(bool isOffered) {
    m_delegate->setEditingOffered(isOffered);
    viewport()->update();
}

// --- The selection ---

void GroupsView::followCurrentGroup() {
    const QModelIndex current = m_model->indexOf(m_groups.currentGroup());
    selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect);
}

// Not where rows that went away have moved the selection: the controller has chosen already.
void GroupsView::currentRowChanged(const QModelIndex& current) {
    if (!m_model->isUpdating() && current.isValid())
        m_groups.selectRow(current.row());
}

QItemSelectionModel::SelectionFlags GroupsView::selectionCommand(const QModelIndex& index,
                                                                 const QEvent*) const {
    return m_groups.shouldSelectRow(index.row()) ? QItemSelectionModel::ClearAndSelect
                                                 : QItemSelectionModel::NoUpdate;
}

// --- Keys ---

GroupsView::Key GroupsView::keyOf(const QKeyEvent& event) const {
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const bool isControl = modifiers == Qt::ControlModifier;
    const int toFiles = isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    if (isControl && event.key() == Qt::Key_Right)
        return Key::Hide;
    if (isControl && event.key() == Qt::Key_Left)
        return Key::Show;
    if (modifiers == Qt::AltModifier && event.key() == Qt::Key_Up)
        return Key::MoveUp;
    if (modifiers == Qt::AltModifier && event.key() == Qt::Key_Down)
        return Key::MoveDown;
    if (modifiers != Qt::NoModifier)
        return Key::None;
    if (event.key() == toFiles)
        return Key::ToFiles;
    if (event.key() == Qt::Key_Delete)
        return Key::Remove;
    return event.key() == Qt::Key_F2 && m_delegate->canBeEdited(currentIndex()) ? Key::Edit : Key::None;
}

// The list's own keys come before shortcuts of the window.
bool GroupsView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && keyOf(*static_cast<QKeyEvent*>(event)) != Key::None) {
        event->accept();
        return true;
    }
    return QListView::event(event);
}

void GroupsView::keyPressEvent(QKeyEvent* event) {
    switch (keyOf(*event)) {
    case Key::Remove:
        return m_groups.removeSelectedRows();
    case Key::Hide:
        return m_groups.commandRightKeyPressed();
    case Key::Show:
        return m_groups.commandLeftKeyPressed();
    case Key::Edit:
        return editName(currentIndex());
    case Key::ToFiles:
        return emit rightKeyPressed();
    case Key::MoveUp:
        return moveCurrentGroup(-1);
    case Key::MoveDown:
        return moveCurrentGroup(1);
    case Key::None:
        return QListView::keyPressEvent(event);
    }
}

// The controller keeps those in their places that do not move.
void GroupsView::moveCurrentGroup(std::ptrdiff_t rows) {
    const ListedGroup group = m_groups.currentGroup();
    if (const auto row = m_groups.rowOf(group))
        m_groups.moveGroup(group, *row + static_cast<std::size_t>(rows));
}

// Not where the window or a menu only gives the focus back.
void GroupsView::focusInEvent(QFocusEvent* event) {
    QListView::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
        reason != Qt::MenuBarFocusReason)
        m_groups.groupTableBecomesFirstResponder();
}

// --- The mouse ---

QModelIndex GroupsView::editButtonAt(const QPoint& place) const {
    const QModelIndex index = indexAt(place);
    const bool isOnButton =
        GroupDelegate::editButtonRect(visualRect(index), layoutDirection()).contains(place);
    return isOnButton && m_delegate->canBeEdited(index) ? index : QModelIndex();
}

// The right button opens a menu for a row that need not be the selected one.
void GroupsView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return event->accept();
    m_pressedEdit = editButtonAt(event->position().toPoint());
    if (!m_pressedEdit.isValid())
        QListView::mousePressEvent(event);
}

void GroupsView::mouseMoveEvent(QMouseEvent* event) {
    if (!m_pressedEdit.isValid())
        QListView::mouseMoveEvent(event);
}

void GroupsView::mouseReleaseEvent(QMouseEvent* event) {
    const QModelIndex pressed = std::exchange(m_pressedEdit, {});
    if (!pressed.isValid())
        return QListView::mouseReleaseEvent(event);
    if (pressed == editButtonAt(event->position().toPoint()))
        m_groups.editGroup(m_model->group(pressed));
}

void GroupsView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPoint place = event->position().toPoint();
    if (event->button() == Qt::LeftButton && !editButtonAt(place).isValid())
        editName(indexAt(place));
}

void GroupsView::editName(const QModelIndex& index) {
    if (m_delegate->canBeEdited(index))
        edit(index);
}

// The user leaves.
void GroupsView::hideEvent(QHideEvent* event) {
    m_delegate->finishEditing(false);
    QListView::hideEvent(event);
}

// A name that was refused stays open, whichever row is selected meanwhile.
void GroupsView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    if (hint == QAbstractItemDelegate::RevertModelCache || !m_delegate->isNameRefused())
        QListView::closeEditor(editor, hint);
}

void GroupsView::contextMenuEvent(QContextMenuEvent* event) {
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = isByKey ? currentIndex() : indexAt(event->pos());
    if (!m_groups.shouldSelectRow(index.row()))
        return;
    const QPoint atRow = viewport()->mapToGlobal(visualRect(index).center());
    openMenu(index, isByKey ? atRow : event->globalPos());
}

void GroupsView::openMenu(const QModelIndex& index, const QPoint& onScreen) {
    const ListedGroup clicked = m_groups.clickedGroup(index.row());
    delete m_menu; // stays until now: what was chosen in it may turn the event loop
    m_menu = new QMenu(this);
    QMenu* const menu = m_menu;
    using Slot = void (GroupViewController::*)(const ListedGroup&);
    GroupViewController& groups = m_groups;
    const auto add = [&groups, &clicked, menu](int tag, const QString& title, Slot slot) {
        const GroupViewController::MenuItem item = groups.validateMenuItem(tag, clicked);
        QAction* const action = menu->addAction(withoutMnemonics(item.title.isNull() ? title : item.title));
        action->setData(tag);
        action->setEnabled(item.isEnabled);
        GroupViewController* const target = &groups;
        connect(action, &QAction::triggered, target,
                [target, group = clicked, slot] { (target->*slot)(group); });
    };
    add(GroupViewController::HideUnhide, {}, &GroupViewController::hideUnhideGroup);
    menu->addSeparator();
    if (isEditingOffered())
        add(GroupViewController::Edit, tr("Edit…"), &GroupViewController::editGroup);
    add(GroupViewController::Remove, tr("Remove"), &GroupViewController::removeClickedGroupAction);
    m_delegate->setMarkedRow(index);
    viewport()->update();
    connect(menu, &QMenu::aboutToHide, this, [this] {
        m_delegate->setMarkedRow({});
        viewport()->update();
    });
    tellFocusAfter(*menu);
    menu->popup(onScreen);
}

} // namespace veilkeep
