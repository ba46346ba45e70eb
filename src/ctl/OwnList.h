#pragma once

#include "core/environment/XdgDirectories.h"
#include "filelist/FilesViewController.h"
#include "platform/linux/PolkitAuthority.h"
#include "platform/linux/UdisksVolumeMounter.h"
#include "requests/RequestRunner.h"

#include <string>

namespace veilkeep {

// The list and all that works on it, for a request that no other program takes. Main thread.
class OwnList {
public:
    OwnList(const std::string& workerPath, const OwnPlaces& places);

    // Loads the list and works on the request. Without the right to change the list only "list" and "status"
    // may be asked for; what workers left is then not taken in.
    RequestStatus run(const Request& request, RequestCaller& caller, bool mayChange);

private:
    UserDefaults m_defaults;
    CallerPresenter m_presenter{nullptr};
    Alerts m_alerts{m_presenter, m_defaults};
    CallerProgressView m_progressView{nullptr};
    ProgressController m_progress{&m_progressView};
    PolkitAuthority m_authority;
    SecurityController m_security;
    CloakWorkerComunicator m_cloakWorker;
    UdisksVolumeMounter m_mounter;
    FilesInfoFile m_dataFile;
    Turns m_turns{m_alerts};
    NoCurrentGroup m_groups;
    FilesViewController m_controller;
    RequestRunner m_runner;
};

} // namespace veilkeep
