#pragma once

#include "alerts/ProgressController.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/protocol/CloakWorkerComunicator.h"
#include "filelist/FilesViewController.h"
#include "filelist/RecordsByItem.h"
#include "groups/GroupViewController.h"
#include "platform/Request.h"
#include "requests/CallerPresenter.h"

#include <QByteArray>

#include <memory>
#include <string>
#include <string_view>

namespace veilkeep {

class MainWindowController;

// One request while it is worked on: what it works with, none of it owned, and what has come of it so far.
// Main thread.
struct RequestWork {
    FilesViewController& controller;
    CloakWorkerComunicator& cloakWorker;
    ProgressController& progress;
    CallerPresenter& presenter;
    const std::string& inProgressFolder;
    const Request& request;
    RequestCaller& caller;
    GroupViewController& groups;
    MainWindowController* window = nullptr; // none in tests of what needs none
    RequestStatus status = RequestStatus::AllWell;

    bool isInteractive() const;
    QVariant option(const char* name) const { return request.options.value(QLatin1String(name)); }
    std::string bytesOption(const char* name) const { return option(name).toByteArray().toStdString(); }

    // By the name in that option, not a header row. Null, and told, where there is none.
    ListedGroup groupNamedBy(const char* option);

    void refuseAsUnknown(); // the request says what is not understood
    void fail(const std::string& path, const QString& reason);

    // Listed under either of its paths, or under the path that this one is when no link leads to it.
    ListedFile listed(std::string_view path) const;
    ListedFile listedInAnyForm(const std::string& path) const; // or as the hidden item that would bear it

    // The records as they were at the first look by item.
    const RecordsByItem& recordsByItem() const;
    mutable std::unique_ptr<RecordsByItem> byItem = nullptr;
    mutable LinkResolver links = {}; // of folders, as they were at the first look
};

// The hidden form of a visible path; a path directly within ".SYS_INDEX" is its own.
std::string hiddenFormOf(const std::string& path);
bool isHiddenForm(std::string_view path);

QByteArray rowBytes(std::string_view text); // a path or a name as it stands in a row

} // namespace veilkeep
