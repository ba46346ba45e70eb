#pragma once

#include "core/base/Result.h"
#include "platform/linux/GObjectPointer.h"
#include "platform/linux/GioApplications.h"

#include <gio/gdesktopappinfo.h>

#include <string>

namespace veilkeep {

// Starts the application on one item. Where that goes over the bus the answer comes before the application
// is there, and what goes wrong then is told later.
Result<void> launchApplication(GDesktopAppInfo& application, const std::string& path,
                               const std::string& token, const GioApplications::LateTrouble& lateTrouble);

} // namespace veilkeep
