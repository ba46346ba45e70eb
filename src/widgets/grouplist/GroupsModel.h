#pragma once

#include "groups/GroupViewController.h"

#include <QAbstractListModel>
#include <QTimer>

#include <cstddef>
#include <vector>

namespace veilkeep {

// The rows of the group list with the number of items in each, as it is. Tells which rows came, went, moved
// or changed. Main thread.
class GroupsModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { DetailRole = Qt::UserRole, IsHeaderRole };

    GroupsModel(GroupViewController& groups, const FileList& files, QObject* parent = nullptr);

    ListedGroup group(const QModelIndex& index) const; // null for no row
    ListedGroup groupWithIcon(const QModelIndex& index) const;
    QModelIndex indexOf(const ListedGroup& group) const;
    bool isUpdating() const { return m_isUpdating; } // the controller's rows are ahead of these

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Row {
        ListedGroup group;
        PropertyDictionary told; // as the views know them
        std::size_t count = 0;
        mutable bool isIconTried = false;
    };

    Row rowFor(const ListedGroup& group) const;
    bool has(const ListedGroup& group) const { return indexOf(group).isValid(); }
    std::size_t countOf(const Group& group) const;
    void update();
    void removeGone();
    void bring(int row);
    void insertAt(int row);
    void move(int from, int to); // where it lies in the end
    void tellChanges();
    bool noteChange(Row& row) const;

    GroupViewController& m_groups;
    const FileList& m_files;
    std::vector<Row> m_rows;
    QTimer m_recount; // once for many changes of items
    bool m_isUpdating = false;
};

} // namespace veilkeep
