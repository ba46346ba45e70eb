#pragma once

#include "widgets/grouplist/GroupsModel.h"

#include <QLineEdit>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QStyledItemDelegate>

#include <map>
#include <string>

class QKeyEvent;

namespace veilkeep {

// Draws the rows of the group list: icon with badges, name, and below it state and number of items. The row
// under the mouse and the focused one have a button that edits. A name is edited in its place: Return and
// leaving the field rename the group, Escape does not; a name that is refused stays to be put right. Main
// thread.
class GroupDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    GroupDelegate(GroupViewController& groups, const GroupsModel& model, QObject* parent = nullptr);

    bool isEditingOffered() const { return m_isEditingOffered; }
    void setEditingOffered(bool isOffered) { m_isEditingOffered = isOffered; }
    bool canBeEdited(const QModelIndex& index) const;
    static QRect editButtonRect(const QRect& row, Qt::LayoutDirection direction);

    void setMarkedRow(const QModelIndex& index) { m_marked = index; } // outlined: its menu is open

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    // --- Names in their places (GroupNameEditing.cpp) ---
    bool isNameRefused() const { return m_nameField && m_isRefused; }
    void finishEditing(bool applies); // false: the name stays as it was
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool handleKey(QLineEdit& field, const QKeyEvent& event);
    void commit(QLineEdit& field);
    static QRect nameRect(const QStyleOptionViewItem& option, bool hasEditButton);
    void paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintHeader(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintTexts(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    QPixmap icon(const QModelIndex& index, qreal devicePixelRatio) const;
    bool showsEditButton(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    GroupViewController& m_groups;
    const GroupsModel& m_model;
    bool m_isEditingOffered = false;
    QPersistentModelIndex m_marked;
    mutable QPointer<QLineEdit> m_nameField;        // while a name is edited
    mutable ListedGroup m_named;                    // its group
    mutable bool m_isRefused = false;               // what was committed last
    bool m_isCommitting = false;                    // by the user
    mutable std::map<std::string, QPixmap> m_icons; // by what they are made of
};

} // namespace veilkeep
