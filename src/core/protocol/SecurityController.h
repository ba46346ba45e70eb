#pragma once

#include "core/process/ChildProcess.h"
#include "core/protocol/CloakWorkerResult.h"
#include "core/protocol/RightsAuthority.h"
#include "core/storage/UserDefaults.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace veilkeep {

// Holds the right to move items as administrator and runs the worker with it, by way of pkexec. Each failure
// has a line of its own in the log, without the item's name. Made once, by the program's wiring; belongs to
// one thread, on which the tick is called. That thread must outlive every run: pkexec asks to be ended with
// the thread that started it, so that no question stays behind; once the worker runs that no longer holds.
class SecurityController {
public:
    // What is asked of the authority.
    static constexpr const char* moveAction = "com.ostrel.Veilkeep.move";

    // The worker leaves its record of a move that it cannot tell in inProgressFolder.
    SecurityController(RightsAuthority& authority, UserDefaults& defaults, std::string inProgressFolder,
                       Tick tick = {}, std::string pkexec = "/usr/bin/pkexec");
    ~SecurityController();
    SecurityController(const SecurityController&) = delete;
    SecurityController& operator=(const SecurityController&) = delete;

    // Asked while pkexec asks the user: true ends that question, as if the user had dismissed it.
    void setShouldEnd(std::function<bool()> shouldEnd) { m_shouldEnd = std::move(shouldEnd); }

    // The one that was made, null before and after its life. For the wiring only.
    static SecurityController* sharedInstance();

    // The user default "allowPrivilidgedFiles", which is stored as false where it is missing.
    bool isEnabled();

    void authorize(); // asks the user, unless the right is held
    void deauthorize();

    // Whether the right is held at this moment, asked anew each time: what the user granted ends after some
    // minutes. Never asks the user.
    bool authorized();

    // Whether a run as administrator would not ask the user either, which it may although the right is held.
    bool runsWithoutAsking() { return held() == RightsAuthority::Answer::Granted; }

    // 0 when the last authorisation or run began well, else the RightsAuthority::Answer that stood in its
    // way.
    std::int32_t status() const { return m_status; }

    // Runs the tool with the arguments, the last of which is the item's path; that goes to the tool over its
    // standard input ("-" stands in its place), because every user may see arguments and pkexec logs them.
    // Links among its parents are followed here, with the user's rights; as root none is.
    // Error 3 when it does not come to a run; else what the output says, error 1 where it says nothing. How
    // the tool exits does not matter.
    CloakWorkerResult executeCommandWithPrivilidges(const std::string& tool,
                                                    const std::vector<std::string>& arguments);

private:
    RightsAuthority::Answer held();
    ChildProcessResult run(const std::string& tool, const std::vector<std::string>& arguments);
    CloakWorkerResult resultOf(const ChildProcessResult& run);
    CloakWorkerResult refuse(RightsAuthority::Answer answer);

    RightsAuthority& m_authority;
    UserDefaults& m_defaults;
    std::string m_inProgressFolder;
    Tick m_tick;
    std::string m_pkexec;
    std::function<bool()> m_shouldEnd;
    bool m_isEnded = false; // the run that is told of
    bool m_authorized = false;
    std::int32_t m_status = 0;
};

} // namespace veilkeep
