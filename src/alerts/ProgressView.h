#pragma once

#include <QString>

#include <cstddef>

namespace veilkeep {

// Shows how far a long work has come: a sheet in the desktop application, a line on a terminal. Main thread.
class ProgressView {
public:
    virtual ~ProgressView() = default;

    virtual void begin(const QString& stage, bool canBeCancelled) = 0; // empties the sub-stage and the counts
    virtual void setSubStage(const QString& subStage) = 0;
    virtual void setDone(std::size_t done, std::size_t total) = 0; // total 0: not known
    virtual void end() = 0;

    virtual bool isCancelled() const = 0; // the user asked to cancel, since begin()

protected:
    ProgressView() = default;
    ProgressView(const ProgressView&) = default;
    ProgressView& operator=(const ProgressView&) = default;
};

} // namespace veilkeep
