#include "core/filesystem/ResolvedPath.h"

#include "core/base/CHandles.h"
#include "core/base/PathText.h"

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>

namespace veilkeep {
namespace {

bool isLink(const std::string& path) {
    char target = 0;
    return ::readlink(path.c_str(), &target, 1) >= 0;
}

} // namespace

// One readlink per component, which in a process that has not touched /proc yet is several times as fast as
// asking /proc/self/fd for the name of an open directory.
std::optional<std::string> realPath(const std::string& path) {
    const MallocedPointer<char> resolved(::realpath(path.c_str(), nullptr));
    return resolved ? std::optional<std::string>(resolved.get()) : std::nullopt;
}

std::optional<std::string> readLink(const std::string& path) {
    char text[PATH_MAX];
    const ssize_t length = ::readlink(path.c_str(), text, sizeof text);
    if (length == sizeof text)
        errno = ENAMETOOLONG;
    if (length < 0 || length == sizeof text)
        return std::nullopt;
    return std::string(text, static_cast<std::size_t>(length));
}

std::optional<std::string> withResolvedParent(const std::string& path) {
    if (path.empty())
        return std::nullopt;
    const std::string_view last = lastPathComponent(path);
    if (last == "/")
        return std::string(last);
    const auto resolved = realPath(directoryOf(path));
    return resolved ? std::optional(joinPath(*resolved, last)) : std::nullopt;
}

const std::string& LinkResolver::resolved(const std::string& path) {
    const auto known = m_known.find(path);
    if (known != m_known.end())
        return known->second;
    std::string answer = path;
    if (path.size() > 1) {
        answer = joinPath(resolved(std::string(parentPath(path))), lastPathComponent(path));
        if (isLink(answer))
            answer = realPath(answer).value_or(answer);
    }
    return m_known.emplace(path, std::move(answer)).first->second;
}

} // namespace veilkeep
