#include "worker/traces/Thumbnails.h"

#include "core/base/PathText.h"
#include "core/environment/TracePlaces.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/DirectoryWalker.h"
#include "core/names/BaseCloakLogic.h"
#include "core/names/HiddenName.h"
#include "core/names/TraceNames.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace veilkeep {
namespace {

// All thumbnails by name. Reading the directories once is cheaper than asking for each name that could be
// there. After that, any thread.
class ThumbnailNames {
public:
    explicit ThumbnailNames(const std::string& thumbnails) : m_directories(thumbnailDirectories(thumbnails)) {
        for (const std::string& directory : m_directories)
            for (std::string& name : entryNamesIn(directory))
                m_names.insert(std::move(name));
    }

    bool isEmpty() const { return m_names.empty(); }

    void removeOf(const std::string& path) {
        for (const std::string& name : thumbnailNamesOf(path))
            if (m_names.contains(name))
                for (const std::string& directory : m_directories)
                    remove(joinPath(directory, name));
    }

    Result<bool> outcome() const {
        if (const int error = m_error)
            return Error::system("unlink", {}, error);
        return m_anyRemoved.load();
    }

private:
    void remove(const std::string& file) {
        if (::unlink(file.c_str()) == 0)
            m_anyRemoved = true;
        else if (errno != ENOENT)
            m_error = errno;
    }

    std::vector<std::string> m_directories;
    std::unordered_set<std::string> m_names;
    std::atomic<bool> m_anyRemoved = false;
    std::atomic<int> m_error = 0;
};

class WalkBelow : public DirectoryVisitor {
public:
    WalkBelow(ThumbnailNames& thumbnails, const TracedItems::Item& item)
        : m_thumbnails(thumbnails), m_item(item) {}

    void visit(OpenDirectory& directory) override {
        const std::string below = directory.path();
        while (const DirectoryEntry* entry = directory.next()) {
            const std::string relative = joinPath(below, entry->name);
            for (const std::string& path : m_item.paths)
                forget(joinPath(path, relative));
            if (entry->type == DT_DIR)
                directory.descend();
        }
    }
    void unreadable(const std::string&, int) override {} // what may not be read has no thumbnails

private:
    void forget(const std::string& path) {
        m_thumbnails.removeOf(path);
        if (path.find(hiddenDirectoryName) != std::string::npos)
            m_thumbnails.removeOf(BaseCloakLogic::constructOriginalFullFileName(path));
    }

    ThumbnailNames& m_thumbnails;
    const TracedItems::Item& m_item;
};

} // namespace

Result<bool> removeThumbnails(const std::string& thumbnails, const TracedItems& items) {
    ThumbnailNames names(thumbnails);
    if (names.isEmpty())
        return false;
    for (const TracedItems::Item& item : items.items()) {
        for (const std::string& path : item.paths)
            names.removeOf(path);
        WalkBelow below(names, item);
        if (item.isDirectory)
            (void)DirectoryWalker().walk(item.place, below); // nothing is left of it where that fails
    }
    return names.outcome();
}

} // namespace veilkeep
