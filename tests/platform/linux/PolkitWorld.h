#pragma once

#include "tests/support/BackgroundProgram.h"
#include "tests/support/ScratchTree.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace veilkeep::test {

// A system with Veilkeep installed in it, for this process and its children: its own system bus, polkit with
// one rule more, the worker and the policy where they belong. Built of mounts that vanish with the process.
class PolkitWorld {
public:
    static constexpr const char* worker = "/usr/lib/veilkeep/Veilkeep.app/Contents/MacOS/cloakWorker";

    // The machine does not allow it.
    class NotAllowed : public std::runtime_error {
    public:
        using std::runtime_error::runtime_error;
    };

    // What this machine lacks for one; empty where it lacks nothing.
    static std::string whatIsMissing();

    // rule is what polkit's rules say of the action, "YES" and so on; empty for what the policy says itself.
    // Throws where it cannot be set up. The process is the first of its process numbers.
    PolkitWorld(const ScratchTree& tree, const std::string& rule);

private:
    std::unique_ptr<BackgroundProgram> m_bus, m_polkit;
};

} // namespace veilkeep::test
