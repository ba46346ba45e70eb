#pragma once

#include "platform/linux/PolkitTypes.h"
#include "tests/support/bus/BusService.h"

#include <sys/types.h>

namespace veilkeep::test {

// The program that asks a person for polkit, with the person: registered for one process, it dismisses every
// question or answers it as if the right password had been typed, which takes root.
class ConsentAgent {
public:
    enum class Person { Dismisses, Consents };

    ConsentAgent(pid_t process, Person person);

    std::size_t questions() const;

private:
    QDBusMessage answer(const QDBusMessage& call);
    QDBusMessage callPolkit(const QString& method, const QVariantList& arguments);

    Person m_person;
    BusService m_service;
};

} // namespace veilkeep::test
