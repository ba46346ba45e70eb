#include "platform/linux/filemanagers/LinuxFileManagerMenu.h"

#include "core/base/PathText.h"
#include "core/environment/Bundle.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/log/Log.h"
#include "core/process/ChildProcess.h"
#include "core/process/DetachedProcess.h"
#include "core/process/Tick.h"
#include "platform/linux/SessionBusConnection.h"
#include "platform/linux/filemanagers/EntryFile.h"
#include "platform/linux/filemanagers/EntryTemplate.h"
#include "platform/linux/filemanagers/PlacedFile.h"
#include "platform/linux/filemanagers/ThunarEntry.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::size_t largestTemplate = std::size_t{64} << 10;
constexpr std::chrono::seconds quitLimit{10};

using State = MenuEntry::State;

std::string templatesIn(const std::string& bundle) {
    return bundle + "/Contents/Resources/filemanagers";
}

// By its own command to quit, so that it can put things in order; then it is there again as a service, as
// desktops start it. Meanwhile windows are drawn.
bool quitAndStart(const std::string& program) {
    Tick tick([] { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); });
    ChildProcessOptions options;
    options.discardErrors = true;
    options.timeLimit = quitLimit;
    options.tick = &tick;
    const auto quit = runChildProcess(program, {"--quit"}, options);
    if (!quit.exitedWith(0)) {
        logLine("The file manager " + program + " could not be quit: " + quit.howItEnded());
        return false;
    }
    const auto started = startDetachedProcess(program, {"--daemon"});
    if (!started)
        logError("The file manager could not be started again", started.error());
    return started.has_value();
}

bool isOurs(State state) {
    return state == State::Current || state == State::Outdated || state == State::Changed;
}

} // namespace

std::string LinuxFileManagerMenu::directoryOf(const FileManagerFile& file) const {
    const bool isData = file.base == FileManagerFile::Base::DataHome;
    return joinPath(isData ? m_parts.user.dataHome : m_parts.user.configHome, file.finderPluginLocation);
}

Result<std::string> LinuxFileManagerMenu::contentOf(const FileManagerFile& file) const {
    const auto text =
        readWholeFile(joinPath(templatesIn(m_parts.bundle), file.finderPluginName), largestTemplate);
    if (!text)
        return text.error();
    const auto program = quotedProgram(bundledProgramPath(m_parts.bundle, "Veilkeep"), file.format);
    if (!program)
        return program.error();
    return filledTemplate(*text, {{"PROGRAM", *program}, {"OPTION", file.option}, {"URIS", file.uris}});
}

std::unique_ptr<MenuEntry> LinuxFileManagerMenu::entryOf(const FileManagerFile& file,
                                                         const std::string& content) const {
    std::string path = joinPath(directoryOf(file), file.outputFinderPluginName);
    if (file.format != EntryFormat::Xml)
        return std::make_unique<EntryFile>(std::move(path), content, m_parts.version, file.mode);
    std::vector<std::string> systemFiles;
    for (const std::string& config : m_parts.places.config)
        systemFiles.push_back(
            joinPath(joinPath(config, file.finderPluginLocation), file.outputFinderPluginName));
    return std::make_unique<ThunarEntry>(std::move(path), content, m_parts.version, std::move(systemFiles));
}

// The file with the same name among the system's data. A package installs it for those that look there.
bool LinuxFileManagerMenu::isForEverybody(const FileManagerFile& file) const {
    if (file.base != FileManagerFile::Base::DataHome)
        return false;
    return std::ranges::any_of(m_parts.places.data, [&](const std::string& data) {
        return data != m_parts.user.dataHome &&
               itemExistsAt(joinPath(joinPath(data, file.finderPluginLocation), file.outputFinderPluginName));
    });
}

bool LinuxFileManagerMenu::isForEverybody(const FileManager& manager) const {
    return std::ranges::all_of(fileManagerFiles(), [&](const FileManagerFile& file) {
        return &file.manager != &manager || isForEverybody(file);
    });
}

bool LinuxFileManagerMenu::isInstalled() const {
    return std::ranges::any_of(
               fileManagerFiles(),
               [this](const FileManagerFile& file) { return isOurs(entryOf(file, {})->state()); }) ||
           (isAnyManagerPresent() && std::ranges::all_of(fileManagers(), [this](const FileManager& manager) {
                return !isPresent(manager, m_parts.places) || isForEverybody(manager);
            }));
}

bool LinuxFileManagerMenu::isSourceThere() const {
    return !m_parts.bundle.empty() && isDirectoryAt(templatesIn(m_parts.bundle));
}

bool LinuxFileManagerMenu::isAnyManagerPresent() const {
    return std::ranges::any_of(
        fileManagers(), [this](const FileManager& manager) { return isPresent(manager, m_parts.places); });
}

std::vector<LinuxFileManagerMenu::Found> LinuxFileManagerMenu::entries() const {
    std::vector<Found> found;
    for (const FileManagerFile& file : fileManagerFiles())
        if (isPresent(file.manager, m_parts.places)) {
            const auto entry = entryOf(file, contentOf(file).value_or(std::string()));
            const State state = entry->state();
            found.push_back({file.manager.name, entry->path(),
                             state == State::Absent && isForEverybody(file) ? State::Current : state});
        }
    return found;
}

FileManagerChange LinuxFileManagerMenu::install() {
    FileManagerChange change;
    for (const FileManagerFile& file : fileManagerFiles())
        if (isPresent(file.manager, m_parts.places) && !isForEverybody(file))
            install(file, change);
    return change;
}

FileManagerChange LinuxFileManagerMenu::renew() {
    FileManagerChange change;
    std::vector<MadePlace> made;
    for (const FileManagerFile& file : fileManagerFiles()) {
        const auto content = contentOf(file);
        const State state = content ? entryOf(file, *content)->state() : State::Absent;
        if (isForEverybody(file) && (state == State::Current || state == State::Outdated))
            remove(file, change, made);
        else if (state == State::Outdated)
            install(file, change);
    }
    removePlaces(made);
    return change;
}

void LinuxFileManagerMenu::install(const FileManagerFile& file, FileManagerChange& change) const {
    const auto content = contentOf(file);
    if (!content && content.error().systemError == ENOENT)
        return logError("A template of menu entries is missing", content.error());
    const auto entry = entryOf(file, content ? *content : std::string());
    if (!content)
        return change.notChanged.push_back(
            {content.error().code, content.error().operation, entry->path(), content.error().systemError});
    const State before = entry->state();
    const auto made = makePlace(directoryOf(file));
    if (!made)
        return change.noDirectory.push_back(
            Error::system("mkdir", directoryOf(file), made.error().systemError));
    if (const auto installed = entry->install(*made); !installed) {
        removePlaces({{directoryOf(file), *made}});
        return change.notChanged.push_back(installed.error());
    }
    if (before == State::Absent || before == State::Outdated)
        noteChange(file, entry->path(), change);
}

FileManagerChange LinuxFileManagerMenu::remove() {
    FileManagerChange change;
    std::vector<MadePlace> made;
    for (const FileManagerFile& file : fileManagerFiles())
        remove(file, change, made);
    removePlaces(made);
    for (const FileManager& manager : fileManagers())
        if (isPresent(manager, m_parts.places) && isForEverybody(manager))
            change.forEverybody.emplace_back(manager.name);
    return change;
}

void LinuxFileManagerMenu::remove(const FileManagerFile& file, FileManagerChange& change,
                                  std::vector<MadePlace>& made) const {
    const auto entry = entryOf(file, contentOf(file).value_or(std::string())); // to compare with
    const bool wasThere = isOurs(entry->state());
    const auto removed = entry->remove();
    if (!removed)
        return change.notChanged.push_back(removed.error());
    made.push_back({directoryOf(file), *removed});
    if (wasThere)
        noteChange(file, entry->path(), change);
}

void LinuxFileManagerMenu::noteChange(const FileManagerFile& file, const std::string& path,
                                      FileManagerChange& change) const {
    change.changed.push_back(path);
    const FileManager& manager = file.manager;
    if (manager.restartedOnBus && m_parts.isOnBus(manager.restartedOnBus))
        change.toRestart.push_back({manager.name, path});
}

std::vector<std::string>
LinuxFileManagerMenu::restart(const std::vector<FileManagerChange::Restart>& toRestart) {
    std::vector<std::string> failed;
    for (const FileManager& manager : fileManagers())
        if (std::ranges::find(toRestart, manager.name, &FileManagerChange::Restart::manager) !=
                toRestart.end() &&
            !quitAndStart(programIn(m_parts.places.programs, manager.program)))
            failed.emplace_back(manager.name);
    return failed;
}

bool LinuxFileManagerMenu::isOnSessionBus(const std::string& name) {
    const SessionBusConnection bus;
    return bus.isConnected() && bus.askBus(QStringLiteral("NameHasOwner"), QString::fromStdString(name))
                                    .arguments()
                                    .value(0)
                                    .toBool();
}

} // namespace veilkeep
