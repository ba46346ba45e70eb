#pragma once

#include "platform/Applications.h"

#include <functional>
#include <string>

namespace veilkeep {

// The applications that the desktop files name, through GIO. Nothing is read before it is asked for, and
// nothing is ever stored: opening an item changes no defaults. What is started has a session of its own and
// nothing of this program's. Main thread.
class GioApplications : public Applications {
public:
    // A token by which the started program may take the focus, empty where there is none.
    using NewToken = std::function<std::string()>;
    // Told of an application that was asked over the bus and could not be started.
    using LateTrouble = std::function<void(const Error&)>;

    explicit GioApplications(LateTrouble lateTrouble = {}, NewToken newToken = {});

    ForItem applicationsFor(const std::string& path) override;
    std::vector<InstalledApplication> everyApplication() override;

    [[nodiscard]] Result<void> open(const std::string& path) override;
    [[nodiscard]] Result<void> openWith(const QString& identifier, const std::string& path) override;

private:
    LateTrouble m_lateTrouble;
    NewToken m_newToken;
};

} // namespace veilkeep
