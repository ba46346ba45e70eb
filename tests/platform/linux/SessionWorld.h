#pragma once

#include "platform/linux/LinuxSessionEvents.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/FakeLogind.h"
#include "tests/support/bus/PrivateBus.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace veilkeep::test {

// A user's session with logind, screen savers and the events that are made of what they say.
class SessionWorld {
public:
    SessionWorld();
    ~SessionWorld();

    std::string whyMissing() const;

    void startBuses();
    void stopBuses(); // with all that is on them
    // What is set of it is so before it tells of the session.
    void startLogind(const char* parameters = "{}", const std::function<void(FakeLogind&)>& set = {});
    void stopLogind() { logind.reset(); }

    void listen();   // starts the events anew; what they tell goes into told
    void calmDown(); // ends the events, with everything as it was at first
    void settle();   // until all that was said is heard, and asked and answered about

    // One word of those that the tables of the tests use; settles after it.
    void say(const std::string& word);
    void sayAll(const std::string& words); // separated by blanks

    std::unique_ptr<FakeLogind> logind;
    std::unique_ptr<LinuxSessionEvents> events;
    std::string told; // "S+ " for the begin of a sleep, "L- " for the end of a lock, "signal " for an ending…

private:
    BusService& saver(const std::string& name);
    void tell(const std::string& word) { told += (told.empty() ? "" : " ") + word; }

    ScratchTree m_tree;
    std::unique_ptr<PrivateBus> m_systemBus, m_sessionBus;
    std::map<std::string, std::unique_ptr<BusService>> m_savers;
};

} // namespace veilkeep::test
