#pragma once

#include "core/base/Result.h"
#include "core/base/UniqueFd.h"

#include <chrono>
#include <string>

namespace veilkeep {

// The right to change the lists, held by one process of a user at a time: a lock on an open file (".lock") in
// the data directory, which ends with the process however that ends. Any thread.
class ListOwnership {
public:
    // Makes the directory where it is missing. EWOULDBLOCK when another process held it all the time; other
    // errors where the directory cannot be written or its file system has no locks: then nobody may change
    // the lists.
    static Result<ListOwnership> take(const std::string& dataDirectory, std::chrono::milliseconds wait);

private:
    explicit ListOwnership(UniqueFd file) : m_file(std::move(file)) {}

    UniqueFd m_file;
};

} // namespace veilkeep
