#pragma once

#include "filelist/Turns.h"
#include "prefs/PasswordManager.h"
#include "requests/CallerPresenter.h"
#include "requests/CallerProgressView.h"
#include "requests/Language.h"
#include "requests/RequestRules.h"
#include "requests/RequestWork.h"
#include "session/MainWindowController.h"

namespace veilkeep {

// What requests are worked on with. Nothing of it is owned.
struct RequestRunnerParts {
    FilesViewController& controller;
    const FilesInfoFile& dataFile;
    CloakWorkerComunicator& cloakWorker;
    ProgressController& progress;
    Turns& turns;
    CallerPresenter& presenter;       // through which the controller's alerts go
    CallerProgressView& progressView; // and its progress
    std::string inProgressFolder;
    GroupViewController& groups;
    const GroupsInfoFile& groupsFile;
    MainWindowController* window = nullptr; // none: nothing is open that leaving would have to close
    Gate* gate = nullptr;                   // none: no password stands before anything
    PasswordManager* askCaller = nullptr;   // of the gate: asks whoever made the request. None: in a window
    Language* language = nullptr;           // callers match what they are told: it is told in English
};

// Works on requests with the list's own controllers, in veilkeepctl by itself and in the application on
// behalf of others. Made by the program's wiring; main thread.
class RequestRunner : public RequestHandler {
public:
    explicit RequestRunner(RequestRunnerParts parts) : m_parts(std::move(parts)) {}

    // In its turn; "autohide" like every leaving as soon as what runs has come to its end. What its options
    // are: RequestRules.h.
    void handle(const Request& request, RequestCaller& caller, Done done) override;
    bool isUrgent(const QString& command) const override; // "autohide" alone

private:
    RequestStatus run(const Request& request, RequestCaller& caller);
    bool isAllowed(const RequestRule& rule, const Request& request, RequestCaller& caller);
    void tellSaveTrouble(RequestWork& work);
    bool askPassword(RequestCaller& caller);
    void work(RequestCommand command, RequestWork& work);

    const RequestRunnerParts m_parts;
};

} // namespace veilkeep
