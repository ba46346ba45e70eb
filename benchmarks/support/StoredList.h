#pragma once

#include "alerts/AlertPresenter.h"
#include "filelist/FilesViewController.h"

#include <cstdlib>
#include <string>

namespace veilkeep::benchmark {

class NoPresenter : public AlertPresenter {
public:
    AlertAnswer run(const Alert&) override { std::abort(); }
    void begin(const Alert&) override { std::abort(); }
    void cancelOpen() override {}
    void serveOthers() override {}
};

// A list with a data file at the path.
struct StoredList {
    explicit StoredList(const std::string& path) : file(path) {}

    NoPresenter presenter;
    UserDefaults defaults{std::string()};
    Alerts alerts{presenter, defaults};
    ProgressController progress{nullptr};
    Turns turns{alerts};
    NoCurrentGroup group;
    CloakWorkerComunicator worker{{}, {}};
    FilesInfoFile file;
    FilesViewController controller{{file, worker, alerts, progress, turns, defaults, group}};
};

} // namespace veilkeep::benchmark
