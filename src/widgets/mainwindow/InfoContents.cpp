#include "widgets/mainwindow/InfoContents.h"

#include "widgets/controls/RowControls.h"
#include "widgets/preview/Previews.h"

#include <QEvent>
#include <QGridLayout>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

namespace veilkeep {
namespace {

constexpr int margin = 16;
constexpr int iconSize = 96;
constexpr int badgeSize = 20, badgeGap = 8;
constexpr qreal cornerRadius = 8;
constexpr qreal nameScale = 1.15; // of the window's font

QRectF centred(const QSizeF& size, const QRectF& area) {
    const QSizeF fitting = size.width() > area.width() || size.height() > area.height()
                               ? size.scaled(area.size(), Qt::KeepAspectRatio)
                               : size;
    return {area.center() - QPointF(fitting.width() / 2, fitting.height() / 2), fitting};
}

} // namespace

PreviewFrame::PreviewFrame(QWidget* parent) : QWidget(parent) {
    setFixedHeight(Previews::previewSize.height());
    setMinimumWidth(Previews::previewSize.width());
    setAccessibleName(tr("Preview"));
}

void PreviewFrame::setImage(const QImage& image, const QIcon& otherwise) {
    m_image = image;
    m_icon = image.isNull() ? otherwise : QIcon();
    update();
}

void PreviewFrame::setBadge(const QIcon& badge) {
    m_badge = badge;
    update();
}

void PreviewFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QPainterPath frame;
    frame.addRoundedRect(rect(), cornerRadius, cornerRadius);
    painter.fillPath(frame,
                     blended(palette().color(QPalette::Window), palette().color(QPalette::WindowText), 0.07));
    painter.setClipPath(frame);
    if (m_image.isNull())
        m_icon.paint(&painter, centred({iconSize, iconSize}, rect()).toRect());
    else
        painter.drawImage(centred(m_image.deviceIndependentSize(), rect()), m_image);
    const QPoint corner(isRightToLeft() ? badgeGap : width() - badgeGap - badgeSize,
                        height() - badgeGap - badgeSize);
    m_badge.paint(&painter, QRect(corner, QSize(badgeSize, badgeSize)));
}

InfoContents::InfoContents(QWidget* parent)
    : QWidget(parent), m_preview(new PreviewFrame(this)), m_name(new WrappedText(this)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(12);
    layout->addWidget(m_preview);
    layout->addSpacing(2);
    layout->addWidget(m_name);
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(1, 1);
    layout->addLayout(grid);
    layout->addStretch(1);

    QFont bold = font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * nameScale);
    m_name->setFont(bold);
    m_name->setAccessibleName(tr("Name"));
    addRow(*grid, State, tr("State"));
    addRow(*grid, Size, tr("Size"));
    addRow(*grid, Created, tr("Created"));
    addRow(*grid, Modified, tr("Modified"));
    addRow(*grid, Where, tr("Where"));
    addRow(*grid, Group, tr("Group"));
    colour();
}

void InfoContents::addRow(QGridLayout& grid, Row row, const QString& title) {
    m_rows[row] = {new QLabel(title, this), new WrappedText(this)};
    m_rows[row].title->setTextFormat(Qt::PlainText);
    m_rows[row].title->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    m_rows[row].value->setAccessibleName(title);
    grid.addWidget(m_rows[row].title, row, 0, Qt::AlignTop);
    grid.addWidget(m_rows[row].value, row, 1, Qt::AlignTop);
}

// What is selected in a text stays so while the text does.
void InfoContents::setText(WrappedText& value, const QString& text) {
    if (value.toPlainText() != text)
        value.setPlainText(text);
}

void InfoContents::setFacts(const InfoFacts& facts) {
    setText(*m_name, facts.name);
    setText(*m_rows[State].value, facts.state);
    setText(*m_rows[Size].value, facts.size);
    setText(*m_rows[Where].value, facts.where);
    setText(*m_rows[Group].value, facts.group);
}

void InfoContents::setFactsOnDisk(const FactsOnDisk& facts) {
    setText(*m_rows[Size].value, facts.size);
    setText(*m_rows[Created].value, facts.created);
    setText(*m_rows[Modified].value, facts.modified);
}

void InfoContents::setDatesShown(bool areShown) {
    for (const Row row : {Created, Modified}) {
        m_rows[row].title->setVisible(areShown);
        m_rows[row].value->setVisible(areShown);
    }
}

void InfoContents::takeFocus() {
    m_name->setFocus(Qt::TabFocusReason);
}

void InfoContents::colour() {
    QPalette faint = palette();
    faint.setColor(QPalette::WindowText, secondaryTextColor(palette()));
    for (const Shown& row : m_rows)
        row.title->setPalette(faint);
}

void InfoContents::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        colour();
}

} // namespace veilkeep
