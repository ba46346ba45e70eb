#include "core/protocol/TrustedProgram.h"

#include "core/base/PathText.h"

#include <sys/stat.h>

#include <cerrno>

namespace veilkeep {
namespace {

constexpr uid_t root = 0;

Result<void> checkPart(const std::string& path, mode_t kind) {
    const auto fault = [&](const char* what) { return Error{ErrorCode::InvalidArgument, what, path, 0}; };
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        return Error::system("lstat", path, errno);
    if ((status.st_mode & S_IFMT) != kind)
        return fault("neither a file in its place nor a folder");
    if (status.st_uid != root)
        return fault("not owned by root");
    if ((status.st_mode & (S_IWGRP | S_IWOTH)) != 0)
        return fault("writable by others");
    return {};
}

} // namespace

Result<void> checkTrustedProgram(const std::string& path) {
    if (!path.starts_with('/') || cleanPath(path) != path)
        return Error{ErrorCode::InvalidArgument, "not a plain absolute path", path, 0};
    std::string part = path;
    Result<void> checked = checkPart(part, S_IFREG);
    while (checked && part != "/") {
        part = parentPath(part);
        checked = checkPart(part, S_IFDIR);
    }
    return checked;
}

} // namespace veilkeep
