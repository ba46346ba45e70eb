#include "core/filesystem/ResolvedPath.h"

#include "core/base/PathText.h"

#include <unistd.h>

#include <cstdlib>
#include <memory>

namespace veilkeep {
namespace {

struct Free {
    void operator()(char* memory) const { std::free(memory); }
};

// One readlink per component, which in a process that has not touched /proc yet is several times as fast as
// asking /proc/self/fd for the name of an open directory.
std::optional<std::string> realPath(const std::string& path) {
    const std::unique_ptr<char, Free> resolved(::realpath(path.c_str(), nullptr));
    return resolved ? std::optional<std::string>(resolved.get()) : std::nullopt;
}

bool isLink(const std::string& path) {
    char target = 0;
    return ::readlink(path.c_str(), &target, 1) >= 0;
}

} // namespace

std::optional<std::string> withResolvedParent(const std::string& path) {
    if (path.empty())
        return std::nullopt;
    const std::string_view parent = parentPath(path);
    const std::string_view last = lastPathComponent(path);
    if (last == "/")
        return std::string(last);
    const auto resolved = realPath(parent.empty() ? "." : std::string(parent));
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
