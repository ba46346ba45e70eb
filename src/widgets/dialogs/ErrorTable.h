#pragma once

#include "alerts/Alert.h"

#include <QAbstractTableModel>
#include <QTableView>

#include <vector>

namespace veilkeep {

class ErrorTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Name, Reason, Columns };

    explicit ErrorTableModel(std::vector<ErrorEntry> errors, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ErrorEntry> m_errors;
};

// What failed in a batch, a row for each item. Copy takes the selected rows, all where none is selected.
class ErrorTable : public QTableView {
    Q_OBJECT

public:
    explicit ErrorTable(const std::vector<ErrorEntry>& errors, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QString textToCopy() const; // a line for each row, the columns parted by tabs

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void copy();
};

} // namespace veilkeep
