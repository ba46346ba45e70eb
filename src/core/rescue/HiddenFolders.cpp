#include "core/rescue/HiddenFolders.h"

#include "core/base/PathText.h"

#include <algorithm>
#include <numeric>

namespace veilkeep {
namespace {

std::vector<std::string> splitNames(std::string_view names) {
    std::vector<std::string> split;
    for (; !names.empty(); names.remove_prefix(split.back().size() + 1))
        split.emplace_back(names.substr(0, names.find('\0')));
    return split;
}

std::string joinedNames(const std::vector<std::string>& split) {
    std::string names;
    for (const std::string& name : split)
        names.append(name).push_back('\0');
    return names;
}

std::string sortedOnce(std::string_view names) {
    std::vector<std::string> split = splitNames(names);
    std::ranges::sort(split);
    split.erase(std::unique(split.begin(), split.end()), split.end());
    return joinedNames(split);
}

// Among names in order, each ended by a NUL: there may be a million.
bool isAmong(std::string_view names, std::string_view name) {
    while (!names.empty()) {
        const std::size_t before = names.substr(0, names.size() / 2).rfind('\0');
        const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
        const std::size_t end = names.find('\0', begin);
        const std::string_view middle = names.substr(begin, end - begin);
        if (middle == name)
            return true;
        names = middle < name ? names.substr(end + 1) : names.substr(0, begin);
    }
    return false;
}

auto depthOf(std::string_view path) {
    return std::ranges::count(path, '/');
}

} // namespace

void HiddenFolders::add(std::string_view itemPath) {
    const std::string_view folder = parentPath(itemPath);
    if (m_last == m_folders.end() || m_last->first != folder)
        m_last = m_folders.try_emplace(std::string(folder)).first;
    m_last->second.append(lastPathComponent(itemPath)).push_back('\0');
}

bool HiddenFolders::contains(std::string_view itemPath) const {
    const auto folder = m_folders.find(parentPath(itemPath));
    return folder != m_folders.end() && isAmong(folder->second, lastPathComponent(itemPath));
}

void HiddenFolders::arrange() {
    m_order.clear();
    for (auto& folder : m_folders) {
        folder.second = sortedOnce(folder.second);
        m_order.push_back(&folder);
    }
    std::ranges::stable_sort(m_order, [](const auto* one, const auto* other) {
        return depthOf(one->first) > depthOf(other->first);
    });
}

std::size_t HiddenFolders::itemCount() const {
    return std::accumulate(
        m_order.begin(), m_order.end(), std::size_t{0}, [](std::size_t sum, const auto* folder) {
            return sum + static_cast<std::size_t>(std::ranges::count(folder->second, '\0'));
        });
}

void HiddenFolders::forEach(const std::function<bool(const HiddenFolder&)>& function) const {
    for (const auto* folder : m_order)
        if (!function({folder->first, splitNames(folder->second)}))
            return;
}

} // namespace veilkeep
