#include "ctl/UninstallCommand.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "filelist/Texts.h"
#include "platform/linux/filemanagers/LinuxFileManagerMenu.h"
#include "prefs/PasswordManager.h"
#include "requests/CallerPrompt.h"

#include <QCoreApplication>

#include <cerrno>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(UninstallCommand)
};

} // namespace

RequestStatus UninstallCommand::run() {
    const InstallationPlaces places = InstallationPlaces::ofUser();
    if (places.manifest.empty() || !itemExistsAt(places.manifest)) {
        if (applicationBundlePath().starts_with(InstallationPlaces::ofSystem))
            return refused(Texts::tr("%1 is installed for all users; an administrator removes it with\n"
                                     "apt remove veilkeep")
                               .arg(applicationName()));
        return refused(Texts::tr("%1 is not installed for this user alone").arg(applicationName()));
    }
    if (!isFree(Texts::tr("%1 is running, or a command of it; please quit it first").arg(applicationName())))
        return RequestStatus::Refused;
    m_list.reset(); // nobody should wait for a person
    if (!isPasswordGiven() || !isWanted())
        return RequestStatus::Refused;
    if (!isFree(Texts::tr("%1 was started meanwhile; please quit it first").arg(applicationName())))
        return RequestStatus::Refused;
    return remove();
}

RequestStatus UninstallCommand::refused(const QString& why) {
    m_output.printMessage(why);
    return RequestStatus::Refused;
}

RequestStatus UninstallCommand::remove() {
    const auto uninstalled = m_installation.uninstall();
    if (!uninstalled) {
        m_output.printError(uninstalled.error().path, errorReason(uninstalled.error()).toStdString());
        return RequestStatus::SomeFailed;
    }
    const bool areEntriesRemoved = removeMenuEntries();
    for (const Error& error : uninstalled->notRemoved)
        m_output.printError(error.path, errorReason(error).toStdString());
    for (const std::string& path : uninstalled->kept)
        m_output.printError(
            path, Texts::tr("stays, since it was changed or is not part of the installation").toStdString());
    if (!uninstalled->notRemoved.empty())
        return RequestStatus::SomeFailed;
    m_output.printMessage(Texts::tr("%1 was removed. The list, the settings and all items stay as they are. "
                                    "What is hidden comes\n"
                                    "back by 'veilkeepctl unhide --all' once %1 is installed again.")
                              .arg(applicationName()));
    return uninstalled->kept.empty() && areEntriesRemoved ? RequestStatus::AllWell
                                                          : RequestStatus::SomeFailed;
}

// Another copy of the program makes them anew when its user asks for them.
bool UninstallCommand::removeMenuEntries() {
    const FileManagerChange change = LinuxFileManagerMenu({}).remove();
    for (const Error& error : change.notChanged)
        m_output.printError(error.path, errorReason(error).toStdString());
    return !change.hasFailed();
}

bool UninstallCommand::isFree(const QString& whenInUse) {
    if (!itemExistsAt(joinPath(m_places.dataDirectory, ".lock")))
        return true;
    auto taken = ListOwnership::take(m_places.dataDirectory, std::chrono::milliseconds(0));
    if (taken)
        m_list.emplace(std::move(*taken));
    else if (taken.error().systemError == EWOULDBLOCK)
        m_output.printMessage(whenInUse);
    else
        m_output.printError(taken.error().path, errorReason(taken.error()).toStdString());
    return taken.has_value();
}

bool UninstallCommand::isPasswordGiven() {
    PasswordManager passwords(m_defaults);
    return !passwords.isPasswordEnabled() || isGivenByCaller(passwords, m_caller);
}

bool UninstallCommand::isWanted() {
    const Question question{
        Texts::tr("Remove %1?").arg(applicationName()),
        Texts::tr(
            "Its program, its menu entry and its commands are removed. Items that are hidden stay hidden: "
            "bring them back first, with 'veilkeepctl unhide --all'."),
        {Texts::tr("Remove"), Texts::tr("Cancel")}};
    return m_caller.ask(question) == 0;
}

} // namespace veilkeep
