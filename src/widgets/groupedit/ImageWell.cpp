#include "widgets/groupedit/ImageWell.h"

#include "widgets/controls/DragMime.h"
#include "widgets/controls/RowControls.h"
#include "widgets/images/ProgramImages.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>

#include <optional>

namespace veilkeep {
namespace {

constexpr int frame = 5;
constexpr const char* imageFormats[] = {"image/png", "image/jpeg", "image/bmp",
                                        "image/gif", "image/tiff", "image/jp2"};

std::optional<std::string> onlyFile(const QMimeData& data) {
    const auto files = dragMime::fileNames(data);
    return files && files->size() == 1 ? std::optional(files->front()) : std::nullopt;
}

// In the first form of those that its program can give it in; none where files are dragged.
const char* imageFormat(const QMimeData& data) {
    if (dragMime::fileNames(data))
        return nullptr;
    for (const char* const format : imageFormats)
        if (data.hasFormat(QLatin1String(format)))
            return format;
    return nullptr;
}

} // namespace

ImageWell::ImageWell(QWidget* parent) : QWidget(parent) {
    setFixedSize(mostOfImage + QSize(2 * frame, 2 * frame));
    setAcceptDrops(true);
    setAccessibleName(tr("Icon"));
    setAccessibleDescription(tr("An image can be dropped here"));
    setToolTip(tr("Drop an image here"));
}

void ImageWell::setIconOf(const Group& lookingLike) {
    m_lookingLike = lookingLike;
    update();
}

void ImageWell::setHovered(bool isHovered) {
    m_isHovered = isHovered;
    update();
}

void ImageWell::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette colors = palette();
    const QColor ground = colors.color(QPalette::Base);
    const double width = lineWidth(painter, m_isHovered ? 2 : 1), middle = width / 2;
    const QColor edge = m_isHovered ? withContrast(colors.color(QPalette::Highlight), ground, 3)
                                    : blended(ground, colors.color(QPalette::Text), 0.35);
    painter.setPen(QPen(edge, width));
    painter.setBrush(ground);
    painter.drawRoundedRect(onPixels(painter, rect()).adjusted(middle, middle, -middle, -middle), 4, 4);
    painter.drawPixmap(QRect({frame, frame}, mostOfImage),
                       groupIcon(m_lookingLike, mostOfImage, devicePixelRatioF()));
}

void ImageWell::dragEnterEvent(QDragEnterEvent* event) {
    const bool isWanted = onlyFile(*event->mimeData()) || imageFormat(*event->mimeData());
    if (!isWanted || !(event->possibleActions() & (Qt::CopyAction | Qt::LinkAction)))
        return event->ignore();
    event->setDropAction(event->possibleActions() & Qt::CopyAction ? Qt::CopyAction : Qt::LinkAction);
    event->accept();
    setHovered(true);
}

void ImageWell::dragLeaveEvent(QDragLeaveEvent*) {
    setHovered(false);
}

void ImageWell::dropEvent(QDropEvent* event) {
    setHovered(false);
    const auto file = onlyFile(*event->mimeData());
    const char* const format = imageFormat(*event->mimeData());
    if (!file && !format)
        return event->ignore();
    event->setDropAction(event->possibleActions() & Qt::CopyAction ? Qt::CopyAction : Qt::LinkAction);
    event->accept();
    const QByteArray image = file ? QByteArray() : event->mimeData()->data(QLatin1String(format));
    const auto tell = [this, file, image] {
        if (file)
            emit fileDropped(*file);
        else
            emit imageDropped(image);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

} // namespace veilkeep
