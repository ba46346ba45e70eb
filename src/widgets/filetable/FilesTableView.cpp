#include "widgets/filetable/FilesTableView.h"

#include "widgets/filetable/EmptyTableNotice.h"
#include "widgets/filetable/FilesTableModel.h"
#include "widgets/filetable/FilesTableSelection.h"

#include <QHeaderView>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStyle>

namespace veilkeep {

FilesTableView::FilesTableView(FilesViewController& files, FileListActions& actions, Previews& previews,
                               QWidget* parent)
    : QTableView(parent),
      m_files(files),
      m_actions(actions),
      m_model(new FilesTableModel(files, previews, this)),
      m_delegate(new FilesTableDelegate(*m_model, this)) {
    setItemDelegate(m_delegate);
    lookLikeTable(); // first: a header goes through all its rows for each of its settings
    setModel(m_model);
    new FilesTableSelection(files.filesController(), *m_model, *selectionModel(), this);
    connect(m_model, &FilesTableModel::modelAboutToBeReset, this, &FilesTableView::keepPlace);
    connect(m_model, &FilesTableModel::rowsAboutToBeRemoved, this, &FilesTableView::keepPlace);
    connect(m_model, &FilesTableModel::rowsAboutToBeInserted, this, &FilesTableView::keepPlace);
    connect(m_model, &FilesTableModel::updated, this, &FilesTableView::followModel);
    connect(&files.filterController(), &FilterController::filterPredicateChanged, this,
            &FilesTableView::followModel);
    connect(&m_delegate->slides(), &RowSlides::moved, viewport(), qOverload<>(&QWidget::update));
    followModel();
}

FilesTableView::~FilesTableView() = default;

void FilesTableView::lookLikeTable() {
    setAccessibleName(tr("Items"));
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMouseTracking(true);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDragDropMode(DragDrop);
    setDropIndicatorShown(false);
    horizontalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setMinimumSectionSize(0);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    chooseRowHeight();
}

void FilesTableView::chooseRowHeight() {
    const int height = RowLayout::heightFor(font());
    verticalHeader()->setDefaultSectionSize(height);
    verticalScrollBar()->setSingleStep(height / 2);
    const QStyle& look = *style();
    m_delegate->slides().setDuration(look.styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) * 3 /
                                     4);
}

void FilesTableView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        chooseRowHeight();
}

RowLayout FilesTableView::rowLayout(int row) const {
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(m_model->index(row, 0));
    return m_delegate->layoutOf(option, row);
}

// The current row stays where it was seen, or else what was at the top, unless that was the table's. Kept
// before the first change of an update.
void FilesTableView::keepPlace() {
    if (m_keptFile)
        return;
    const bool isCurrentSeen = viewport()->rect().intersects(visualRect(currentIndex()));
    const int row = isCurrentSeen ? currentIndex().row() : verticalScrollBar()->value() > 0 ? rowAt(0) : -1;
    m_keptFile = row >= 0 ? m_model->fileAt(row) : nullptr;
    m_keptOffset = row >= 0 ? rowViewportPosition(row) : 0;
    m_delegate->setHovered({});
    m_delegate->setPressed({});
}

void FilesTableView::restorePlace() {
    const ListedFile kept = std::exchange(m_keptFile, nullptr);
    const int row = kept ? m_model->rowOf(kept) : -1;
    if (row < 0)
        return;
    executeDelayedItemsLayout();
    updateGeometries();
    verticalScrollBar()->setValue(row * verticalHeader()->defaultSectionSize() - m_keptOffset);
    if (row == currentIndex().row())
        scrollTo(currentIndex());
}

void FilesTableView::followModel() {
    restorePlace();
    const bool isEmpty = m_files.filesController().arrangedObjects().empty();
    if (isEmpty && !m_notice) {
        m_notice = new EmptyTableNotice(m_files, viewport());
        m_notice->setGeometry(viewport()->rect());
        connect(m_notice, &EmptyTableNotice::addRequested, this, &FilesTableView::addRequested);
    }
    if (!m_notice)
        return;
    if (isEmpty)
        m_notice->update();
    m_notice->setVisible(isEmpty);
}

void FilesTableView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (m_notice)
        m_notice->setGeometry(viewport()->rect());
}

void FilesTableView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (!m_isDropTarget)
        return;
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = palette().color(QPalette::Highlight);
    painter.setPen(QPen(fill, 2));
    fill.setAlphaF(0.08F);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(viewport()->rect()).adjusted(3, 3, -3, -3), 6, 6);
}

} // namespace veilkeep
