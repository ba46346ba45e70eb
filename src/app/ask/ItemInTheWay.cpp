#include "app/ask/ItemInTheWay.h"

#include <sys/stat.h>

#include <cerrno>
#include <charconv>
#include <type_traits>

namespace veilkeep {
namespace {

template <class Number>
bool readNumber(std::string_view text, Number& number) {
    static_assert(std::is_unsigned_v<Number>);
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

} // namespace

std::optional<ItemInTheWay> ItemInTheWay::from(const std::string& path, std::string_view device,
                                               std::string_view inode) {
    ItemInTheWay item;
    item.path = path;
    if (!path.starts_with('/') || !readNumber(device, item.device) || !readNumber(inode, item.inode))
        return std::nullopt;
    return item;
}

Result<void> ItemInTheWay::moveTo(Trash& trash) const {
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        return Error::system("lstat", path, errno);
    if (status.st_dev != device || status.st_ino != inode)
        return Error::system("compare", path, ESTALE);
    return trash.moveToTrash(path);
}

} // namespace veilkeep
