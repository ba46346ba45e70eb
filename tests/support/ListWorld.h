#pragma once

#include "core/environment/XdgDirectories.h"
#include "core/protocol/CloakWorkerComunicator.h"
#include "core/protocol/SecurityController.h"
#include "core/storage/UserDefaults.h"
#include "filelist/FilesViewController.h"
#include "tests/support/RecordingProgressView.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <memory>
#include <string>

namespace veilkeep::test {

// Answers as is wanted, whatever it is asked.
class Authority : public RightsAuthority {
public:
    Answer check(const std::string&, Interaction interaction) override {
        questions += interaction == Interaction::Allowed;
        return answer;
    }
    Answer giveUp(const std::string&) override { return Answer::Granted; }

    Answer answer = Answer::Granted;
    int questions = 0;
};

struct ChosenGroup : CurrentGroup {
    std::int64_t chosen = allFiles;
    std::int64_t currentGroupID() const override { return chosen; }
};

struct RevealedPaths : FileViewer {
    void selectFile(const std::string& path) override { revealed.push_back(path); }
    std::vector<std::string> revealed;
};

// A record of which nothing lies on the disk.
inline File listedOnly(const std::string& name, std::int32_t state = File::Visible, std::uint64_t size = 1500,
                       bool isFile = true) {
    return File({{"Name", Bytes{name}},
                 {"Path", Bytes{"/h/" + name}},
                 {"OriginalPath", Bytes{"/h/" + name}},
                 {"State", std::int64_t{state}},
                 {"Size", size},
                 {"IsFile", isFile},
                 {"GroupID", std::int64_t{0}},
                 {"Alias", Bytes{}}});
}

struct ListWorldOptions {
    std::string worker = bundledProgram("cloakWorker");
    VolumeMounter* mounter = nullptr;
    RightsAuthority* authority = nullptr; // with one there is a SecurityController
    std::string pkexec = {};
    PathChooser* pathChooser = nullptr;
    FileViewer* fileViewer = nullptr;
    const CurrentGroup* groups = nullptr; // none: all files
    DistributedNotifications* notifications = nullptr;
    SafeFileOptions file = {}; // of the list
};

// The item list with all that it works with: the real worker, and a real list file in the scratch home. Made
// anew it is the program's next start.
class ListWorld {
public:
    explicit ListWorld(const ListWorldOptions& options = {})
        : m_dataFile(OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep", options.file) {
        if (options.authority)
            m_security = std::make_unique<SecurityController>(*options.authority, defaults,
                                                              OwnPlaces::current().inProgressDirectory,
                                                              Tick(), options.pkexec);
        m_worker = std::make_unique<CloakWorkerComunicator>(
            options.worker, OwnPlaces::current().inProgressDirectory, Tick(), m_security.get());
        list = std::make_unique<FilesViewController>(FilesViewControllerParts{
            .dataFile = m_dataFile,
            .cloakWorker = *m_worker,
            .alerts = alerts,
            .progress = m_progress,
            .turns = turns,
            .defaults = defaults,
            .groups = options.groups ? *options.groups : m_groups,
            .security = m_security.get(),
            .mounter = options.mounter,
            .pathChooser = options.pathChooser,
            .fileViewer = options.fileViewer,
            .notifications = options.notifications,
        });
    }

    // Adds without the thread of a batch, and without looking at the path.
    ListedFile add(const std::string& path) { return list->files().append(File::initWithPath(path)); }

    ScriptedPresenter presenter;
    RecordingProgressView progressView;
    UserDefaults defaults;
    Alerts alerts{presenter, defaults};
    Turns turns{alerts};

private:
    ProgressController m_progress{&progressView};
    NoCurrentGroup m_groups;
    FilesInfoFile m_dataFile;
    std::unique_ptr<SecurityController> m_security;
    std::unique_ptr<CloakWorkerComunicator> m_worker;

public:
    std::unique_ptr<FilesViewController> list; // ends before what it works with
};

} // namespace veilkeep::test
