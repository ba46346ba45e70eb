#pragma once

#include "groups/GroupViewController.h"

#include <QString>

#include <optional>
#include <string>

namespace veilkeep {

// A name for a group as the user has typed it.
struct EnteredName {
    enum class Fault { Empty, TooLong, NotOneLine, Taken };
    static constexpr qsizetype longest = 100; // UTF-16 code units

    // As it is stored. Whoever leaves what editableName() gave keeps the name as it is, of whatever bytes,
    // and however many rows have it.
    EnteredName(const GroupViewController& groups, const Group& group, const QString& typed);

    static QString editableName(const Group& group);
    static QString faultText(Fault fault);

    std::string name;
    std::optional<Fault> fault;
};

} // namespace veilkeep
