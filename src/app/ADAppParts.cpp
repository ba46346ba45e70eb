#include "app/ADAppParts.h"

#include "core/base/PathText.h"
#include "core/environment/Bundle.h"
#include "core/log/Log.h"
#include "core/storage/BundleInfo.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"
#include "widgets/images/BoundedImage.h"

#include <utility>

namespace veilkeep {
namespace {

std::string soundsFolder() {
    return applicationBundlePath() + "/Contents/Resources";
}

} // namespace

ADApp::Parts::Parts(ADApp& application, ListOwnership taken, const OwnPlaces& places)
    : lock(std::move(taken)),
      runNote(places.stateDirectory),
      prefs({.defaults = defaults,
             .dockIcon = dockIcon,
             .loginItem = &loginItem,
             .finderPluginInstalled = [this] { return finderPlugin.finderPluginInstalled(); },
             .setFinderPluginInstalled =
                 [this](bool isWished) { finderPlugin.setFinderPluginInstalled(isWished); },
             .requestRelaunch = [this] { relaunching.requestRelaunch(); },
             .checkForUpdates = [&application] { application.perform(Command::CheckForUpdates); }}),
      logout(application, events),
      sounds(soundsFolder(), defaults, player),
      applications(
          [this](const Error& error) { tellTrouble(tr("The application could not be started."), error); }),
      viewer(events.sessionBus(), applications,
             [this](const Error& error) { tellTrouble(tr("The item could not be shown."), error); }),
      alerts([this] { return window.visibleWindow(); }),
      progress([this] { return window.visibleWindow(); }),
      panels([this] { return window.visibleWindow(); }),
      groupSheet([this] { return window.visibleWindow(); }),
      keptIcons(joinPath(places.dataDirectory, "Icons")),
      list(defaults, MainWindowController::cloakWorkerPath(), places,
           {.tick = [this] { progress.turnEventLoop(); },
            .presenter = &alerts,
            .notifications = &notifications,
            .events = &events,
            .progress = &progress,
            .pathChooser = &panels,
            .fileViewer = &viewer,
            .images = &images,
            .sounds = &sounds,
            .prompt = &prompt,
            .window = &window,
            .interrupt =
                [this] {
                    panels.cancelOpen();
                    groupEdit.cancel();
                },
            .language = &application.translations(),
            .mayAsk = true}),
      groupEdit({.groups = list.groups(),
                 .view = groupSheet,
                 .images = images,
                 .keptIcons = keptIcons,
                 .chooseImageFile = [this] { return panels.chooseImage(boundedImage::isNamedAsImage); },
                 .sounds = &sounds}),
      relaunching(list.alerts(), {[&application] { application.applicationWillBeRelaunched(); },
                                  [&application] { application.applicationShouldTerminate(); },
                                  [&application] { return application.isRelaunchHeldUp(); }}),
      fileManagerMenu({.bundle = applicationBundlePath(), .version = BundleInfo::main().version()}),
      taskbarEntries(application, [this] { return !dockIcon.shouldBeUIElement() || !hasStatusItem(); }),
      about(applicationVersion(), [&application] { application.perform(Command::Help); }) {
    window.setMake([this, &application] {
        return std::make_unique<VeilkeepWindow>(
            VeilkeepWindowParts{list.files(), list.groups(), actions, previews, defaults, application});
    });
    QObject::connect(&updater, &SoftwareUpdater::ended, &updater,
                     [this](const SoftwareUpdater::Answer& answer) {
                         update.showAnswer(answer.title, answer.message);
                         prefs.lastCheckChanged();
                     });
}

// The window shows what goes before it.
ADApp::Parts::~Parts() {
    window.destroy();
}

void ADApp::Parts::serve() {
    const auto start = [this] {
        if (const auto served = requests.start(); !served)
            logError("Requests of other programs are not heard", served.error());
    };
    start();
    QObject::connect(&events, &LinuxSessionEvents::sessionBusCameUp, &requests, start);
    QObject::connect(&events, &LinuxSessionEvents::sessionBusCameUp, &notifications,
                     &BusNotifications::listen);
}

void ADApp::Parts::tellTrouble(const QString& what, const Error& error) {
    list.alerts().beginInformationalAlertSheet(what, errorWithPath(error));
}

} // namespace veilkeep
