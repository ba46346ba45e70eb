#pragma once

#include "core/environment/XdgDirectories.h"
#include "core/storage/ListOwnership.h"
#include "core/storage/UserDefaults.h"
#include "ctl/TerminalCaller.h"
#include "ctl/TerminalOutput.h"
#include "platform/linux/installation/UserInstallation.h"

#include <optional>

namespace veilkeep {

// "uninstall": takes the program away that a user installed for himself, be it this one or another. Items,
// lists and settings stay. Nothing of what it is given is owned. Main thread.
class UninstallCommand {
public:
    UninstallCommand(UserDefaults& defaults, TerminalOutput& output, TerminalCaller& caller)
        : m_defaults(defaults), m_output(output), m_caller(caller) {}

    RequestStatus run();

private:
    RequestStatus refused(const QString& why);
    RequestStatus remove();
    bool removeMenuEntries(); // of file managers
    bool isPasswordGiven();
    bool isWanted();

    // Unless the program or a command of it works on the list, or nobody can tell: then it says so. Without a
    // list nobody does.
    bool isFree(const QString& whenInUse);

    UserDefaults& m_defaults;
    TerminalOutput& m_output;
    TerminalCaller& m_caller;
    UserInstallation m_installation;
    const OwnPlaces m_places = OwnPlaces::current();
    std::optional<ListOwnership> m_list;
};

} // namespace veilkeep
