#pragma once

#include "filelist/FileListActions.h"
#include "widgets/filetable/FilesTableDelegate.h"
#include "widgets/preview/Previews.h"

#include <QMenu>
#include <QPointer>
#include <QTableView>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace veilkeep {

class EmptyTableNotice;
class FilesTableModel;

// The items that the filter lets through, one row each, with the buttons of its row. Its selection and that
// of FilesController are the same. Main thread.
class FilesTableView : public QTableView {
    Q_OBJECT

public:
    FilesTableView(FilesViewController& files, FileListActions& actions, Previews& previews,
                   QWidget* parent = nullptr);
    ~FilesTableView() override;

    // Names the current group, for the menu. None: the group of all items.
    void setGroupName(std::function<QString()> groupName) { m_groupName = std::move(groupName); }

    FilesTableModel& filesModel() { return *m_model; }
    RowLayout rowLayout(int row) const; // in the viewport

signals:
    void leftKeyPressed();             // the focus is to go to the group list
    void quickLookRequested();         // space
    void chooseApplicationRequested(); // "Other…" of Open With
    void addRequested();               // of the button in an empty table
    void itemsDropped();               // and taken

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void paintEvent(QPaintEvent* event) override;

    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    using PartOfRow = FilesTableDelegate::PartOfRow;

    void lookLikeTable();
    void followModel();
    void keepPlace();
    void restorePlace();
    void chooseRowHeight();

    bool actOnKey(const QKeyEvent& event);
    bool selectFirst(QKeyCombination keys);
    void showContextMenu(int row, const QPoint& place);
    bool showToolTip(const QPoint& position, const QPoint& onScreen);
    PartOfRow partAt(const QPoint& position) const;
    bool isButton(const PartOfRow& part) const;
    void setHovered(const PartOfRow& part);
    void pressButton(const PartOfRow& part);
    void updateRow(int row);
    void act(const PartOfRow& part);

    bool takes(const QDropEvent& event) const;
    bool areShown(const std::vector<std::string>& rowPaths) const;
    void setDropTarget(bool isDropTarget);
    std::vector<std::size_t> selectedRows() const;
    QPixmap dragImage(const ListedFile& first, std::size_t count) const;

    FilesViewController& m_files;
    FileListActions& m_actions;
    FilesTableModel* m_model = nullptr;
    FilesTableDelegate* m_delegate = nullptr;
    EmptyTableNotice* m_notice = nullptr; // made for its first use
    QPointer<QMenu> m_menu;
    std::function<QString()> m_groupName;
    ListedFile m_keptFile; // while the rows change
    int m_keptOffset = 0;
    bool m_isDropTarget = false;
};

} // namespace veilkeep
