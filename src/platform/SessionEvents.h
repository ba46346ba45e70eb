#pragma once

#include "core/base/Result.h"

#include <QObject>

namespace veilkeep {

// Why the user cannot be at this program's window.
enum class Absence { Sleep, Lock, Session }; // Session: another user's session is in front

// What asks this program to end without being able to wait for an answer.
enum class Ending { Signal, Logout, Shutdown };

// What the desktop tells of the user's leaving and coming back. Each kind of absence is told as the desktop's
// sources agree on it; the same value may be told again. Owned by the program's wiring; main thread.
class SessionEvents : public QObject {
    Q_OBJECT

public:
    // Begins to listen and holds up sleep and shutdown from now on. Sources that are not there are left out,
    // and taken in when they come; each with a line in the log.
    virtual void start() = 0;

    // What the last absence or ending asked for is done: what is held up may go on.
    virtual void release() = 0;

signals:
    void absenceChanged(veilkeep::Absence kind, bool isAway);
    void endRequested(veilkeep::Ending ending);
};

} // namespace veilkeep
