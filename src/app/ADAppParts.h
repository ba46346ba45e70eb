#pragma once

#include "app/ADApp.h"
#include "app/ShownWindow.h"
#include "app/StatusMenu.h"
#include "core/storage/ListOwnership.h"
#include "filelist/FileListActions.h"
#include "groups/GroupEditController.h"
#include "platform/linux/ActivationToken.h"
#include "platform/linux/ApplicationOnBus.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/BusNotifications.h"
#include "platform/linux/ColorScheme.h"
#include "platform/linux/FileManagerViewer.h"
#include "platform/linux/GioApplications.h"
#include "platform/linux/LinuxSessionEvents.h"
#include "platform/linux/PackageKitUpdates.h"
#include "platform/linux/ProcessSoundPlayer.h"
#include "platform/linux/RequestService.h"
#include "platform/linux/TrayHost.h"
#include "platform/linux/filemanagers/LinuxFileManagerMenu.h"
#include "platform/linux/gui/LogoutEvents.h"
#include "platform/linux/gui/TaskbarEntries.h"
#include "platform/linux/gui/TrayIcon.h"
#include "platform/linux/installation/UserInstallation.h"
#include "prefs/FinderPlugin.h"
#include "prefs/PrefsController.h"
#include "prefs/SoftwareUpdater.h"
#include "session/InstallationOffer.h"
#include "session/Relaunching.h"
#include "session/RunNote.h"
#include "session/SoundController.h"
#include "widgets/dialogs/AboutWindow.h"
#include "widgets/dialogs/AlertWindows.h"
#include "widgets/dialogs/OpenPanels.h"
#include "widgets/dialogs/PasswordWindow.h"
#include "widgets/dialogs/ProgressSheet.h"
#include "widgets/dialogs/ReportWindow.h"
#include "widgets/dialogs/UpdateWindow.h"
#include "widgets/groupedit/GroupEditWindow.h"
#include "widgets/images/ProgramImages.h"
#include "widgets/preferences/PrefsWindow.h"
#include "widgets/preview/Previews.h"
#include "wiring/OwnList.h"

#include <memory>
#include <optional>
#include <string>

namespace veilkeep {

// What the application works with while it owns the list, in the order in which it is needed.
struct ADApp::Parts {
    Parts(ADApp& application, ListOwnership taken, const OwnPlaces& places);
    ~Parts();

    void serve(); // requests of other programs, and on a session bus that came later
    bool hasStatusItem() const { return statusItem && statusItem->isShown(); }
    void tellTrouble(const QString& what, const Error& error);

    ListOwnership lock; // is given back last
    RunNote runNote;
    UserDefaults defaults;
    const Result<std::optional<std::string>> damagedSettings = defaults.keepDamagedAside();
    LSUIElementManipulation dockIcon{defaults};
    PrefsController prefs;
    BusNotifications notifications;
    LinuxSessionEvents events;
    LogoutEvents logout;
    ProcessSoundPlayer player;
    SoundController sounds;
    ProgramGroupImages images;
    GioApplications applications;
    FileManagerViewer viewer;

    ShownWindow window;
    AlertWindows alerts;
    ProgressSheet progress;
    OpenPanels panels;
    PasswordWindow prompt;
    GroupEditWindow groupSheet;
    KeptIcons keptIcons;

    OwnList list;
    Previews previews{list.files().files()};
    GroupEditController groupEdit;
    FileListActions actions{list.files(), list.alerts(), &applications};
    RequestService requests{list.requests()};
    Relaunching relaunching;
    AutostartEntry loginItem;
    UserInstallation installation;
    InstallationOffer offer{list.alerts(), defaults, installation};
    LinuxFileManagerMenu fileManagerMenu;
    FinderPlugin finderPlugin{fileManagerMenu, list.alerts()};

    ColorScheme colorScheme{events.sessionBus()};
    TrayHost trayHost{events.sessionBus()};
    TaskbarEntries taskbarEntries;
    std::unique_ptr<StatusMenu> statusMenu;
    std::unique_ptr<TrayIcon> statusItem;
    std::unique_ptr<PrefsWindow> preferences; // null before it is asked for
    AboutWindow about;
    ReportWindow report;
    PackageKitUpdates packages{events.systemBus()};
    SoftwareUpdater updater{packages, defaults};
    UpdateWindow update{[this] { return window.visibleWindow(); }, [this] { updater.cancel(); }};
};

} // namespace veilkeep
