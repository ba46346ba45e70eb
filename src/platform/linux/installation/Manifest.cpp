#include "platform/linux/installation/Manifest.h"

#include "core/base/FileUri.h"
#include "core/base/PathText.h"
#include "core/base/TakeUntil.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/storage/FileDigest.h"

#include <sys/stat.h>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr std::string_view firstLine = "Veilkeep installation 1";
constexpr std::string_view fileWord = "file", linkWord = "link", directoryWord = "directory";

std::string encoded(const std::string& path) {
    return percentEncoded(path, UriSpelling::GLib);
}

std::optional<std::string> decoded(std::string_view text) {
    return pathOfFileUri("file://" + std::string(text));
}

Error damaged() {
    return Error::damaged("read what was installed");
}

} // namespace

std::string Manifest::text() const {
    std::string text = std::string(firstLine) + "\n";
    for (const Item& item : items)
        text += item.kind == Item::Kind::File
                    ? std::string(fileWord) + " " + item.mark + " " + encoded(item.path) + "\n"
                    : std::string(linkWord) + " " + encoded(item.mark) + " " + encoded(item.path) + "\n";
    for (const std::string& directory : directories)
        text += std::string(directoryWord) + " " + encoded(directory) + "\n";
    return text;
}

Result<Manifest> Manifest::parse(std::string_view text) {
    if (takeUntil('\n', text) != firstLine)
        return damaged();
    Manifest manifest;
    while (!text.empty()) {
        std::string_view line = takeUntil('\n', text);
        const std::string_view word = takeUntil(' ', line);
        const std::string_view mark = word == directoryWord ? std::string_view() : takeUntil(' ', line);
        const auto path = decoded(line);
        const auto target = word == linkWord ? decoded(mark) : std::string(mark);
        if (!path || !target || (word != fileWord && word != linkWord && word != directoryWord))
            return damaged();
        if (word == directoryWord)
            manifest.directories.insert(*path);
        else
            manifest.items.push_back(
                {word == fileWord ? Item::Kind::File : Item::Kind::Link, *path, *target});
    }
    return manifest;
}

const Manifest::Item* Manifest::find(const std::string& path) const {
    const auto found = std::ranges::find(items, path, &Item::path);
    return found == items.end() ? nullptr : &*found;
}

bool Manifest::hasUnchanged(const std::string& path) const {
    return std::ranges::any_of(items,
                               [&](const Item& item) { return item.path == path && isUnchanged(item); });
}

void Manifest::add(const Manifest& other) {
    for (const Item& item : other.items)
        if (std::ranges::find(items, item) == items.end())
            items.push_back(item);
    directories.insert(other.directories.begin(), other.directories.end());
}

Result<void> Manifest::addTree(const std::string& tree, const std::string& place) {
    if (isDirectoryAt(tree)) {
        directories.insert(place);
        for (const std::string& name : entryNamesIn(tree))
            if (auto added = addTree(joinPath(tree, name), joinPath(place, name)); !added)
                return added;
        return {};
    }
    const auto digest = fileDigest(tree);
    if (!digest)
        return digest.error();
    items.push_back({Item::Kind::File, place, *digest});
    return {};
}

bool isUnchanged(const Manifest::Item& item) {
    if (item.kind == Manifest::Item::Kind::Link)
        return readLink(item.path) == item.mark;
    struct stat status = {};
    return ::lstat(item.path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           fileDigest(item.path).value_or(std::string()) == item.mark;
}

} // namespace veilkeep
