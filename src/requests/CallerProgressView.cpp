#include "requests/CallerProgressView.h"

namespace veilkeep {

void CallerProgressView::begin(const QString& stage, bool canBeCancelled) {
    if (m_own)
        m_own->begin(stage, canBeCancelled);
    m_stage = stage;
    m_subStage.clear();
    m_done = m_total = 0;
    tell();
}

void CallerProgressView::setSubStage(const QString& subStage) {
    if (m_own)
        m_own->setSubStage(subStage);
    m_subStage = subStage;
    tell();
}

void CallerProgressView::setDone(std::size_t done, std::size_t total) {
    if (m_own)
        m_own->setDone(done, total);
    m_done = done;
    m_total = total;
    tell();
}

void CallerProgressView::end() {
    if (m_own)
        m_own->end();
    m_stage.clear();
    m_subStage.clear();
    m_done = m_total = 0;
    tell();
}

bool CallerProgressView::isCancelled() const {
    return (m_caller && m_caller->isCancelled()) || (m_own && m_own->isCancelled());
}

void CallerProgressView::tell() {
    if (m_caller)
        m_caller->progress(m_stage, m_subStage, m_done, m_total);
}

} // namespace veilkeep
