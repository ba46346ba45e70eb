#include "core/protocol/InProgressFolder.h"

#include "core/base/CHandles.h"
#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/storage/PropertyList.h"
#include "core/storage/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <tuple>

namespace veilkeep {
namespace {

struct DatedName {
    timespec changed;
    std::string name;

    bool operator<(const DatedName& other) const {
        return std::tie(changed.tv_sec, changed.tv_nsec, name) <
               std::tie(other.changed.tv_sec, other.changed.tv_nsec, other.name);
    }
};

// False for what is gone again.
bool isAbandoned(int directory, const char* name) {
    constexpr std::time_t day = 24 * 60 * 60; // seconds
    struct stat status = {};
    return TemporaryFile::isName(name) && ::fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
           std::time(nullptr) - status.st_mtim.tv_sec > day;
}

} // namespace

Result<void> InProgressFolder::create() const {
    return makeDirectories(m_path, 0700);
}

Result<std::vector<std::string>> InProgressFolder::entries() const {
    const DirectoryStream directory(::opendir(m_path.c_str()));
    if (!directory)
        return Error::system("opendir", m_path, errno);
    std::vector<DatedName> found;
    errno = 0;
    while (const dirent* entry = ::readdir(directory.get())) {
        struct stat status = {};
        if (entry->d_name[0] != '.' &&
            ::fstatat(::dirfd(directory.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            S_ISREG(status.st_mode)) // one that is gone again is no entry
            found.push_back({status.st_mtim, entry->d_name});
        errno = 0;
    }
    if (errno != 0)
        return Error::system("readdir", m_path, errno);
    std::sort(found.begin(), found.end());
    std::vector<std::string> names;
    for (DatedName& one : found)
        names.push_back(std::move(one.name));
    return names;
}

Result<PropertyDictionary> InProgressFolder::read(const std::string& entry) const {
    const std::string path = joinPath(m_path, entry);
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        return Error::system("lstat", path, errno);
    if (!S_ISREG(status.st_mode))
        return Error{ErrorCode::NotAFile, "read", path, 0};
    const Result<std::string> content = readWholeFile(path, maximumPropertyListSize);
    if (!content)
        return content.error();
    return parsePropertyList(*content);
}

Result<void> InProgressFolder::remove(const std::string& entry) const {
    const std::string path = joinPath(m_path, entry);
    if (::unlink(path.c_str()) != 0 && errno != ENOENT)
        return Error::system("unlink", path, errno);
    return {};
}

Result<void> InProgressFolder::removeAbandonedFiles() const {
    const DirectoryStream directory(::opendir(m_path.c_str()));
    if (!directory)
        return Error::system("opendir", m_path, errno);
    const int descriptor = ::dirfd(directory.get());
    Result<void> outcome;
    while (const dirent* entry = ::readdir(directory.get()))
        if (isAbandoned(descriptor, entry->d_name) && ::unlinkat(descriptor, entry->d_name, 0) != 0 &&
            errno != ENOENT)
            outcome = Error::system("unlink", joinPath(m_path, entry->d_name), errno);
    return outcome;
}

} // namespace veilkeep
