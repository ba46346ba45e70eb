#include "filelist/Turns.h"

#include <QScopedValueRollback>

#include <utility>

namespace veilkeep {

void Turns::run(Request request) {
    if (m_isClosed)
        return;
    m_requests.push_back(std::move(request));
    runAll();
}

void Turns::leave(Request leaving) {
    m_leavings.push_back(std::move(leaving));
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
    while (!m_leavings.empty() || !m_requests.empty()) {
        const bool isLeaving = !m_leavings.empty();
        std::deque<Request>& queue = isLeaving ? m_leavings : m_requests;
        const Request next = std::move(queue.front());
        queue.pop_front();
        next();
        if (isLeaving && m_leavings.empty())
            m_alerts.setNobodyThere(false);
    }
}

} // namespace veilkeep
