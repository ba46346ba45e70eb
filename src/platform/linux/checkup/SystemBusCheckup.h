#pragma once

#include "platform/linux/LogindSession.h"
#include "platform/linux/checkup/BusFacts.h"
#include "platform/linux/checkup/BusQuestions.h"

namespace veilkeep {

// Who is on the system's bus: logind and what it does for this session, polkit, udisks, PackageKit. The
// session is looked for as it is when Veilkeep listens to it.
class SystemBusCheckup : public BusQuestions {
    Q_OBJECT

public:
    SystemBusCheckup();

    void begin(SystemBusFacts& facts); // which outlive the questions

private:
    struct Service;
    static QList<Service> services(SystemBusFacts& facts);

    void takeNames(const QStringList& names);
    void takeStartable(const QStringList& names);
    void askLogind();
    void askToHoldSleep();
    void takeSession(const QString& path);
    void askPolkit();

    SystemBusFacts* m_facts = nullptr;
    LogindSession m_session{link()};
};

} // namespace veilkeep
