#pragma once

#include "alerts/Alert.h"
#include "alerts/ProgressView.h"

#include <QString>

#include <cstddef>

namespace veilkeep {

// The progress sheet of the list and of the groups. Main thread.
class ProgressController {
public:
    enum class Cancelling { NotOffered, Offered };

    // The view is not owned; without one every showProgressForWindow is but a line in the log.
    explicit ProgressController(ProgressView* view) : m_view(view) {}

    void showProgressForWindow(Alert::Window window, const QString& andStage,
                               Cancelling cancelling = Cancelling::NotOffered);
    void updateWithSubStage(const QString& subStage);
    void updateWithDone(std::size_t done, std::size_t total);
    void hideProgress();
    bool isCancelled() const;

private:
    ProgressView* m_view;
};

} // namespace veilkeep
