#pragma once

#include "core/base/Error.h"
#include "core/environment/XdgDirectories.h"
#include "ctl/RowOutput.h"
#include "ctl/TerminalCaller.h"
#include "platform/linux/RequestClient.h"

#include <chrono>
#include <optional>
#include <string>

namespace veilkeep {

// The path of cloakWorker; nothing where it cannot be run, which is told.
std::optional<std::string> usableWorker(TerminalOutput& output);

// Has a request worked on by whoever owns the list: by this program where nobody does, by the application
// where it runs. Nothing of what it is given is owned. Main thread.
class RequestRoute {
public:
    // How long another veilkeepctl may take to finish.
    static constexpr std::chrono::seconds ownerWait{10};

    RequestRoute(TerminalOutput& output, TerminalCaller& caller, RowOutput& rows);

    RequestStatus run(const Request& request);

private:
    bool isPasswordGiven(const Request& request);
    RequestStatus waitForList(const Request& request);
    std::optional<RequestStatus> runInApplication(const Request& request);
    RequestStatus runHere(const Request& request, bool mayChange);
    RequestStatus runWithoutOwnership(const Request& request, const Error& error);

    TerminalOutput& m_output;
    TerminalCaller& m_caller;
    RowOutput& m_rows;
    const OwnPlaces m_places = OwnPlaces::current();
    RequestClient m_application;
};

} // namespace veilkeep
