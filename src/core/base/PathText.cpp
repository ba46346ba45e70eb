#include "core/base/PathText.h"

namespace veilkeep {

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

std::string_view lastPathComponent(std::string_view path) {
    path = withoutTrailingSlashes(path);
    if (path == "/")
        return path;
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view parentPath(std::string_view path) {
    path = withoutTrailingSlashes(path);
    const auto slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return {};
    return withoutTrailingSlashes(path.substr(0, slash + 1));
}

std::string directoryOf(std::string_view path) {
    const std::string_view parent = parentPath(path);
    return parent.empty() ? "." : std::string(parent);
}

std::string joinPath(std::string_view directory, std::string_view component) {
    std::string path;
    path.reserve(directory.size() + component.size() + 1);
    path.append(directory);
    if (!path.empty() && path.back() != '/')
        path.push_back('/');
    path.append(component);
    return path;
}

std::vector<std::string_view> pathComponents(std::string_view path) {
    std::vector<std::string_view> components;
    if (path.starts_with('/'))
        components.push_back(path.substr(0, 1));
    std::size_t begin = 0;
    while (begin < path.size()) {
        const auto slash = path.find('/', begin);
        const auto end = slash == std::string_view::npos ? path.size() : slash;
        if (end > begin)
            components.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return components;
}

std::string cleanPath(std::string_view path) {
    std::vector<std::string_view> kept;
    const bool absolute = path.starts_with('/');
    for (const auto component : pathComponents(path)) {
        if (component == "/" || component == ".")
            continue;
        if (component == ".." && !kept.empty() && kept.back() != "..")
            kept.pop_back();
        else if (component != ".." || !absolute)
            kept.push_back(component);
    }
    std::string cleaned = absolute ? "/" : "";
    cleaned.reserve(path.size());
    for (const auto component : kept) {
        if (!cleaned.empty() && cleaned.back() != '/')
            cleaned.push_back('/');
        cleaned.append(component);
    }
    return cleaned;
}

bool isSameOrBelow(std::string_view path, std::string_view directory) {
    if (!path.starts_with(directory))
        return false;
    return path.size() == directory.size() || directory.ends_with('/') || path[directory.size()] == '/';
}

} // namespace veilkeep
