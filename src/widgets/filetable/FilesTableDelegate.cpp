#include "widgets/filetable/FilesTableDelegate.h"

#include "widgets/controls/RowControls.h"

#include <QPainter>
#include <QStyle>
#include <QWidget>
#include <QtMath>

namespace veilkeep {
namespace {

constexpr qreal hiddenOpacity = 0.5;
constexpr float lineOpacity = 0.15F;

} // namespace

struct FilesTableDelegate::Row {
    QPainter& painter;
    const QStyleOptionViewItem& option;
    const RowLayout& layout;
    const ListedFile& file;
    int number;

    bool isSelected() const { return option.state & QStyle::State_Selected; }
    bool isActive() const { return option.state & QStyle::State_Active; }
    bool isHidden() const { return file->state() == File::Hidden; }
    QColor textColor() const { return option.palette.color(QPalette::Text); }
    QColor secondaryColor() const { return secondaryTextColor(option.palette, isSelected()); }
    Qt::Alignment alignment(Qt::Alignment side) const {
        return QStyle::visualAlignment(option.direction, side) | Qt::AlignVCenter;
    }
};

FilesTableDelegate::FilesTableDelegate(const FilesTableModel& model, QObject* parent)
    : QStyledItemDelegate(parent), m_model(model) {}

RowLayout FilesTableDelegate::layoutOf(const QStyleOptionViewItem& option, int row) const {
    const QString size = m_model.sizeText(*m_model.fileAt(row));
    const double sizeWidth =
        QFontMetricsF(option.font).horizontalAdvance(size); // whole pixels may be too few
    return {option.rect, option.font, qCeil(sizeWidth), option.direction};
}

QSize FilesTableDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {option.rect.width(), RowLayout::heightFor(option.font)};
}

void FilesTableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    const RowLayout layout = layoutOf(option, index.row());
    const Row row{*painter, option, layout, m_model.fileAt(index.row()), index.row()};
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    paintGround(row);
    paintImage(row);
    paintTexts(row);
    paintButtons(row);
    painter->restore();
}

void FilesTableDelegate::paintGround(const Row& row) const {
    const QRect& rect = row.layout.row;
    if (row.isSelected())
        fillGround(row.painter, rect, rowSelectionColor(row.option.palette, row.isActive()));
    QColor line = row.textColor();
    line.setAlphaF(lineOpacity);
    fillSeparator(row.painter, rect, Qt::BottomEdge, line);
    if (!(row.option.state & QStyle::State_HasFocus) || !row.isActive())
        return;
    const double width = lineWidth(row.painter, 1.5), middle = width / 2;
    const QRectF ring = onPixels(row.painter, QRectF(rect).adjusted(1, 1, -1, -2));
    row.painter.setPen(QPen(row.option.palette.color(QPalette::Highlight), width));
    row.painter.setBrush(Qt::NoBrush);
    row.painter.drawRoundedRect(ring.adjusted(middle, middle, -middle, -middle), 4, 4);
}

void FilesTableDelegate::paintImage(const Row& row) const {
    row.painter.setOpacity(row.isHidden() ? hiddenOpacity : 1);
    if (const QImage preview = m_model.previews().preview(row.file); !preview.isNull()) {
        const QSizeF fitting = QSizeF(preview.size()).scaled(row.layout.image.size(), Qt::KeepAspectRatio);
        QRectF place(QPointF(), fitting);
        place.moveCenter(QRectF(row.layout.image).center());
        row.painter.setRenderHint(QPainter::SmoothPixmapTransform);
        row.painter.drawImage(place, preview);
    } else {
        m_model.previews().typeIcon(row.file).paint(&row.painter, row.layout.image);
    }
    row.painter.setOpacity(1);
}

// Each text runs as its own letters do, a place from left to right, whichever way the table lies.
void FilesTableDelegate::paintTexts(const Row& row) const {
    const RowLayout& layout = row.layout;
    const auto draw = [&](const QRect& rect, Qt::Alignment side, const QFont& font, const QColor& color,
                          const QString& text) {
        row.painter.setFont(font);
        row.painter.setPen(color);
        const QString fitting = QFontMetrics(font).elidedText(text, Qt::ElideMiddle, rect.width());
        const Qt::Alignment alignment = row.alignment(side) | Qt::AlignAbsolute;
        row.painter.drawText(rect, static_cast<int>(alignment) | Qt::TextSingleLine, fitting);
    };
    row.painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    draw(layout.name, Qt::AlignLeading, row.option.font,
         row.isHidden() ? row.secondaryColor() : row.textColor(), m_model.name(*row.file));
    draw(layout.size, Qt::AlignTrailing, row.option.font, row.secondaryColor(), m_model.sizeText(*row.file));
    const QFont small = RowLayout::placeFont(row.option.font);
    const QString trouble = m_model.trouble(row.file);
    const QString place = m_model.place(*row.file);
    if (!trouble.isEmpty()) {
        draw(layout.place, Qt::AlignLeading, small, warningColor(row.option.palette, row.isSelected()),
             tr("%1 · %2").arg(trouble, place));
        return;
    }
    row.painter.setLayoutDirection(Qt::LeftToRight);
    draw(layout.place, Qt::AlignLeading, small, row.secondaryColor(), place);
}

void FilesTableDelegate::paintButtons(const Row& row) const {
    const auto lookOf = [&](RowLayout::Part part, bool isEnabled) {
        const PartOfRow own{row.number, part};
        return ControlLook{.isEnabled = isEnabled,
                           .isHovered = isEnabled && m_hovered == own,
                           .isPressed = isEnabled && m_pressed == own && m_hovered == own};
    };
    paintRevealButton(row.painter, row.layout.reveal, row.option.palette,
                      lookOf(RowLayout::Part::Reveal, mayBeRevealed(*row.file)));
    const ControlLook look = lookOf(RowLayout::Part::Switch, true);
    const double position = m_slides.position(row.file);
    if (row.file->state() == File::Broken)
        return paintFixButton(row.painter, row.layout.onOff, row.option.palette, look);
    paintSwitch(row.painter, row.layout.onOff, position, row.option.palette, look);
}

} // namespace veilkeep
