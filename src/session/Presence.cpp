#include "session/Presence.h"

#include <utility>

namespace veilkeep {

Presence::Presence(SessionEvents& events, Counts counts) : m_counts(std::move(counts)) {
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quiet);
    connect(&m_quiet, &QTimer::timeout, this, &Presence::cameBack);
    connect(&events, &SessionEvents::absenceChanged, this, &Presence::change);
}

bool Presence::isAway() const {
    for (std::size_t kind = 0; kind < m_signs.size(); ++kind)
        if (m_signs[kind].isAway && (m_signs[kind].hasLeft || m_counts(static_cast<Absence>(kind))))
            return true;
    return false;
}

void Presence::change(Absence kind, bool isAway) {
    Sign& sign = m_signs[static_cast<std::size_t>(kind)];
    if (std::exchange(sign.isAway, isAway) == isAway)
        return;
    const bool hadLeft = std::exchange(sign.hasLeft, isAway && m_counts(kind));
    if (!sign.hasLeft && !hadLeft) {
        if (isAway)
            emit passedOver(kind);
        return;
    }
    m_quiet.stop();
    if (isAway)
        emit left(kind);
    else if (!this->isAway())
        m_quiet.start();
}

} // namespace veilkeep
