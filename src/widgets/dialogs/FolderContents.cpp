#include "widgets/dialogs/FolderContents.h"

#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"
#include "filelist/Texts.h"

#include <QCollator>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace veilkeep {
namespace {

bool isFolder(int directory, const dirent& entry) {
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status {};
    return ::fstatat(directory, entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

void sort(std::vector<FolderEntry>& entries) {
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<std::pair<QCollatorSortKey, FolderEntry>> keyed;
    keyed.reserve(entries.size());
    for (FolderEntry& entry : entries) {
        QCollatorSortKey key = collator.sortKey(shownPath(entry.name));
        keyed.emplace_back(std::move(key), std::move(entry));
    }
    std::ranges::stable_sort(keyed, [](const auto& one, const auto& other) {
        if (one.second.isFolder != other.second.isFolder)
            return one.second.isFolder;
        const int order = one.first.compare(other.first);
        return order != 0 ? order < 0 : one.second.name < other.second.name;
    });
    std::ranges::transform(keyed, entries.begin(), [](auto& each) { return std::move(each.second); });
}

} // namespace

Result<std::vector<FolderEntry>> contentsOfFolder(const std::string& path) {
    UniqueFd descriptor = openDirectoryInPieces(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (!descriptor)
        return Error::system("open", path, errno);
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::fdopendir(descriptor.get()), &::closedir);
    if (!directory)
        return Error::system("fdopendir", path, errno);
    static_cast<void>(descriptor.release());
    std::vector<FolderEntry> entries;
    errno = 0;
    while (const dirent* const entry = ::readdir(directory.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            entries.push_back({std::string(name), isFolder(::dirfd(directory.get()), *entry)});
        errno = 0;
    }
    if (errno != 0)
        return Error::system("readdir", path, errno);
    sort(entries);
    return entries;
}

// The thread is left to itself: a network folder may hold it for minutes.
void FolderReader::read(const std::string& path) {
    const int number = ++m_asked;
    const auto contents = std::make_shared<std::optional<Contents>>();
    QThread* const thread = QThread::create([contents, path] { *contents = contentsOfFolder(path); });
    connect(thread, &QThread::finished, this, [this, number, contents, path] {
        if (number == m_asked)
            emit done(path, **contents);
    });
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

} // namespace veilkeep
