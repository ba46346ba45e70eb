#pragma once

#include <cstdint>

namespace veilkeep {

// What the item list asks of the group list.
class CurrentGroup {
public:
    static constexpr std::int64_t allFiles = 0;

    virtual ~CurrentGroup() = default;

    virtual std::int64_t currentGroupID() const = 0;
    virtual std::int64_t allFilesGroup() const { return allFiles; }

protected:
    CurrentGroup() = default;
    CurrentGroup(const CurrentGroup&) = default;
    CurrentGroup& operator=(const CurrentGroup&) = default;
};

// Where no group was ever chosen.
class NoCurrentGroup : public CurrentGroup {
public:
    std::int64_t currentGroupID() const override { return allFiles; }
};

} // namespace veilkeep
