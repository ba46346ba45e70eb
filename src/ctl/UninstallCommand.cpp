#include "ctl/UninstallCommand.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/storage/UserDefaults.h"
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
    if (isInUse())
        return refused(
            Texts::tr("%1 is running, or a command of it; please quit it first").arg(applicationName()));
    m_list.reset(); // nobody should wait for a person
    if (!isPasswordGiven() || !isWanted())
        return RequestStatus::Refused;
    if (isInUse())
        return refused(Texts::tr("%1 was started meanwhile; please quit it first").arg(applicationName()));
    return remove();
}

RequestStatus UninstallCommand::refused(const QString& why) {
    m_output.printMessage(why);
    return RequestStatus::Refused;
}

RequestStatus UninstallCommand::remove() {
    const bool areEntriesRemoved = removeMenuEntries();
    const auto kept = m_installation.uninstall();
    if (!kept) {
        m_output.printError(kept.error().path, errorReason(kept.error()).toStdString());
        return RequestStatus::SomeFailed;
    }
    for (const std::string& path : *kept)
        m_output.printError(
            path, Texts::tr("stays, since it was changed or is not part of the installation").toStdString());
    m_output.printMessage(Texts::tr("%1 was removed. The list, the settings and all items stay as they are. "
                                    "What is hidden comes\n"
                                    "back by 'veilkeepctl unhide --all' once %1 is installed again.")
                              .arg(applicationName()));
    return kept->empty() && areEntriesRemoved ? RequestStatus::AllWell : RequestStatus::SomeFailed;
}

// Another copy of the program makes them anew when its user asks for them.
bool UninstallCommand::removeMenuEntries() {
    const FileManagerChange change = LinuxFileManagerMenu({}).remove();
    for (const Error& error : change.notChanged)
        m_output.printError(error.path, errorReason(error).toStdString());
    return !change.hasFailed();
}

bool UninstallCommand::isInUse() {
    if (!itemExistsAt(joinPath(m_places.dataDirectory, ".lock")))
        return false;
    auto taken = ListOwnership::take(m_places.dataDirectory, std::chrono::milliseconds(0));
    if (taken)
        m_list.emplace(std::move(*taken));
    return !taken && taken.error().systemError == EWOULDBLOCK;
}

bool UninstallCommand::isPasswordGiven() {
    UserDefaults defaults;
    PasswordManager passwords(defaults);
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
