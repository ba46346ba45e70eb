#pragma once

#include "platform/linux/checkup/BusFacts.h"
#include "platform/linux/checkup/BusQuestions.h"

namespace veilkeep {

// Who is on the user's bus: a place for tray icons, screen savers, Veilkeep itself.
class SessionBusCheckup : public BusQuestions {
    Q_OBJECT

public:
    SessionBusCheckup() : BusQuestions(BusLink::Bus::Session) {}

    void begin(SessionBusFacts& facts); // which outlive the questions

private:
    void takeNames(const QStringList& names);
    void askTray();
    void askScreenSavers(const QStringList& names);

    SessionBusFacts* m_facts = nullptr;
};

} // namespace veilkeep
