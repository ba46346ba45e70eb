#include "widgets/grouplist/GroupDelegate.h"

#include "widgets/controls/RowControls.h"
#include "widgets/images/ProgramImages.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int margin = 8;
constexpr QSize iconSize{42, 42};
constexpr double badgeRadius = 7.5;
constexpr std::size_t mostIcons = 256; // kept drawn

// The list lies on the window's ground.
QPalette groundPalette(const QStyleOptionViewItem& option) {
    QPalette palette = option.palette;
    palette.setCurrentColorGroup(option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive);
    palette.setColor(QPalette::Base, palette.color(QPalette::Window));
    palette.setColor(QPalette::Text, palette.color(QPalette::WindowText));
    return palette;
}

bool isSelected(const QStyleOptionViewItem& option) {
    return option.state & QStyle::State_Selected;
}

QFont scaledFont(QFont font, double factor) {
    if (font.pixelSize() > 0)
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * factor)));
    else
        font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

QFont detailFont(const QStyleOptionViewItem& option) {
    return scaledFont(option.font, 0.88);
}

QFont headerFont(const QStyleOptionViewItem& option) {
    QFont font = scaledFont(option.font, 0.82);
    font.setWeight(QFont::DemiBold);
    font.setLetterSpacing(QFont::PercentageSpacing, 104);
    return font;
}

QRect iconRect(const QStyleOptionViewItem& option) {
    QRect rect(QPoint(option.rect.x() + margin, 0), iconSize);
    rect.moveTop(option.rect.y() + (option.rect.height() - iconSize.height()) / 2);
    return QStyle::visualRect(option.direction, option.rect, rect);
}

void paintElided(QPainter& painter, const QRect& rect, const QString& text, Qt::LayoutDirection direction) {
    const QString shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, rect.width());
    const auto side = QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter);
    painter.drawText(rect, static_cast<int>(side) | Qt::TextSingleLine, shown);
}

// An eye that is struck through.
QPainterPath hiddenSign() {
    QPainterPath path;
    path.moveTo(-4.5, 0);
    path.quadTo(0, -4.8, 4.5, 0);
    path.quadTo(0, 4.8, -4.5, 0);
    path.addEllipse(QPointF(), 0.9, 0.9);
    path.moveTo(-3.6, 3.6);
    path.lineTo(3.6, -3.6);
    return path;
}

// A moon.
QPainterPath autoHideSign() {
    QPainterPath whole, shadow;
    whole.addEllipse(QPointF(), 4, 4);
    shadow.addEllipse(QPointF(2.2, -1.6), 3.4, 3.4);
    return whole.subtracted(shadow);
}

void paintBadge(QPainter& painter, const QPointF& middle, const QColor& color, const QColor& ground,
                const QPainterPath& sign, bool isFilled) {
    const QColor ink = withContrast(ground, color, 4.5);
    painter.save();
    painter.translate(middle);
    painter.setPen(QPen(ground, 1.5));
    painter.setBrush(color);
    painter.drawEllipse(QPointF(), badgeRadius, badgeRadius);
    painter.setPen(isFilled ? QPen(Qt::NoPen) : QPen(ink, 1.1, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(isFilled ? QBrush(ink) : QBrush(Qt::NoBrush));
    painter.drawPath(sign);
    painter.restore();
}

void paintBadges(QPainter& painter, const QStyleOptionViewItem& option, const Group& group) {
    const QPalette palette = groundPalette(option);
    const QColor base = palette.color(QPalette::Base);
    const QColor ground = isSelected(option) ? rowSelectionColor(palette, true) : base;
    const QRectF icon = iconRect(option);
    const bool isRightToLeft = option.direction == Qt::RightToLeft;
    const double x = isRightToLeft ? icon.left() + badgeRadius - 1 : icon.right() - badgeRadius + 1;
    if (group.state() != 0)
        paintBadge(painter, {x, icon.bottom() - badgeRadius + 1}, secondaryTextColor(palette, true), ground,
                   hiddenSign(), false);
    if (group.autoHide().value_or(false))
        paintBadge(painter, {x, icon.top() + badgeRadius - 1},
                   withContrast(palette.color(QPalette::Highlight), base, 3), ground, autoHideSign(), true);
}

void paintEditButton(QPainter& painter, const QStyleOptionViewItem& option) {
    const QRect button = GroupDelegate::editButtonRect(option.rect, option.direction);
    painter.setPen(Qt::NoPen);
    QColor ground = groundPalette(option).color(QPalette::Text);
    ground.setAlphaF(0.1F);
    painter.setBrush(ground);
    painter.drawEllipse(button);
    constexpr int inset = 5;
    const QRect place = button.adjusted(inset, inset, -inset, -inset);
    programImage::symbol(QStringLiteral("edit")).paint(&painter, place);
}

} // namespace

GroupDelegate::GroupDelegate(const GroupViewController& groups, const GroupsModel& model, QObject* parent)
    : QStyledItemDelegate(parent), m_groups(groups), m_model(model) {}

bool GroupDelegate::canBeEdited(const QModelIndex& index) const {
    const ListedGroup group = m_model.group(index);
    return m_isEditingOffered && group && group->canBeRemoved();
}

QRect GroupDelegate::editButtonRect(const QRect& row, Qt::LayoutDirection direction) {
    const QSize size = revealButtonSize;
    const QPoint corner(row.right() - margin - size.width() + 1, row.center().y() - size.height() / 2 + 1);
    return QStyle::visualRect(direction, row, QRect(corner, size));
}

bool GroupDelegate::showsEditButton(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return option.state & (QStyle::State_MouseOver | QStyle::State_HasFocus) && canBeEdited(index);
}

// Larger fonts make rows higher.
QSize GroupDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const bool isHeader = index.data(GroupsModel::IsHeaderRole).toBool();
    const int texts =
        isHeader ? QFontMetrics(headerFont(option)).height() + 4
                 : QFontMetrics(option.font).height() + QFontMetrics(detailFont(option)).height() + 6;
    return {iconSize.width() + 3 * margin, std::max(m_groups.heightOfRow(index.row()), texts)};
}

void GroupDelegate::paint(QPainter* painter, const QStyleOptionViewItem& given,
                          const QModelIndex& index) const {
    QStyleOptionViewItem option = given;
    initStyleOption(&option, index);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (index.data(GroupsModel::IsHeaderRole).toBool()) {
        paintHeader(*painter, option, index);
    } else {
        paintGround(*painter, option, index);
        painter->drawPixmap(iconRect(option), icon(index, painter->device()->devicePixelRatioF()));
        if (const ListedGroup group = m_model.group(index))
            paintBadges(*painter, option, *group);
        paintTexts(*painter, option, index);
        if (showsEditButton(option, index))
            paintEditButton(*painter, option);
    }
    painter->restore();
}

void GroupDelegate::paintGround(QPainter& painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    const QPalette palette = groundPalette(option);
    const QColor base = palette.color(QPalette::Base);
    if (isSelected(option))
        painter.fillRect(option.rect, rowSelectionColor(palette, option.state & QStyle::State_Active));
    else if (option.state & QStyle::State_MouseOver)
        painter.fillRect(option.rect, blended(base, palette.color(QPalette::Text), 0.05));
    if (!(option.state & QStyle::State_HasFocus) && m_marked != index)
        return;
    painter.setPen(QPen(withContrast(palette.color(QPalette::Highlight), base, 3), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(2, 2, -2, -2), 3, 3);
}

void GroupDelegate::paintHeader(QPainter& painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    painter.setFont(headerFont(option));
    painter.setPen(secondaryTextColor(groundPalette(option)));
    constexpr int inset = 12;
    paintElided(painter, option.rect.adjusted(inset, 0, -inset, 0), index.data().toString().toUpper(),
                option.direction);
}

void GroupDelegate::paintTexts(QPainter& painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    const QPalette palette = groundPalette(option);
    const QFont small = detailFont(option);
    const int nameHeight = QFontMetrics(option.font).height(), detailHeight = QFontMetrics(small).height();
    const int right = showsEditButton(option, index) ? revealButtonSize.width() + 2 * margin : margin;
    QRect texts = option.rect.adjusted(iconSize.width() + 2 * margin, 0, -right, 0);
    texts = QStyle::visualRect(option.direction, option.rect, texts);
    QRect name(texts.x(), texts.y() + (texts.height() - nameHeight - detailHeight) / 2, texts.width(),
               nameHeight);
    painter.setFont(option.font);
    painter.setPen(palette.color(QPalette::Text));
    paintElided(painter, name, index.data().toString(), option.direction);
    name.moveTop(name.bottom() + 1);
    name.setHeight(detailHeight);
    painter.setFont(small);
    painter.setPen(secondaryTextColor(palette, isSelected(option)));
    paintElided(painter, name, index.data(GroupsModel::DetailRole).toString(), option.direction);
}

QPixmap GroupDelegate::icon(const QModelIndex& index, qreal devicePixelRatio) const {
    const ListedGroup group = m_model.groupWithIcon(index);
    if (!group)
        return {};
    std::string key = std::to_string(devicePixelRatio);
    key.append(1, '\0').append(group->iconPath()).append(1, '\0').append(group->iconData());
    if (const auto known = m_icons.find(key); known != m_icons.end())
        return known->second;
    if (m_icons.size() >= mostIcons)
        m_icons.clear();
    return m_icons[key] = groupIcon(*group, iconSize, devicePixelRatio);
}

} // namespace veilkeep
