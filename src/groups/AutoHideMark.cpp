#include "groups/AutoHideMark.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace veilkeep {

AutoHideMark::AutoHideMark(std::string dataDirectory)
    : m_path(joinPath(std::move(dataDirectory), "AutoHideItemsAreOut")) {}

bool AutoHideMark::isSet() const {
    return itemExistsAt(m_path);
}

// One that is there already need not have lasted, so the directory is synced all the same.
Result<void> AutoHideMark::set() {
    const std::string directory = directoryOf(m_path);
    if (auto made = makeDirectories(directory, 0700); !made)
        return made;
    const UniqueFd file(retryOnInterrupt(
        [&] { return ::open(m_path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600); }));
    if (const int reason = errno; !file && !isSet())
        return Error::system("open", m_path, reason);
    return syncDirectory(directory);
}

Result<void> AutoHideMark::clear() {
    if (::unlink(m_path.c_str()) != 0)
        return errno == ENOENT ? Result<void>() : Error::system("unlink", m_path, errno);
    return syncDirectory(directoryOf(m_path));
}

} // namespace veilkeep
