#pragma once

#include "filelist/FilesViewController.h"
#include "widgets/filetable/RowChanges.h"
#include "widgets/preview/Previews.h"

#include <QAbstractTableModel>
#include <QTimer>

#include <cstddef>
#include <unordered_set>
#include <vector>

namespace veilkeep {

// The rows of the files table: what FilesController shows, as it was at the last update. Changes are taken
// over together, once the event loop turns or, where that takes long, a little later; who compares rows with
// FilesController's calls update() before. Nothing is read from the disk here. Owned by FilesTableView; main
// thread.
class FilesTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    FilesTableModel(FilesViewController& files, Previews& previews, QObject* parent = nullptr);

    void update(); // now
    const ListedFile& fileAt(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    int rowOf(const ListedFile& file) const; // -1: not shown
    const std::vector<ListedFile>& files() const { return m_rows; }
    bool isUpdating() const { return m_isUpdating; } // rows come and go

    // What is shown of a row, ready to be painted.
    QString name(const File& file) const;
    QString place(const File& file) const;
    QString sizeText(const File& file) const;
    QString trouble(const ListedFile& file) const; // of a broken item: why it is not there; else empty
    QString accessibleText(const ListedFile& file) const;
    Previews& previews() const { return m_previews; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QModelIndexList match(const QModelIndex& start, int role, const QVariant& value, int hits = 1,
                          Qt::MatchFlags flags = Qt::MatchFlags(Qt::MatchStartsWith |
                                                                Qt::MatchWrap)) const override;

signals:
    void updated(); // after each update, also where no row has changed

private:
    void noteChangeOf(const ListedFile& file);
    void noteChangeOfAll();
    void schedule();
    void takeOverRows();
    void apply(const RowChanges& changes, const std::vector<ListedFile>& now);
    void tellChangedRows();

    FilesViewController& m_files;
    Previews& m_previews;
    std::vector<ListedFile> m_rows;
    std::unordered_set<ListedFile> m_changed; // of which rows may be shown
    bool m_isUpdating = false;
    bool m_areAllChanged = false;
    bool m_areRowsStale = true;
    qint64 m_lastDuration = 0; // of an update, in milliseconds
    QTimer m_updating;
};

} // namespace veilkeep
