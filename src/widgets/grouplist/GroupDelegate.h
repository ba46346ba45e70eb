#pragma once

#include "widgets/grouplist/GroupsModel.h"

#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

#include <map>
#include <string>

namespace veilkeep {

// Draws the rows of the group list: icon with badges, name, and below it state and number of items. The row
// under the mouse and the focused one have a button that edits. Main thread.
class GroupDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    GroupDelegate(const GroupViewController& groups, const GroupsModel& model, QObject* parent = nullptr);

    bool isEditingOffered() const { return m_isEditingOffered; }
    void setEditingOffered(bool isOffered) { m_isEditingOffered = isOffered; }
    bool canBeEdited(const QModelIndex& index) const;
    static QRect editButtonRect(const QRect& row, Qt::LayoutDirection direction);

    void setMarkedRow(const QModelIndex& index) { m_marked = index; } // outlined: its menu is open

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintHeader(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintTexts(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    QPixmap icon(const QModelIndex& index, qreal devicePixelRatio) const;
    bool showsEditButton(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    const GroupViewController& m_groups;
    const GroupsModel& m_model;
    bool m_isEditingOffered = false;
    QPersistentModelIndex m_marked;
    mutable std::map<std::string, QPixmap> m_icons; // by what they are made of
};

} // namespace veilkeep
