#pragma once

#include "core/base/Error.h"
#include "core/environment/XdgDirectories.h"
#include "core/storage/UserDefaults.h"
#include "platform/linux/RequestClient.h"
#include "wiring/OwnList.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace veilkeep {

// Who works on a request, as status rows name it; nobody else does where it is not told.
enum class RequestOwner { Application, Other };

// Beside the caller. Nothing of it is owned.
struct RequestRouteOptions {
    // The caller gave the password before the list was taken; the next question for it has the same answer.
    std::function<void()> repeatPassword = [] {};
    std::function<void(RequestOwner)> ownerFound = [](RequestOwner) {};
    OwnListOptions list = {}; // where this program works on the request
};

// The path of cloakWorker; nothing where it cannot be run, which is told.
using TellTrouble = std::function<void(const std::string& path, const QString& reason)>;
std::optional<std::string> usableWorker(const TellTrouble& tell);

// Has a request worked on by whoever owns the list: by this program where nobody does, by the application
// where it runs. Main thread.
class RequestRoute {
public:
    // How long another veilkeepctl may take to finish.
    static constexpr std::chrono::seconds ownerWait{10};

    // Neither the caller nor the settings are owned.
    RequestRoute(RequestCaller& caller, UserDefaults& defaults, RequestRouteOptions options = {});

    RequestStatus run(const Request& request);

private:
    bool isPasswordGiven(const Request& request);
    RequestStatus waitForList(const Request& request);
    std::optional<RequestStatus> runInApplication(const Request& request);
    RequestStatus runHere(const Request& request, bool mayChange);
    RequestStatus runWithoutOwnership(const Request& request, const Error& error);

    RequestCaller& m_caller;
    UserDefaults& m_defaults;
    const RequestRouteOptions m_options;
    const OwnPlaces m_places = OwnPlaces::current();
    RequestClient m_application;
};

} // namespace veilkeep
