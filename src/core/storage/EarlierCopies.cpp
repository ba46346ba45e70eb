#include "core/storage/EarlierCopies.h"

#include "core/base/CHandles.h"
#include "core/base/PathText.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/storage/ReplaceFile.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

namespace veilkeep {
namespace {

// The texts that follow the prefix in the directory and have the shape of a date.
std::vector<std::string> datesAfter(const std::string& prefix) {
    const std::string_view namePrefix = lastPathComponent(prefix);
    const DirectoryStream directory(::opendir(directoryOf(prefix).c_str()));
    std::vector<std::string> dates;
    while (const dirent* entry = directory ? ::readdir(directory.get()) : nullptr) {
        std::string_view name = entry->d_name;
        if (!name.starts_with(namePrefix))
            continue;
        name.remove_prefix(namePrefix.size());
        if (isTimeTextForName(name))
            dates.emplace_back(name);
    }
    return dates;
}

} // namespace

EarlierCopies::EarlierCopies(std::string path) : m_path(std::move(path)), m_prefix(m_path + ".earlier-") {}

std::vector<std::string> EarlierCopies::list(TimePoint now) const {
    const std::string today = timeTextForName(now);
    std::vector<std::string> dates = datesAfter(m_prefix);
    std::sort(dates.begin(), dates.end(), [&](const std::string& left, const std::string& right) {
        const bool leftIsToCome = left > today;
        const bool rightIsToCome = right > today;
        return leftIsToCome == rightIsToCome ? left > right : rightIsToCome;
    });
    for (std::string& date : dates)
        date.insert(0, m_prefix);
    return dates;
}

bool EarlierCopies::isDue(TimePoint now) const {
    const std::string today = timeTextForName(now);
    const std::string hourAgo = timeTextForName(now - std::chrono::hours(1));
    const std::vector<std::string> dates = datesAfter(m_prefix);
    return std::none_of(dates.begin(), dates.end(),
                        [&](const std::string& date) { return date > hourAgo && date <= today; });
}

Result<std::string> EarlierCopies::take(TimePoint now) const {
    std::string copy = m_prefix + timeTextForName(now);
    if (::link(m_path.c_str(), copy.c_str()) == 0)
        return copy;
    if (errno == EEXIST)
        return Error::system("link", copy, EEXIST);
    const auto bytes = readWholeFile(m_path, SIZE_MAX); // a file system without second names
    if (!bytes)
        return bytes.error();
    if (const auto written = replaceFile(copy, *bytes); !written)
        return written.error();
    return copy;
}

Result<void> EarlierCopies::prune(std::size_t count, TimePoint now) const {
    const std::vector<std::string> copies = list(now);
    for (std::size_t i = count; i < copies.size(); ++i)
        if (::unlink(copies[i].c_str()) != 0 && errno != ENOENT)
            return Error::system("unlink", copies[i], errno);
    return {};
}

} // namespace veilkeep
