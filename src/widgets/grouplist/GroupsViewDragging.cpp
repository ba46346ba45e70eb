#include "widgets/controls/DragMime.h"
#include "widgets/controls/RowControls.h"
#include "widgets/grouplist/GroupsModel.h"
#include "widgets/grouplist/GroupsView.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QPainter>
#include <QPointer>

#include <memory>

namespace veilkeep {
namespace {

using Operation = DropAnswer::Operation;

// Rows only from the list itself.
GroupDrag dragOf(const QDropEvent& event, const QObject* ownView) {
    const QMimeData& data = *event.mimeData();
    GroupDrag drag;
    if (event.source() == ownView)
        drag.groupRows = dragMime::rows(data);
    drag.filePaths = dragMime::ownPaths(event);
    drag.fileNames = dragMime::fileNames(data);
    return drag;
}

} // namespace

void GroupsView::startDrag(Qt::DropActions) {
    const QModelIndex index = currentIndex();
    const std::vector rows{static_cast<std::size_t>(index.row())};
    if (!index.isValid() || !m_groups.writeRows(rows))
        return;
    auto mime = std::make_unique<QMimeData>();
    dragMime::setRows(*mime, rows);
    const QRect row = visualRect(index);
    QPointer<QDrag> drag = new QDrag(this);
    drag->setMimeData(mime.release());
    drag->setPixmap(viewport()->grab(row));
    drag->setHotSpot(viewport()->mapFromGlobal(QCursor::pos()) - row.topLeft());
    drag->exec(Qt::MoveAction);
}

// --- Over the list ---

// Groups fall between rows, the nearer gap; all else on a row, -1 beside them.
std::ptrdiff_t GroupsView::dropRow(const QPoint& place) const {
    const QModelIndex index = indexAt(place);
    if (!m_drag.groupRows)
        return index.row();
    if (!index.isValid())
        return place.y() < 0 ? 0 : m_model->rowCount();
    return index.row() + (place.y() > visualRect(index).center().y());
}

DropAnswer GroupsView::answerTo(const QDropEvent& event) const {
    return m_groups.validateDrop(m_drag, dropRow(event.position().toPoint()));
}

// Another program's files stay where they are: it is never told that they were moved.
bool GroupsView::takeAction(QDropEvent& event, const DropAnswer& answer) const {
    const Qt::DropActions possible = event.possibleActions();
    const auto first = answer.operation == Operation::Move ? Qt::MoveAction : Qt::CopyAction;
    const auto second = answer.operation == Operation::Move ? Qt::CopyAction : Qt::LinkAction;
    if (answer.operation == Operation::None || !(possible & (first | second)))
        return false;
    event.setDropAction(possible & first ? first : second);
    event.accept();
    return true;
}

void GroupsView::dragEnterEvent(QDragEnterEvent* event) {
    m_drag = dragOf(*event, this);
    if (m_drag.groupRows || m_drag.filePaths || m_drag.fileNames)
        event->accept();
    else
        event->ignore();
}

void GroupsView::dragMoveEvent(QDragMoveEvent* event) {
    const DropAnswer answer = answerTo(*event);
    startAutoScroll();
    if (!takeAction(*event, answer)) {
        showDropPlace({});
        return event->ignore();
    }
    if (answer.selectRow)
        m_groups.selectRow(static_cast<std::ptrdiff_t>(answer.row));
    showDropPlace(answer);
}

void GroupsView::dragLeaveEvent(QDragLeaveEvent* event) {
    endDropping();
    QListView::dragLeaveEvent(event);
}

// What asks the user something waits until the program that files come from is through with its drag.
void GroupsView::dropEvent(QDropEvent* event) {
    const DropAnswer answer = answerTo(*event);
    const GroupDrag drag = m_drag;
    endDropping();
    if (!takeAction(*event, answer))
        return event->ignore();
    const auto row = static_cast<std::ptrdiff_t>(answer.row);
    if (answer.selectRow)
        m_groups.selectRow(row);
    QMetaObject::invokeMethod(
        this, [this, drag, row] { m_groups.acceptDrop(drag, row); }, Qt::QueuedConnection);
}

void GroupsView::showDropPlace(const DropAnswer& answer) {
    if (m_dropPlace == answer)
        return;
    m_dropPlace = answer;
    viewport()->update();
}

void GroupsView::endDropping() {
    stopAutoScroll();
    m_drag = {};
    showDropPlace({});
}

// --- The place of the drop ---

QRect GroupsView::dropPlaceRect() const {
    const int row = static_cast<int>(m_dropPlace.row);
    if (m_dropPlace.selectRow)
        return visualRect(m_model->index(row));
    const bool isEnd = row >= m_model->rowCount();
    const QRect next = visualRect(m_model->index(isEnd ? m_model->rowCount() - 1 : row));
    return {next.left(), isEnd ? next.bottom() : next.top() - 1, next.width(), 2};
}

void GroupsView::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    if (m_dropPlace.operation == Operation::None)
        return;
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette colors = palette();
    const QColor color = withContrast(colors.color(QPalette::Highlight), colors.color(QPalette::Window), 3);
    const QRectF place = dropPlaceRect();
    painter.setPen(QPen(color, 2));
    if (m_dropPlace.selectRow) {
        painter.drawRoundedRect(place.adjusted(2, 2, -2, -2), 4, 4);
        return;
    }
    constexpr double radius = 3;
    const QPointF start = place.topLeft() + QPointF(radius + 3, 1);
    painter.drawEllipse(start, radius, radius);
    painter.drawLine(start + QPointF(radius, 0), place.topRight() + QPointF(-4, 1));
}

} // namespace veilkeep
