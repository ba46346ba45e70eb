#pragma once

#include "core/environment/XdgDirectories.h"
#include "filelist/FilesViewController.h"
#include "groups/GroupViewController.h"
#include "platform/linux/PolkitAuthority.h"
#include "platform/linux/UdisksVolumeMounter.h"
#include "prefs/PasswordManager.h"
#include "requests/RequestRunner.h"
#include "session/MainWindowController.h"

#include <functional>
#include <string>

namespace veilkeep {

// What a program that stays adds. Nothing of it is owned.
struct OwnListOptions {
    std::function<void()> tick = {};                   // while a worker is waited for
    AlertPresenter* presenter = nullptr;               // for what no request asked for
    DistributedNotifications* notifications = nullptr; // none: what workers leave is seen at the next look
    SessionEvents* events = nullptr;                   // none: nothing is observed
};

// The lists of items and groups and all that works on them, put together for a program without a window. Main
// thread.
class OwnList {
public:
    OwnList(const std::string& workerPath, const OwnPlaces& places, const OwnListOptions& options = {});

    // Loads the lists and works on the one request. Without the right to change them only what reads may be
    // asked for; what workers left is then not taken in.
    RequestStatus run(const Request& request, RequestCaller& caller, bool mayChange);

    // For any number of requests: loads the lists, puts right what a former run left, and follows the user.
    void start();
    void save();

    RequestHandler& requests() { return m_runner; }
    MainWindowController& window() { return m_window; }
    Turns& turns() { return m_turns; }

private:
    bool wereAutoHideGroupsShown() const;

    UserDefaults m_defaults;
    CallerPresenter m_presenter;
    Alerts m_alerts{m_presenter, m_defaults};
    CallerProgressView m_progressView{nullptr};
    ProgressController m_progress{&m_progressView};
    PolkitAuthority m_authority;
    SecurityController m_security;
    CloakWorkerComunicator m_cloakWorker;
    UdisksVolumeMounter m_mounter;
    FilesInfoFile m_dataFile;
    GroupsInfoFile m_groupsFile;
    AutoHideMark m_mark;
    Turns m_turns{m_alerts};
    GroupSelection m_selection;
    FilesViewController m_controller;
    GroupViewController m_groups;
    PasswordManager m_passwords{m_defaults};
    MainWindowController m_window;
    RequestRunner m_runner;
};

} // namespace veilkeep
