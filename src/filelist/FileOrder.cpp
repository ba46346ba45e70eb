#include "filelist/FileOrder.h"

#include "core/records/FileSystemHelpers.h"

#include <QCollator>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

// A text made ready for comparing once, which is most of the work.
struct TextKey {
    QCollatorSortKey collated;
    std::string_view bytes;

    bool operator<(const TextKey& other) const {
        const int order = collated.compare(other.collated);
        return order != 0 ? order < 0 : bytes < other.bytes;
    }
};

template <class Key>
std::vector<std::size_t> orderOf(const std::vector<Key>& keys, bool ascending) {
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, [&](std::size_t left, std::size_t right) {
        return ascending ? keys[left] < keys[right] : keys[right] < keys[left];
    });
    return order;
}

template <class KeyOf>
auto keysOf(const std::vector<ListedFile>& files, KeyOf keyOf) {
    std::vector<decltype(keyOf(*files.front()))> keys;
    keys.reserve(files.size());
    for (const ListedFile& file : files)
        keys.push_back(keyOf(*file));
    return keys;
}

template <class TextOf>
std::vector<TextKey> textKeysOf(const std::vector<ListedFile>& files, TextOf textOf) {
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return keysOf(files, [&](const File& file) {
        const std::string_view text = textOf(file);
        return TextKey{collator.sortKey(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))),
                       text};
    });
}

// Without a size first.
std::pair<bool, std::uint64_t> sizeKey(const File& file) {
    return {file.size() != unknownFileSize, file.size()};
}

} // namespace

std::vector<std::size_t> fileOrder(const std::vector<ListedFile>& files, SortKey key, bool ascending) {
    switch (key) {
    case SortKey::Name:
        return orderOf(textKeysOf(files, [](const File& file) { return file.name(); }), ascending);
    case SortKey::Place:
        return orderOf(textKeysOf(files, [](const File& file) { return file.originalPath(); }), ascending);
    case SortKey::Size:
        return orderOf(keysOf(files, sizeKey), ascending);
    case SortKey::State:
        return orderOf(keysOf(files, [](const File& file) { return file.state(); }), ascending);
    }
    return {};
}

} // namespace veilkeep
