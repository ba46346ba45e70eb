#include "alerts/ProgressController.h"

#include "core/log/Log.h"

namespace veilkeep {

void ProgressController::showProgressForWindow(Alert::Window, const QString& andStage,
                                               Cancelling cancelling) {
    if (!m_view)
        return logLine("Error: ProgressPanel is nil. Wont show progress.");
    m_view->begin(andStage, cancelling == Cancelling::Offered);
}

void ProgressController::updateWithSubStage(const QString& subStage) {
    if (m_view)
        m_view->setSubStage(subStage);
}

void ProgressController::updateWithDone(std::size_t done, std::size_t total) {
    if (m_view)
        m_view->setDone(done, total);
}

void ProgressController::hideProgress() {
    if (m_view)
        m_view->end();
}

bool ProgressController::isCancelled() const {
    return m_view && m_view->isCancelled();
}

} // namespace veilkeep
