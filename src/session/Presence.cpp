#include "session/Presence.h"

#include <algorithm>
#include <functional>

namespace veilkeep {

Presence::Presence(SessionEvents& events) {
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quiet);
    connect(&m_quiet, &QTimer::timeout, this, &Presence::cameBack);
    connect(&events, &SessionEvents::absenceChanged, this, &Presence::change);
}

bool Presence::isAway() const {
    return std::ranges::any_of(m_isAway, std::identity());
}

void Presence::change(Absence kind, bool isAway) {
    bool& known = m_isAway[static_cast<std::size_t>(kind)];
    if (known == isAway)
        return;
    known = isAway;
    m_quiet.stop();
    if (isAway)
        emit left(kind);
    else if (!this->isAway())
        m_quiet.start();
}

} // namespace veilkeep
