#pragma once

#include "alerts/AlertPresenter.h"

namespace veilkeep {

// Takes what is told where nobody looks, to the log; questions are answered with their cancelling buttons.
class UnattendedPresenter : public AlertPresenter {
public:
    AlertAnswer run(const Alert& alert) override;
    void begin(const Alert& alert) override;
    void cancelOpen() override {} // none ever is
    void serveOthers() override {}
};

} // namespace veilkeep
