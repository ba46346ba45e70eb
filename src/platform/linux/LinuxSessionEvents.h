#pragma once

#include "platform/SessionEvents.h"
#include "platform/linux/BusLink.h"
#include "platform/linux/BusOwners.h"
#include "platform/linux/LockSigns.h"
#include "platform/linux/LogindPower.h"
#include "platform/linux/LogindSession.h"
#include "platform/linux/QuitSignals.h"
#include "platform/linux/ScreenSavers.h"

#include <chrono>

namespace veilkeep {

// What logind, the screen savers and signals tell together. Waits for none of them, and looks for those that
// are not there or come back. Owned by the program's wiring; main thread.
class LinuxSessionEvents : public SessionEvents {
    Q_OBJECT

public:
    // How often logind is asked, during a sleep, whether that is over.
    explicit LinuxSessionEvents(std::chrono::milliseconds sleepCheckInterval = std::chrono::seconds(3));

    void start() override;
    void release() override;

    BusLink& systemBus() { return m_systemBus; } // for whoever else listens there
    BusLink& sessionBus() { return m_sessionBus; }

signals:
    void sessionBusCameUp(); // for the first time, or once more after it was lost

private:
    void connectPower();
    void connectLocks();
    void tellLock();

    BusLink m_systemBus{BusLink::Bus::System};
    BusLink m_sessionBus{BusLink::Bus::Session};
    BusOwners m_logind;
    LogindPower m_power;
    LogindSession m_session{m_systemBus};
    ScreenSavers m_screenSavers{m_sessionBus};
    QuitSignals m_quitSignals;
    LockSigns m_lockSigns;
    bool m_isLocked = false;
    bool m_isActive = true;
};

} // namespace veilkeep
