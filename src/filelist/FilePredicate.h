#pragma once

#include "core/records/File.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>

namespace veilkeep {

// Which records a filter shows. What is absent sets no condition.
struct FilePredicate {
    std::optional<std::int32_t> state;
    std::optional<std::int64_t> groupID;
    QString nameSearch; // with "*" and "?" as wildcards, found anywhere in the name, case ignored

    // "(properties.State = 1) and (properties.GroupID = 3) and (properties.Name like[c] '*tax*')"; empty
    // where there is no condition.
    QString text() const;

    bool operator==(const FilePredicate&) const = default;
};

} // namespace veilkeep
