#include "worker/traces/RecentlyUsedFile.h"

#include "core/base/FileUri.h"
#include "core/base/PathText.h"
#include "core/filesystem/FileStamp.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/storage/ReplaceFile.h"
#include "core/storage/TemporaryFile.h"
#include "worker/traces/BookmarkText.h"
#include "worker/traces/RecentlyUsedLock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::size_t maximumSize = std::size_t{256} << 20;
constexpr std::chrono::milliseconds lockWait{1000};

struct Look {
    std::optional<std::string> newText; // nothing where no bookmark goes
    FileStamp stamp;
};

bool isOwnRegularFile(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

Result<Look> lookAt(const std::string& target, TracedItems& items) {
    Look look;
    const auto text = readWholeFile(target, maximumSize, &look.stamp);
    if (!text)
        return text.error();
    auto rest = withoutBookmarks(*text, [&](const std::string& uri) {
        const auto path = pathOfFileUri(uri);
        return path && items.contains(*path);
    });
    if (!rest) {
        Error error = rest.error();
        error.path = target;
        return error;
    }
    look.newText = std::move(*rest);
    return look;
}

// False when the file has changed since the look.
Result<bool> replace(const std::string& target, const Look& look) {
    const std::string directoryPath = directoryOf(target);
    const UniqueFd directory(::open(directoryPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory)
        return Error::system("open", directoryPath, errno);
    struct stat status = {};
    if (::stat(target.c_str(), &status) != 0)
        return Error::system("stat", target, errno);
    TemporaryFile file(directory.get(), target);
    if (auto made = file.create(); !made)
        return made.error();
    if (auto written = file.write(*look.newText); !written)
        return written.error();
    if (auto given = file.giveAccessOf(status); !given)
        return given.error();
    const auto now = fileStamp(target);
    if (!now || *now != look.stamp)
        return false;
    if (auto placed = file.putInPlace(); !placed)
        return placed.error();
    return true;
}

} // namespace

Result<bool> removeFromRecentlyUsed(const std::string& file, TracedItems& items) {
    if (!isOwnRegularFile(file))
        return false;
    const auto target = replaceTarget(file);
    if (!target)
        return target.error();
    auto look = lookAt(*target, items);
    if (!look)
        return look.error();
    if (!look->newText)
        return false;
    // Not held where nobody gives it back. Programs that know no lock may write at any time.
    const RecentlyUsedLock lock(file, lockWait);
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        look = lookAt(*target, items);
        if (!look)
            return look.error();
        if (!look->newText)
            return true;
        if (auto replaced = replace(*target, *look); !replaced || *replaced)
            return replaced;
    }
    return Error::system("rename", *target, EBUSY);
}

} // namespace veilkeep
