#include "ctl/OwnList.h"

#include "core/base/PathText.h"
#include "filelist/MainThread.h"

#include <optional>

namespace veilkeep {

OwnList::OwnList(const std::string& workerPath, const OwnPlaces& places)
    : m_security(m_authority, m_defaults, places.inProgressDirectory),
      m_cloakWorker(workerPath, places.inProgressDirectory, {}, &m_security),
      m_dataFile(joinPath(places.dataDirectory, "FilesInfo.Veilkeep")),
      m_controller({m_dataFile, m_cloakWorker, m_alerts, m_progress, m_turns, m_defaults, m_groups,
                    &m_security, &m_mounter}),
      m_runner({m_controller, m_dataFile, m_cloakWorker, m_progress, m_turns, m_presenter, m_progressView,
                places.inProgressDirectory}) {
    m_cloakWorker.setTraceWishes({m_defaults.boolean("CleanRecentItems"), false});
}

RequestStatus OwnList::run(const Request& request, RequestCaller& caller, bool mayChange) {
    m_presenter.setCaller(&caller); // for what loading has to tell
    const bool isWhole = m_controller.loadDataFromDisk();
    if (!isWhole && mayChange)
        m_controller.saveDataToDisk(); // the next command need not tell it again
    if (mayChange)
        m_cloakWorker.checkTempFiles();
    std::optional<RequestStatus> status;
    m_runner.handle(request, caller, [&](RequestStatus told) { status = told; });
    MainThread::runUntil([&] { return status.has_value(); });
    // Nobody should take what could not be read for an empty list.
    const bool isUnknown = !isWhole && m_controller.files().size() == 0;
    return isUnknown && *status == RequestStatus::AllWell ? RequestStatus::SomeFailed : *status;
}

} // namespace veilkeep
