#include "widgets/dialogs/FolderModel.h"

#include "filelist/Texts.h"

#include <QApplication>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace veilkeep {

FolderModel::FolderModel(IsShown isWanted, QObject* parent)
    : QAbstractListModel(parent),
      m_isWanted(std::move(isWanted)),
      m_folder(QApplication::style()->standardIcon(QStyle::SP_DirIcon)),
      m_file(QApplication::style()->standardIcon(QStyle::SP_FileIcon)) {}

void FolderModel::setEntries(std::vector<FolderEntry> entries) {
    beginResetModel();
    m_entries = std::move(entries);
    reset();
    endResetModel();
}

void FolderModel::setHiddenShown(bool isShown) {
    beginResetModel();
    m_areHiddenShown = isShown;
    reset();
    endResetModel();
}

void FolderModel::reset() {
    m_rows.clear();
    for (std::size_t number = 0; number < m_entries.size(); ++number)
        if (isShown(m_entries[number]))
            m_rows.push_back(number);
}

bool FolderModel::isShown(const FolderEntry& entry) const {
    return m_isWanted(entry) && (m_areHiddenShown || !entry.isHidden());
}

std::optional<int> FolderModel::rowOf(const std::string& name) const {
    for (int row = 0; row < rowCount(); ++row)
        if (entryAt(row).name == name)
            return row;
    return std::nullopt;
}

bool FolderModel::hasHidden(const std::string& name) const {
    return !rowOf(name) && std::ranges::find(m_entries, name, &FolderEntry::name) != m_entries.end();
}

int FolderModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant FolderModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const FolderEntry& entry = entryAt(index.row());
    if (role == Qt::DisplayRole)
        return shownPath(entry.name);
    if (role == Qt::DecorationRole)
        return entry.isFolder ? m_folder : m_file;
    if (role == Qt::AccessibleDescriptionRole)
        return entry.isFolder ? tr("Folder") : tr("File");
    return {};
}

} // namespace veilkeep
