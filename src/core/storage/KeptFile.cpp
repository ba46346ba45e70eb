#include "core/storage/KeptFile.h"

#include "core/base/UniqueFd.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace veilkeep {
namespace {

// Claims the name with an empty file and renames over it: no rename of this kind overwrites a file.
int moveWithoutReplacing(const std::string& from, const std::string& to) {
    const UniqueFd claim(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!claim)
        return -1;
    if (::rename(from.c_str(), to.c_str()) == 0)
        return 0;
    const int error = errno;
    ::unlink(to.c_str());
    errno = error;
    return -1;
}

} // namespace

Result<KeptFile> keepUnderDatedName(const std::string& path, TimePoint now) {
    constexpr int maximumNames = 1000;
    const std::string dated = path + ".damaged-" + timeTextForName(now);
    for (int number = 1; number <= maximumNames; ++number) {
        const std::string name = number == 1 ? dated : dated + "-" + std::to_string(number);
        if (::link(path.c_str(), name.c_str()) == 0)
            return KeptFile{name, false};
        if (errno != EEXIST && moveWithoutReplacing(path, name) == 0)
            return KeptFile{name, true};
        if (errno != EEXIST)
            return Error::system("link", name, errno);
    }
    return Error::system("link", dated, EEXIST);
}

// Where an undoing step fails there is a name too many, and nothing lost.
void takeBack(const KeptFile& kept, const std::string& path, const FileStamp& before) {
    if (kept.path.empty())
        return;
    const auto present = fileStamp(path);
    if (!present)
        return;
    if (kept.moved && !*present)
        ::rename(kept.path.c_str(), path.c_str());
    if (!kept.moved && *present == before)
        ::unlink(kept.path.c_str());
}

} // namespace veilkeep
