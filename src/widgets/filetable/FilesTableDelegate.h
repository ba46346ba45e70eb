#pragma once

#include "widgets/filetable/FilesTableModel.h"
#include "widgets/filetable/RowLayout.h"
#include "widgets/filetable/RowSlides.h"

#include <QStyledItemDelegate>

namespace veilkeep {

// Paints the rows of the files table. Owned by FilesTableView; main thread.
class FilesTableDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    struct PartOfRow {
        int row = -1;
        RowLayout::Part part = RowLayout::Part::Elsewhere;

        bool operator==(const PartOfRow&) const = default;
    };

    explicit FilesTableDelegate(const FilesTableModel& model, QObject* parent = nullptr);

    void setHovered(const PartOfRow& hovered) { m_hovered = hovered; }
    void setPressed(const PartOfRow& pressed) { m_pressed = pressed; }
    const PartOfRow& hovered() const { return m_hovered; }
    const PartOfRow& pressed() const { return m_pressed; }
    RowSlides& slides() { return m_slides; }

    RowLayout layoutOf(const QStyleOptionViewItem& option, int row) const;
    static bool mayBeRevealed(const File& file) { return file.state() != File::Hidden; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    struct Row;
    void paintGround(const Row& row) const;
    void paintImage(const Row& row) const;
    void paintTexts(const Row& row) const;
    void paintButtons(const Row& row) const;

    const FilesTableModel& m_model;
    PartOfRow m_hovered;
    PartOfRow m_pressed;
    mutable RowSlides m_slides;
};

} // namespace veilkeep
