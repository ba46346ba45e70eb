#pragma once

#include "widgets/dialogs/FolderContents.h"

#include <QAbstractListModel>
#include <QIcon>

#include <functional>
#include <optional>

namespace veilkeep {

// What a panel shows of a folder. Names are bytes; what is shown of them is never acted on.
class FolderModel : public QAbstractListModel {
    Q_OBJECT

public:
    using IsShown = std::function<bool(const FolderEntry& entry)>;

    FolderModel(IsShown isWanted, QObject* parent);

    void setEntries(std::vector<FolderEntry> entries);
    void setHiddenShown(bool isShown);

    const FolderEntry& entryAt(int row) const { return m_entries[m_rows[static_cast<std::size_t>(row)]]; }
    std::optional<int> rowOf(const std::string& name) const;
    bool hasHidden(const std::string& name) const; // one that is there but not shown

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    bool isShown(const FolderEntry& entry) const;
    void reset();

    IsShown m_isWanted;
    bool m_areHiddenShown = false;
    std::vector<FolderEntry> m_entries;
    std::vector<std::size_t> m_rows; // in m_entries
    QIcon m_folder, m_file;
};

} // namespace veilkeep
