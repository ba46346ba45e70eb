#include "widgets/controls/DragMime.h"
#include "widgets/controls/RowControls.h"
#include "widgets/filetable/FilesTableModel.h"
#include "widgets/filetable/FilesTableView.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>

#include <algorithm>
#include <memory>
#include <unordered_set>

namespace veilkeep {
namespace {

constexpr QSize dragImageSize{220, 40};

void paintCount(QPainter& painter, const QPalette& palette, std::size_t count) {
    const QString text = QLocale().toString(static_cast<qulonglong>(count));
    const int width = std::max(20, painter.fontMetrics().horizontalAdvance(text) + 12);
    const QRect badge(dragImageSize.width() - width - 8, 10, width, 20);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::Highlight));
    painter.drawRoundedRect(badge, 10, 10);
    painter.setPen(palette.color(QPalette::HighlightedText));
    painter.drawText(badge, Qt::AlignCenter, text);
}

} // namespace

std::vector<std::size_t> FilesTableView::selectedRows() const {
    std::vector<std::size_t> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(static_cast<std::size_t>(row));
    return rows;
}

QPixmap FilesTableView::dragImage(const ListedFile& first, std::size_t count) const {
    const qreal scale = devicePixelRatioF();
    QPixmap image(dragImageSize * scale);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setFont(font());
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(QRectF({}, dragImageSize).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
    m_model->previews().typeIcon(first).paint(&painter, QRect(8, 4, 32, 32));
    const QRect text(48, 0, dragImageSize.width() - (count > 1 ? 100 : 56), dragImageSize.height());
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(text, Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(m_model->name(*first), Qt::ElideMiddle, text.width()));
    if (count > 1)
        paintCount(painter, palette(), count);
    return image;
}

// Other programs may copy, and nothing else; what takes rows in this one knows what it does with them.
void FilesTableView::startDrag(Qt::DropActions) {
    m_model->update();
    const FilesViewController::DragData dragged = m_files.dragDataForRows(selectedRows());
    if (dragged.rows.empty())
        return;
    auto mime = std::make_unique<QMimeData>();
    dragMime::setPaths(*mime, dragged.rowPaths);
    if (!dragged.fileNames.empty())
        dragMime::setFileNames(*mime, dragged.fileNames);
    auto* const drag = new QDrag(this);
    drag->setMimeData(mime.release());
    drag->setPixmap(dragImage(m_model->fileAt(static_cast<int>(dragged.rows.front())), dragged.rows.size()));
    drag->setHotSpot({16, dragImageSize.height() / 2});
    drag->exec(Qt::CopyAction, Qt::CopyAction);
}

bool FilesTableView::areShown(const std::vector<std::string>& rowPaths) const {
    std::unordered_set<ListedFile> dragged;
    for (const std::string& path : rowPaths)
        if (const ListedFile file = m_files.findFileWithPath(path))
            dragged.insert(file);
    const auto shown = std::ranges::count_if(m_model->files(),
                                             [&](const ListedFile& file) { return dragged.contains(file); });
    return static_cast<std::size_t>(shown) == dragged.size();
}

bool FilesTableView::takes(const QDropEvent& event) const {
    return dragMime::ownPaths(event) || dragMime::fileNames(*event.mimeData());
}

void FilesTableView::setDropTarget(bool isDropTarget) {
    m_isDropTarget = isDropTarget;
    viewport()->update();
}

void FilesTableView::dragEnterEvent(QDragEnterEvent* event) {
    if (!takes(*event)) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setDropTarget(event->source() != this);
}

void FilesTableView::dragMoveEvent(QDragMoveEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void FilesTableView::dragLeaveEvent(QDragLeaveEvent* event) {
    event->accept();
    setDropTarget(false);
}

// Rows that come back to where they are shown stay in their groups: a slip of the hand, which would take them
// out of a group that is hidden by itself.
void FilesTableView::dropEvent(QDropEvent* event) {
    setDropTarget(false);
    const auto rowPaths = dragMime::ownPaths(*event);
    const auto fileNames = dragMime::fileNames(*event->mimeData());
    if (!rowPaths && !fileNames)
        return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (!rowPaths)
        m_files.addFiles(*fileNames);
    else if (event->source() != this || !areShown(*rowPaths))
        m_files.acceptDropOfRows(*rowPaths);
    emit itemsDropped();
}

} // namespace veilkeep
