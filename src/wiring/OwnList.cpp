#include "wiring/OwnList.h"

#include "core/base/PathText.h"
#include "filelist/MainThread.h"

#include <algorithm>
#include <optional>

namespace veilkeep {

OwnList::OwnList(UserDefaults& defaults, const std::string& workerPath, const OwnPlaces& places,
                 const OwnListOptions& options)
    : m_defaults(defaults),
      m_presenter(options.presenter),
      m_progressView(options.progress),
      m_authority(Tick(options.tick)),
      m_security(m_authority, m_defaults, places.inProgressDirectory, Tick(options.tick)),
      m_cloakWorker(workerPath, places.inProgressDirectory, Tick(options.tick), &m_security),
      m_dataFile(joinPath(places.dataDirectory, "FilesInfo.Veilkeep")),
      m_groupsFile(joinPath(places.dataDirectory, "GroupsInfo.Veilkeep")),
      m_mark(places.dataDirectory),
      m_controller({.dataFile = m_dataFile,
                    .cloakWorker = m_cloakWorker,
                    .alerts = m_alerts,
                    .progress = m_progress,
                    .turns = m_turns,
                    .defaults = m_defaults,
                    .groups = m_selection,
                    .security = &m_security,
                    .mounter = &m_mounter,
                    .pathChooser = options.pathChooser,
                    .fileViewer = options.fileViewer,
                    .notifications = options.notifications}),
      m_groups({.dataFile = m_groupsFile,
                .files = m_controller,
                .selection = m_selection,
                .mark = m_mark,
                .alerts = m_alerts,
                .turns = m_turns,
                .images = options.images,
                .sounds = options.sounds}),
      m_window({.groups = m_groups,
                .files = m_controller,
                .mark = m_mark,
                .passwords = m_passwords,
                .turns = m_turns,
                .defaults = m_defaults,
                .events = options.events,
                .window = options.window}),
      m_runner({m_controller, m_dataFile, m_cloakWorker, m_progress, m_turns, m_presenter, m_progressView,
                places.inProgressDirectory, m_groups, m_groupsFile, &m_window, &m_window, &m_passwords,
                options.language}) {
    m_passwords.setPrompt(options.prompt);
    m_turns.setInterrupt([this, interrupt = options.interrupt] {
        if (interrupt)
            interrupt();
        m_passwords.cancelClick();
        m_authority.cancel();
    });
    m_security.setShouldEnd([this] { return m_turns.isLeaving(); });
    m_cloakWorker.setMayAsk(options.mayAsk, [this] { return m_turns.isLeaving(); });
    m_cloakWorker.setTraceWishes(TraceWishes::from(m_defaults));
}

RequestStatus OwnList::run(const Request& request, RequestCaller& caller, bool mayChange) {
    m_presenter.setCaller(&caller); // for what loading has to tell
    const bool isWhole = m_controller.loadDataFromDisk();
    if (!isWhole && mayChange)
        m_controller.saveDataToDisk(); // the next command need not tell it again
    if (mayChange)
        m_cloakWorker.checkTempFiles();
    m_groups.start(mayChange);
    m_groups.setAutoUnhideHappened(wereAutoHideGroupsShown());
    std::optional<RequestStatus> status;
    m_runner.handle(request, caller, [&](RequestStatus told) { status = told; });
    MainThread::runUntil([&] { return status.has_value(); });
    // Nobody should take what could not be read for an empty list.
    const bool isUnknown = !isWhole && m_controller.files().size() == 0;
    return isUnknown && *status == RequestStatus::AllWell ? RequestStatus::SomeFailed : *status;
}

// By the last pass of a former run: its flag lives as long as a program, which a single command is not. The
// mark alone may be set for one item.
bool OwnList::wereAutoHideGroupsShown() const {
    return m_mark.isSet() && std::ranges::none_of(m_groups.groups(), [](const ListedGroup& group) {
               return group->autoHide().value_or(false) && group->state() != 0;
           });
}

void OwnList::start() {
    load();
    m_turns.run([this] { m_controller.check(); });
    follow();
}

void OwnList::load() {
    m_turns.run([this] {
        m_controller.load();
        m_groups.start();
    });
}

void OwnList::follow(bool goesOn) {
    m_window.start(goesOn);
}

void OwnList::check() {
    m_controller.checkBehind();
}

void OwnList::save() {
    m_groups.saveDataToDisk();
    m_controller.saveDataToDisk();
}

} // namespace veilkeep
