#pragma once

#include "groups/GroupViewController.h"

#include <QListView>
#include <QMenu>
#include <QPersistentModelIndex>
#include <QPointer>

namespace veilkeep {

class GroupDelegate;
class GroupsModel;

// The list of groups. Its selected row is the current group; rows are dragged to another place, or moved with
// Alt and an arrow, and items and files dropped onto them. What belongs to editing a group is there only
// while that is offered. Main thread.
class GroupsView : public QListView {
    Q_OBJECT
    Q_PROPERTY(bool editingOffered READ isEditingOffered WRITE setEditingOffered)

public:
    GroupsView(GroupViewController& groups, FilesViewController& files, QWidget* parent = nullptr);

    bool isEditingOffered() const;
    void setEditingOffered(bool isOffered);

signals:
    void rightKeyPressed(); // the focus is to go to the files table

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

    // --- GroupsViewDragging.cpp ---
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override; // with the place of the drop

private:
    enum class Key { None, Remove, Hide, Show, Edit, ToFiles, MoveUp, MoveDown };

    Key keyOf(const QKeyEvent& event) const;
    void moveCurrentGroup(std::ptrdiff_t rows);
    void followCurrentGroup();
    void currentRowChanged(const QModelIndex& current);
    QModelIndex editButtonAt(const QPoint& place) const;
    void editName(const QModelIndex& index);
    void openMenu(const QModelIndex& index, const QPoint& onScreen);

    std::ptrdiff_t dropRow(const QPoint& place) const;
    DropAnswer answerTo(const QDropEvent& event) const;
    bool takeAction(QDropEvent& event, const DropAnswer& answer) const;
    void showDropPlace(const DropAnswer& answer);
    void endDropping();
    QRect dropPlaceRect() const;

    GroupViewController& m_groups;
    GroupsModel* m_model;
    GroupDelegate* m_delegate;
    QPointer<QMenu> m_menu; // the last one
    QPersistentModelIndex m_pressedEdit;
    GroupDrag m_drag; // what is over the list
    DropAnswer m_dropPlace;
};

} // namespace veilkeep
