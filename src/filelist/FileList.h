#pragma once

#include "core/records/File.h"
#include "filelist/FileIndex.h"

#include <QObject>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
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
    std::optional<std::size_t> positionOf(const ListedFile& file) const;

    // The first in list order whose bytes are equal; null where there is none.
    ListedFile withPath(std::string_view path) const;
    ListedFile withOriginalPath(std::string_view originalPath) const;

    std::size_t countOfGroup(std::int64_t groupID) const; // 0: all

    void assign(std::vector<File> files);
    ListedFile append(File file);
    void append(std::vector<File> files);
    void remove(std::span<const ListedFile> files); // in one pass; what is not in the list is passed over

    // First comes what lay at order[0]; each position stands in it once.
    void sort(std::span<const std::size_t> order);

    // Calls the function with the record to be changed, and answers what it answers. Until it
    // returns the record may not be found by what is new of it. What leaves its properties equal is no
    // change. A record that has left the list meanwhile may still be changed.
    template <class Change>
    auto change(const ListedFile& file, Change&& change) {
        const Changing changing(*this, file);
        return std::forward<Change>(change)(changing.file());
    }

    // The same with each of them, as one batch: who tells of something that it changes may wait for
    // batchEnded(), after which nothing is owed. No event is handled meanwhile.
    template <class Change>
    void changeEach(std::span<const ListedFile> files, Change&& change) {
        const Batch batch(*this);
        for (const ListedFile& file : files)
            this->change(file, change);
    }
    bool isInBatch() const { return m_batches > 0; }

    // Another number after each change: tells whether something is to be saved.
    std::uint64_t revision() const { return m_revision; }

signals:
    void wasAssigned();
    void filesAppended(std::size_t first, std::size_t count);
    void filesRemoved();
    void filesSorted();
    void fileChanged(const veilkeep::ListedFile& file);
    void batchEnded();

private:
    // Puts the record into the look-ups as it is in the end.
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
        PropertyDictionary m_before;
    };

    class Batch {
    public:
        explicit Batch(FileList& list) : m_list(list) { ++m_list.m_batches; }
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        FileList& m_list;
    };

    void add(std::vector<File> files);

    std::vector<ListedFile> m_files;
    FileIndex m_index;
    int m_changes = 0; // that are under way
    int m_batches = 0; // likewise
    std::uint64_t m_revision = 0;
};

} // namespace veilkeep
