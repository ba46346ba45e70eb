#pragma once

#include "platform/SessionEvents.h"

#include <QObject>
#include <QTimer>

#include <array>
#include <chrono>
#include <functional>

namespace veilkeep {

// Whether the user is there, by those kinds of absence that count. Leaving is told at once and for each kind
// by itself; coming back when no kind is left and nothing has changed for a while. The same told twice counts
// once. What did not count when it began is over without a word. Main thread.
class Presence : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds quiet{300}; // before coming back

    using Counts = std::function<bool(Absence)>; // asked each time

    Presence(SessionEvents& events, Counts counts);

    bool isAway() const;

signals:
    void left(veilkeep::Absence kind);
    void passedOver(veilkeep::Absence kind); // began, and does not count
    void cameBack();

private:
    struct Sign {
        bool isAway = false;
        bool hasLeft = false; // it counted when it began
    };

    void change(Absence kind, bool isAway);

    const Counts m_counts;
    std::array<Sign, 3> m_signs{};
    QTimer m_quiet;
};

} // namespace veilkeep
