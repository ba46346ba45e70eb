#include "widgets/dialogs/ErrorTable.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace veilkeep {
namespace {

// On one line, whatever the name is.
QString onOneLine(QString text) {
    for (QChar& character : text)
        if (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator)
            character = u' ';
    return text;
}

QString plainToolTip(const QString& text) {
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(text.toHtmlEscaped());
}

} // namespace

ErrorTableModel::ErrorTableModel(std::vector<ErrorEntry> errors, QObject* parent)
    : QAbstractTableModel(parent), m_errors(std::move(errors)) {}

int ErrorTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_errors.size());
}

int ErrorTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns;
}

QVariant ErrorTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ErrorEntry& entry = m_errors[static_cast<std::size_t>(index.row())];
    const QString& text = index.column() == Name ? entry.fileName : entry.errorCode;
    if (role == Qt::DisplayRole)
        return onOneLine(text);
    return role == Qt::ToolTipRole ? QVariant(plainToolTip(text)) : QVariant();
}

QVariant ErrorTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignLeading | Qt::AlignVCenter);
    if (role == Qt::DisplayRole)
        return section == Name ? tr("Name") : tr("Error");
    return {};
}

ErrorTable::ErrorTable(const std::vector<ErrorEntry>& errors, QWidget* parent) : QTableView(parent) {
    setModel(new ErrorTableModel(errors, this));
    setAccessibleName(tr("Errors"));
    setSelectionBehavior(SelectRows);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    auto* const copyAction = new QAction(tr("Copy"), this);
    connect(copyAction, &QAction::triggered, this, [this] { copy(); });
    addAction(copyAction);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

QSize ErrorTable::sizeHint() const {
    constexpr int width = 520, fewestRows = 3, mostRows = 8;
    const int rows = std::clamp(model()->rowCount(), fewestRows, mostRows);
    return {width, horizontalHeader()->sizeHint().height() + rows * verticalHeader()->defaultSectionSize() +
                       2 * frameWidth()};
}

QString ErrorTable::textToCopy() const {
    const bool isAnySelected = selectionModel()->hasSelection();
    QString text;
    for (int row = 0; row < model()->rowCount(); ++row)
        if (!isAnySelected || selectionModel()->isRowSelected(row))
            text += QStringLiteral("%1\t%2\n")
                        .arg(model()->index(row, ErrorTableModel::Name).data().toString(),
                             model()->index(row, ErrorTableModel::Reason).data().toString());
    return text;
}

void ErrorTable::copy() {
    QGuiApplication::clipboard()->setText(textToCopy());
}

void ErrorTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        return copy();
    QTableView::keyPressEvent(event);
}

void ErrorTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    constexpr int share = 2; // of the width; the reasons are longer as a rule
    if (event->oldSize().width() != event->size().width())
        setColumnWidth(ErrorTableModel::Name, viewport()->width() * share / 5);
}

} // namespace veilkeep
