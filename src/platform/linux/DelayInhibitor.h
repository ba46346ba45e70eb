#pragma once

#include "core/base/UniqueFd.h"
#include "platform/linux/BusLink.h"

#include <QObject>
#include <QString>

#include <memory>

namespace veilkeep {

// Holds up one thing, "sleep" or "shutdown", for the few seconds that logind grants. It must be held before:
// logind gives none while the thing is under way. Main thread.
class DelayInhibitor {
public:
    DelayInhibitor(BusLink& bus, QString what);

    bool isHeld() const { return static_cast<bool>(m_descriptor); }
    void take(const QString& logind); // instead of the one that is held; the bus name is logind's own
    void release();

private:
    BusLink& m_bus;
    QString m_what;
    std::unique_ptr<QObject> m_asker; // while there is something to take
    UniqueFd m_descriptor;
};

} // namespace veilkeep
