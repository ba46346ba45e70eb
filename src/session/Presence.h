#pragma once

#include "platform/SessionEvents.h"

#include <QObject>
#include <QTimer>

#include <array>
#include <chrono>

namespace veilkeep {

// Whether the user is there. Leaving is told at once and for each kind of absence by itself; coming back when
// no kind of absence is left and nothing has changed for a while. The same told twice counts once. Main
// thread.
class Presence : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds quiet{300}; // before coming back

    explicit Presence(SessionEvents& events);

    bool isAway() const;

signals:
    void left(veilkeep::Absence kind);
    void cameBack();

private:
    void change(Absence kind, bool isAway);

    std::array<bool, 3> m_isAway{};
    QTimer m_quiet;
};

} // namespace veilkeep
