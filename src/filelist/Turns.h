#pragma once

#include "alerts/Alerts.h"

#include <deque>
#include <functional>
#include <utility>

namespace veilkeep {

// Who may work on the list, and when. This is the one place that says so:
//
// While a batch runs or a question is open the interface still paints and the event loop still turns, so that
// requests (a click, a menu, a drop, another program, a volume that appears) come in the midst of one. They
// wait here until the running one is through, and then run in the order in which they came.
//
// Leaving (lock, sleep, session switch, quit) does not wait like that. An open question, and each that would
// follow, is answered with its cancelling button, a prompt for the password is taken back; an unhide batch
// passes over the items that are left (it asks isLeaving() before each), a hide batch runs to its end; the
// batch saves as always. Then the leaving runs, before all requests that wait. What waited when the user left
// comes after it, but asks nobody and brings nothing back any more. That, and whoever cancels what he asked
// for, are the only exceptions to "a batch never stops early".
//
// Main thread.
class Turns {
public:
    using Request = std::function<void()>;

    explicit Turns(Alerts& alerts) : m_alerts(alerts) {} // not owned

    void run(Request request);   // now, or when its turn comes
    void leave(Request leaving); // as soon as the running request has come to its end

    // Called whenever somebody leaves: takes back what waits for a person beside alerts. Empty for none.
    void setInterrupt(std::function<void()> interrupt) { m_interrupt = std::move(interrupt); }

    // The list is given up: what waits is dropped, and no request runs any more.
    void close();

    bool isRunning() const { return m_isRunning; }
    bool isLeaving() const { return !m_leavings.empty() || m_isOfBefore; } // since what runs has begun
    bool isNobodyThere() const {
        return m_alerts.isNobodyThere();
    } // to the end of the leaving: nothing is shown

private:
    struct Waiting {
        Request request;
        unsigned int departures; // when it came
    };

    void runAll();
    void runNextRequest();
    void runNextLeaving();

    Alerts& m_alerts;
    std::function<void()> m_interrupt;
    std::deque<Waiting> m_requests;
    std::deque<Request> m_leavings;
    unsigned int m_departures = 0;
    bool m_isOfBefore = false; // what runs came before the user left
    bool m_isRunning = false;
    bool m_isClosed = false;
};

} // namespace veilkeep
