#pragma once

#include "core/base/Result.h"
#include "core/base/UniqueFd.h"

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace veilkeep {

// A new file of mode 0600 (".veilkeep-" and random digits) that is to take the place of another in an open
// directory. It is removed again unless it has.
class TemporaryFile {
public:
    // Whether a file of this name is one, perhaps of a process that was killed.
    static bool isName(std::string_view name);

    // The target's path is what errors name; it must outlive this.
    TemporaryFile(int directory, const std::string& target) : m_directory(directory), m_target(target) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    Result<void> create();
    Result<void> write(std::string_view bytes);
    Result<void> sync();

    // Group and mode of the file that it replaces. Where the group cannot be had, nobody but the owner may
    // use it.
    Result<void> giveAccessOf(const struct stat& replaced);

    // Closes it and gives it the target's name, whatever stood there before.
    Result<void> putInPlace();

private:
    Error failed(const char* operation) const;

    int m_directory;
    const std::string& m_target;
    std::string m_name; // empty while there is no file to remove
    UniqueFd m_file;
};

} // namespace veilkeep
