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

// What a program that stays adds, and beyond that one with windows. Nothing of it is owned.
struct OwnListOptions {
    std::function<void()> tick = {};                   // while a worker is waited for
    AlertPresenter* presenter = nullptr;               // for what no request asked for
    DistributedNotifications* notifications = nullptr; // none: what workers leave is seen at the next look
    SessionEvents* events = nullptr;                   // none: nothing is observed

    ProgressView* progress = nullptr;
    PathChooser* pathChooser = nullptr;
    FileViewer* fileViewer = nullptr;
    GroupImages* images = nullptr;
    Sounds* sounds = nullptr;
    PasswordPrompt* prompt = nullptr;
    MainWindow* window = nullptr;
    std::function<void()> interrupt = {}; // takes back other windows that wait for the user when he leaves
    Language* language = nullptr;         // none: texts are those of the source
    bool mayAsk = false;                  // workers may put questions into windows of their own
};

// The lists of items and groups and all that works on them, put together for a program. Main thread.
class OwnList {
public:
    OwnList(UserDefaults& defaults, const std::string& workerPath, const OwnPlaces& places,
            const OwnListOptions& options = {});

    // Loads the lists and works on the one request. Without the right to change them only what reads may be
    // asked for; what workers left is then not taken in.
    RequestStatus run(const Request& request, RequestCaller& caller, bool mayChange);

    // For any number of requests: loads the lists, puts right what a former run left, and follows the user.
    void start();

    // The same, but that items are looked for later: by check(), once there is something to be seen.
    void load();
    void follow(bool goesOn = false); // after a relaunch: what the former process left visible stays
    void check();

    void save();

    RequestHandler& requests() { return m_runner; }
    MainWindowController& window() { return m_window; }
    FilesViewController& files() { return m_controller; }
    GroupViewController& groups() { return m_groups; }
    PasswordManager& passwords() { return m_passwords; }
    ProgressController& progress() { return m_progress; }
    Alerts& alerts() { return m_alerts; }
    Turns& turns() { return m_turns; }

private:
    bool wereAutoHideGroupsShown() const;

    UserDefaults& m_defaults;
    CallerPresenter m_presenter;
    Alerts m_alerts{m_presenter, m_defaults};
    CallerProgressView m_progressView;
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
