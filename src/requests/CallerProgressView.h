#pragma once

#include "alerts/ProgressView.h"
#include "platform/Request.h"

namespace veilkeep {

// Shows progress to whoever made the request that is being worked on, and in the application's own view.
// Made by the program's wiring. Main thread.
class CallerProgressView : public ProgressView {
public:
    explicit CallerProgressView(ProgressView* own) : m_own(own) {} // not owned, may be null

    void setCaller(RequestCaller* caller) { m_caller = caller; } // not owned; null: no request runs

    void begin(const QString& stage, bool canBeCancelled) override;
    void setSubStage(const QString& subStage) override;
    void setDone(std::size_t done, std::size_t total) override;
    void end() override;
    bool isCancelled() const override;

private:
    void tell();

    ProgressView* m_own;
    RequestCaller* m_caller = nullptr;
    QString m_stage;
    QString m_subStage;
    std::size_t m_done = 0;
    std::size_t m_total = 0;
};

} // namespace veilkeep
