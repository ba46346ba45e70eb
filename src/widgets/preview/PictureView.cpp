#include "widgets/preview/PictureView.h"

#include <QPainter>

namespace veilkeep {
namespace {

constexpr int squareSize = 8;

// Shows through where the image is transparent; the same in light and dark, for images are made for light.
void paintChequers(QPainter& painter, const QRect& rect) {
    painter.fillRect(rect, QColor(0xff, 0xff, 0xff));
    painter.save();
    painter.setClipRect(rect);
    for (int y = 0; y * squareSize < rect.height(); ++y)
        for (int x = y % 2; x * squareSize < rect.width(); x += 2)
            painter.fillRect(rect.x() + x * squareSize, rect.y() + y * squareSize, squareSize, squareSize,
                             QColor(0xec, 0xec, 0xec));
    painter.restore();
}

} // namespace

void PictureView::setImage(const QImage& image) {
    m_image = image;
    m_scaled = {};
    update();
}

QRect PictureView::imageRect() const {
    const QSize whole = (QSizeF(m_image.size()) / devicePixelRatioF()).toSize().expandedTo({1, 1});
    const bool fits = whole.width() <= width() && whole.height() <= height();
    const QSize shown = fits ? whole : whole.scaled(size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    QRect rect(QPoint(), shown);
    rect.moveCenter(this->rect().center());
    return rect;
}

void PictureView::paintEvent(QPaintEvent*) {
    if (m_image.isNull())
        return;
    const QRect rect = imageRect();
    const QSize pixels = (QSizeF(rect.size()) * devicePixelRatioF()).toSize();
    if (m_scaled.size() != pixels)
        m_scaled = QPixmap::fromImage(m_image.size() == pixels ? m_image
                                                               : m_image.scaled(pixels, Qt::IgnoreAspectRatio,
                                                                                Qt::SmoothTransformation));
    QPainter painter(this);
    if (m_image.hasAlphaChannel())
        paintChequers(painter, rect);
    painter.drawPixmap(rect, m_scaled);
}

} // namespace veilkeep
