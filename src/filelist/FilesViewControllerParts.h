#pragma once

#include "alerts/Alerts.h"
#include "alerts/PathChooser.h"
#include "alerts/ProgressController.h"
#include "core/protocol/CloakWorkerComunicator.h"
#include "core/tracking/VolumeMounter.h"
#include "filelist/CurrentGroup.h"
#include "filelist/FilesInfoFile.h"
#include "filelist/Turns.h"
#include "platform/DistributedNotifications.h"
#include "platform/FileViewer.h"

namespace veilkeep {

// What the item list works with. Nothing of it is owned; all of it outlives the controller.
struct FilesViewControllerParts {
    FilesInfoFile& dataFile;
    CloakWorkerComunicator& cloakWorker;
    Alerts& alerts;
    ProgressController& progress;
    Turns& turns;
    UserDefaults& defaults;
    const CurrentGroup& groups;
    SecurityController* security = nullptr; // none: nothing is moved as administrator
    VolumeMounter* mounter = nullptr;
    PathChooser* pathChooser = nullptr;
    FileViewer* fileViewer = nullptr;
    DistributedNotifications* notifications = nullptr; // none: what workers leave is seen at the next look
};

} // namespace veilkeep
