#pragma once

#include <cstdint>
#include <string>

namespace veilkeep {

// Says whether this process may have something done with administrator rights, and asks the user for it where
// that is wanted. Calls block; while a question is open that is as long as a person needs.
class RightsAuthority {
public:
    enum class Interaction { Never, Allowed };

    enum class Answer : std::int32_t {
        Granted = 0,
        AskedEachRun, // granted by a question only, which each privileged run asks by itself
        Refused,      // not granted; without interaction also: not granted without a question
        Dismissed,    // the user closed the question
        NoAgent,      // there is nobody who could ask the user
        Unavailable,  // the authority cannot be reached or does not know the action
    };

    virtual ~RightsAuthority() = default;

    virtual Answer check(const std::string& action, Interaction interaction) = 0;

    // Takes back what the user granted for a while. What is granted without a question stays so.
    virtual Answer giveUp(const std::string& action) = 0;

protected:
    RightsAuthority() = default;
    RightsAuthority(const RightsAuthority&) = default;
    RightsAuthority& operator=(const RightsAuthority&) = default;
};

} // namespace veilkeep
