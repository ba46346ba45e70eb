#include <gio/gio.h> // before Qt, whose "signals" it has as a name

#include "platform/linux/DesktopTrash.h"

#include <cerrno>
#include <memory>

namespace veilkeep {
namespace {

struct Unref {
    void operator()(GFile* file) const { g_object_unref(file); }
};

struct FreeError {
    void operator()(GError* error) const { g_error_free(error); }
};

int errnoOf(const GError& error) {
    if (error.domain != G_IO_ERROR)
        return EIO;
    switch (error.code) {
    case G_IO_ERROR_NOT_SUPPORTED:
        return ENOTSUP;
    case G_IO_ERROR_NOT_FOUND:
        return ENOENT;
    case G_IO_ERROR_PERMISSION_DENIED:
        return EACCES;
    case G_IO_ERROR_NO_SPACE:
        return ENOSPC;
    case G_IO_ERROR_READ_ONLY:
        return EROFS;
    case G_IO_ERROR_FILENAME_TOO_LONG:
        return ENAMETOOLONG;
    default: // not ours to list
        return EIO;
    }
}

} // namespace

Result<void> DesktopTrash::moveToTrash(const std::string& path) {
    const std::unique_ptr<GFile, Unref> file(g_file_new_for_path(path.c_str()));
    GError* told = nullptr;
    const bool isDone = g_file_trash(file.get(), nullptr, &told) != FALSE;
    const std::unique_ptr<GError, FreeError> error(told);
    if (isDone)
        return {};
    return Error::system("trash", path, error ? errnoOf(*error) : EIO);
}

} // namespace veilkeep
