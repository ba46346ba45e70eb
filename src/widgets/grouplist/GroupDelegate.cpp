#include "widgets/grouplist/GroupDelegate.h"

#include "widgets/controls/RowControls.h"
#include "widgets/images/ProgramImages.h"

#include <QPainter>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int margin = 8;
constexpr QSize iconSize{42, 42};
constexpr QSize badgeSize{16, 16};
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

QColor selectionColor(const QStyleOptionViewItem& option) {
    return rowSelectionColor(groundPalette(option), option.state & QStyle::State_Active);
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
    const auto side =
        QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter) | Qt::AlignAbsolute;
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // each text runs as its own letters do
    painter.drawText(rect, static_cast<int>(side) | Qt::TextSingleLine, shown);
}

void paintBadge(QPainter& painter, const QRect& place, const QString& image, const QColor& ground) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawEllipse(QRectF(place).adjusted(-1, -1, 1, 1));
    programImage::named(image).paint(&painter, place);
}

// At the icon's trailing side.
void paintBadges(QPainter& painter, const QStyleOptionViewItem& option, const Group& group) {
    const QPalette palette = groundPalette(option);
    const QColor ground = isSelected(option) ? selectionColor(option) : palette.color(QPalette::Base);
    const QRect icon = iconRect(option);
    QRect place(QPoint(), badgeSize);
    place.moveRight(icon.right() + 2);
    place = QStyle::visualRect(option.direction, icon, place);
    place.moveBottom(icon.bottom());
    if (group.state() != 0)
        paintBadge(painter, place, QStringLiteral("hidden"), ground);
    place.moveTop(icon.top());
    if (group.autoHide().value_or(false))
        paintBadge(painter, place, QStringLiteral("autohide"), ground);
}

void paintEditButton(QPainter& painter, const QStyleOptionViewItem& option) {
    const QRect button = GroupDelegate::editButtonRect(option.rect, option.direction);
    painter.setPen(Qt::NoPen);
    const QColor text = groundPalette(option).color(QPalette::Text);
    QColor ground = text;
    ground.setAlphaF(0.1F);
    painter.setBrush(ground);
    painter.drawEllipse(button);
    constexpr int inset = 5;
    const QRect place = button.adjusted(inset, inset, -inset, -inset);
    const qreal scale = painter.device()->devicePixelRatioF();
    painter.drawPixmap(place, programImage::symbolPixmap(QStringLiteral("edit"), place.size(), scale, text));
}

} // namespace

GroupDelegate::GroupDelegate(GroupViewController& groups, const GroupsModel& model, QObject* parent)
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
        fillGround(painter, option.rect, selectionColor(option));
    else if (option.state & QStyle::State_MouseOver)
        fillGround(painter, option.rect, blended(base, palette.color(QPalette::Text), 0.05));
    if (!(option.state & QStyle::State_HasFocus) && m_marked != index)
        return;
    const double width = lineWidth(painter, 2), middle = width / 2;
    const QRectF ring = onPixels(painter, QRectF(option.rect).adjusted(1, 1, -1, -1));
    painter.setPen(QPen(withContrast(palette.color(QPalette::Highlight), base, 3), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(ring.adjusted(middle, middle, -middle, -middle), 3, 3);
}

void GroupDelegate::paintHeader(QPainter& painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    painter.setFont(headerFont(option));
    painter.setPen(secondaryTextColor(groundPalette(option)));
    constexpr int inset = 12;
    paintElided(painter, option.rect.adjusted(inset, 0, -inset, 0), index.data().toString().toUpper(),
                option.direction);
}

// The detail lies below.
QRect GroupDelegate::nameRect(const QStyleOptionViewItem& option, bool hasEditButton) {
    const int nameHeight = QFontMetrics(option.font).height();
    const int detailHeight = QFontMetrics(detailFont(option)).height();
    const int right = hasEditButton ? revealButtonSize.width() + 2 * margin : margin;
    QRect texts = option.rect.adjusted(iconSize.width() + 2 * margin, 0, -right, 0);
    texts = QStyle::visualRect(option.direction, option.rect, texts);
    return {texts.x(), texts.y() + (texts.height() - nameHeight - detailHeight) / 2, texts.width(),
            nameHeight};
}

void GroupDelegate::paintTexts(QPainter& painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    const QPalette palette = groundPalette(option);
    const QFont small = detailFont(option);
    QRect name = nameRect(option, showsEditButton(option, index));
    painter.setFont(option.font);
    painter.setPen(palette.color(QPalette::Text));
    paintElided(painter, name, index.data().toString(), option.direction);
    name.moveTop(name.bottom() + 1);
    name.setHeight(QFontMetrics(small).height());
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
