#include "groups/EnteredName.h"
#include "widgets/grouplist/GroupDelegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int fieldMargin = 5; // around the text

bool isOfEditCommand(const QKeyEvent& event) {
    return event.modifiers() == Qt::ControlModifier && event.key() == Qt::Key_E;
}

// A menu of the field, or another window, takes the keyboard only for a while.
bool isLeft(const QFocusEvent& event) {
    return event.reason() != Qt::ActiveWindowFocusReason && event.reason() != Qt::PopupFocusReason &&
           event.reason() != Qt::MenuBarFocusReason;
}

} // namespace

QWidget* GroupDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                     const QModelIndex& index) const {
    if (!canBeEdited(index))
        return nullptr;
    auto* const field = new QLineEdit(parent);
    field->setAccessibleName(tr("Name of the group"));
    m_nameField = field;
    m_named = m_model.group(index);
    m_isRefused = false;
    return field;
}

// Not over what is typed, when something else of the group changes.
void GroupDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* const field = qobject_cast<QLineEdit*>(editor);
    const ListedGroup group = m_model.group(index);
    if (!field || !group || field->isModified())
        return;
    field->setText(EnteredName::editableName(*group));
    field->selectAll();
}

// The list commits by itself when another row is selected: what was refused is not told twice.
void GroupDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex&) const {
    const auto* const field = qobject_cast<QLineEdit*>(editor);
    if (!field || (m_isRefused && !m_isCommitting))
        return;
    m_isRefused = field->isModified() && !m_groups.renameInPlace(m_named, field->text());
}

void GroupDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex&) const {
    QRect place = nameRect(option, false).adjusted(-fieldMargin, 0, fieldMargin, 1); // clear of the detail
    place.setTop(std::max(option.rect.top(), place.bottom() + 1 - editor->sizeHint().height()));
    place.setHeight(editor->sizeHint().height());
    editor->setGeometry(place);
}

void GroupDelegate::finishEditing(bool applies) {
    if (!m_nameField)
        return;
    if (applies)
        return commit(*m_nameField);
    emit closeEditor(m_nameField, RevertModelCache);
}

// A name that was refused is still there to be changed, once the user has read why.
void GroupDelegate::commit(QLineEdit& field) {
    m_isCommitting = true;
    emit commitData(&field);
    m_isCommitting = false;
    if (!m_isRefused)
        return emit closeEditor(&field, NoHint);
    const auto goOn = [&field] {
        field.setFocus();
        field.selectAll();
    };
    QMetaObject::invokeMethod(&field, goOn, Qt::QueuedConnection);
}

bool GroupDelegate::handleKey(QLineEdit& field, const QKeyEvent& event) {
    if (isOfEditCommand(event)) {
        const QString typed = field.text();
        emit closeEditor(&field, RevertModelCache);
        m_groups.editCell(m_named, typed);
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        commit(field);
        return true;
    case Qt::Key_Escape:
        finishEditing(false);
        return true;
    default:
        return false;
    }
}

bool GroupDelegate::eventFilter(QObject* watched, QEvent* event) {
    auto* const field = qobject_cast<QLineEdit*>(watched);
    if (!field || field != m_nameField)
        return QStyledItemDelegate::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress:
        return handleKey(*field, static_cast<const QKeyEvent&>(*event));
    case QEvent::ShortcutOverride: {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (isOfEditCommand(key) || key.key() == Qt::Key_Escape)
            event->accept();
        return event->isAccepted();
    }
    case QEvent::FocusOut:
        if (isLeft(static_cast<const QFocusEvent&>(*event)))
            commit(*field);
        return false;
    default:
        return false;
    }
}

} // namespace veilkeep
