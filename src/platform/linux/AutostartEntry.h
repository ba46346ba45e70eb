#pragma once

#include "core/environment/Bundle.h"
#include "platform/LoginItem.h"

#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// Launching at login by an entry in the user's autostart directory. An entry counts, whatever its name is,
// when its program is that of the bundle, links followed. Main thread.
class AutostartEntry : public LoginItem {
public:
    static constexpr const char* fileName = "com.ostrel.Veilkeep.desktop";

    explicit AutostartEntry(std::string bundle = applicationBundlePath());

    // An entry of the user's takes the place of the system's with the same name.
    bool shouldLaunchAtLogin() const override;

    // On: one whole entry of our own. Off: the first one that counts is removed, or where it is the system's
    // hidden; others stay.
    Result<void> setShouldLaunchAtLogin(bool launches) override;

    // The user's own entries of the bundle, on or off, in the order of their names.
    std::vector<std::string> ofUser() const;

private:
    struct Entry {
        std::string path;
        bool isUsers;
    };

    bool isOfBundle(const std::string& program) const;
    std::optional<bool>
    stateOf(const std::string& path) const; // on or off; nothing where it is not of the bundle
    std::vector<Entry> inEffect() const;    // by name, each name once
    std::optional<Entry> first() const;     // that counts and is on
    Result<void> write(bool launches, const std::string& path) const;

    const std::string m_program;
};

} // namespace veilkeep
