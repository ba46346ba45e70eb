#include "filelist/Turns.h"

#include <QScopedValueRollback>

#include <utility>

namespace veilkeep {

void Turns::run(Request request) {
    if (m_isClosed)
        return;
    m_requests.push_back({std::move(request), m_departures});
    runAll();
}

void Turns::leave(Request leaving) {
    m_leavings.push_back(std::move(leaving));
    ++m_departures;
    m_alerts.setNobodyThere(true);
    if (m_interrupt)
        m_interrupt();
    runAll();
}

void Turns::close() {
    m_isClosed = true;
    m_requests.clear();
}

void Turns::runAll() {
    if (m_isRunning)
        return; // whoever runs looks again
    const QScopedValueRollback isRunning(m_isRunning, true);
    while (!m_leavings.empty() || !m_requests.empty())
        m_leavings.empty() ? runNextRequest() : runNextLeaving();
}

void Turns::runNextLeaving() {
    const Request leaving = std::move(m_leavings.front());
    m_leavings.pop_front();
    leaving();
    m_alerts.setNobodyThere(!m_leavings.empty());
}

void Turns::runNextRequest() {
    const Waiting next = std::move(m_requests.front());
    m_requests.pop_front();
    const QScopedValueRollback isOfBefore(m_isOfBefore, next.departures != m_departures);
    if (m_isOfBefore)
        m_alerts.setNobodyThere(true);
    next.request();
    m_alerts.setNobodyThere(!m_leavings.empty());
}

} // namespace veilkeep
