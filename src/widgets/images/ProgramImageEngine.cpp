#include "widgets/images/ProgramImageEngine.h"

#include "widgets/images/DrawnImage.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

#include <utility>

namespace veilkeep {
namespace {

constexpr qreal disabledOpacity = 0.4;

QColor textColour(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
    case QIcon::Disabled:
        return palette.color(QPalette::Disabled, QPalette::WindowText);
    case QIcon::Selected:
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    case QIcon::Normal:
    case QIcon::Active:
        break;
    }
    return palette.color(QPalette::Active, QPalette::WindowText);
}

QImage combined(QImage image, QPainter::CompositionMode how, const QColor& colour) {
    if (image.isNull())
        return image;
    QPainter painter(&image);
    painter.setCompositionMode(how);
    painter.fillRect(image.rect(), colour);
    painter.end();
    return image;
}

QPixmap ownColours(const QString& name, QSize size, qreal devicePixelRatio, bool isFaint) {
    const QString key = name + (isFaint ? QStringLiteral("/faint") : QString());
    return drawnImage::cached(key, size, devicePixelRatio, [&](QSize pixels) {
        const QImage image = drawnImage::drawn(name, pixels);
        const QColor remaining = QColor::fromRgbF(0, 0, 0, static_cast<float>(disabledOpacity));
        return isFaint ? combined(image, QPainter::CompositionMode_DestinationIn, remaining) : image;
    });
}

} // namespace

ProgramImageEngine::ProgramImageEngine(QString name, Colours colours)
    : m_name(std::move(name)), m_colours(colours) {}

QPixmap ProgramImageEngine::symbolPixmap(const QString& name, QSize size, qreal devicePixelRatio,
                                         const QColor& colour) {
    const QString key = name + u'/' + colour.name(QColor::HexArgb);
    return drawnImage::cached(key, size, devicePixelRatio, [&](QSize pixels) {
        return combined(drawnImage::drawn(name, pixels), QPainter::CompositionMode_SourceIn, colour);
    });
}

QPixmap ProgramImageEngine::inMode(QSize size, qreal devicePixelRatio, QIcon::Mode mode) const {
    if (m_colours == Colours::Own)
        return ownColours(m_name, size, devicePixelRatio, mode == QIcon::Disabled);
    return symbolPixmap(m_name, size, devicePixelRatio, textColour(mode));
}

void ProgramImageEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) {
    painter->drawPixmap(rect.topLeft(), inMode(rect.size(), painter->device()->devicePixelRatioF(), mode));
}

QPixmap ProgramImageEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) {
    return inMode(size, 1, mode);
}

QPixmap ProgramImageEngine::scaledPixmap(const QSize& pixels, QIcon::Mode mode, QIcon::State, qreal) {
    return inMode(pixels, 1, mode); // QIcon sets the ratio itself
}

QIconEngine* ProgramImageEngine::clone() const {
    return new ProgramImageEngine(*this);
}

QString ProgramImageEngine::key() const {
    return QStringLiteral("veilkeep");
}

bool ProgramImageEngine::isNull() {
    return drawnImage::resourceOf(m_name).isEmpty();
}

} // namespace veilkeep
