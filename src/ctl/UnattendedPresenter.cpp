#include "ctl/UnattendedPresenter.h"

#include "core/log/Log.h"
#include "requests/CallerPresenter.h"

namespace veilkeep {

AlertAnswer UnattendedPresenter::run(const Alert& alert) {
    begin(alert);
    return {alert.codeWhenCancelled(), false, true};
}

void UnattendedPresenter::begin(const Alert& alert) {
    logLine(messageText(alert).toStdString());
}

} // namespace veilkeep
