#include "widgets/preview/OpenedItem.h"

#include "core/base/SystemCall.h"
#include "core/filesystem/ItemAtPath.h"

#include <fcntl.h>

namespace veilkeep {
namespace {

std::string linkTo(const UniqueFd& descriptor) {
    return "/proc/self/fd/" + std::to_string(descriptor.get());
}

bool statusOf(const UniqueFd& descriptor, struct stat& status) {
    return ::fstatat(descriptor.get(), "", &status, AT_EMPTY_PATH) == 0;
}

// A handle that nothing can be read through.
UniqueFd openTargetOfLink(const std::string& path) {
    return UniqueFd(retryOnInterrupt([&] { return ::open(path.c_str(), O_PATH | O_CLOEXEC); }));
}

} // namespace

OpenedItem::OpenedItem(const std::string& path) {
    UniqueFd item = openItemAt(path);
    if (!item || !statusOf(item, m_status))
        return;
    m_kind = Kind::Other;
    if (S_ISLNK(m_status.st_mode)) {
        item = openTargetOfLink(path);
        if (!item || !statusOf(item, m_status))
            return;
    }
    if (S_ISDIR(m_status.st_mode))
        m_kind = Kind::Folder;
    if (!S_ISREG(m_status.st_mode))
        return;
    m_file = UniqueFd(retryOnInterrupt(
        [&] { return ::open(linkTo(item).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    m_kind = m_file ? Kind::RegularFile : Kind::Unreadable;
}

StoppableFile::StoppableFile(int descriptor, const WorkStop& stop) : m_stop(stop) {
    if (descriptor >= 0 && open(descriptor, QIODevice::ReadOnly, QFileDevice::DontCloseHandle))
        seek(0);
}

} // namespace veilkeep
