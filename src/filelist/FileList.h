#pragma once

#include "core/records/File.h"

#include <QObject>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace veilkeep {

// A record of the list. It is changed through FileList::change alone.
using ListedFile = std::shared_ptr<const File>;

// The records in their order, found by path and by original path in constant time and counted for each group.
// Owned by FilesViewController; main thread.
class FileList : public QObject {
    Q_OBJECT
public:
    std::size_t size() const { return m_files.size(); }
    const std::vector<ListedFile>& all() const { return m_files; }
    bool contains(const ListedFile& file) const;

    // The first in list order whose bytes are equal; null where there is none.
    ListedFile withPath(std::string_view path) const;
    ListedFile withOriginalPath(std::string_view originalPath) const;

    std::size_t countOfGroup(std::int64_t groupID) const; // 0: all

    void assign(std::vector<File> files);
    ListedFile append(File file);
    void append(std::vector<File> files);
    void remove(std::span<const ListedFile> files); // in one pass; what is not in the list is passed over

    // Calls the function with the record to be changed, and answers what it answers. A record that has left
    // the list meanwhile may still be changed.
    template <class Change>
    auto change(const ListedFile& file, Change&& change) {
        const Changing changing(*this, file);
        return std::forward<Change>(change)(changing.file());
    }

    // Another number after each change: tells whether something is to be saved.
    std::uint64_t revision() const { return m_revision; }

signals:
    void wasAssigned();
    void filesAppended(std::size_t first, std::size_t count);
    void filesRemoved();
    void fileChanged(const veilkeep::ListedFile& file);

private:
    // Takes the record out of the look-ups and puts it back as it is then.
    class Changing {
    public:
        Changing(FileList& list, const ListedFile& file);
        ~Changing();
        Changing(const Changing&) = delete;
        Changing& operator=(const Changing&) = delete;
        File& file() const;

    private:
        FileList& m_list;
        ListedFile m_file;
    };

    std::vector<ListedFile> m_files;
    std::uint64_t m_revision = 0;
};

} // namespace veilkeep
