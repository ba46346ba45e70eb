#include "platform/linux/filemanagers/ThunarEntry.h"

#include "core/base/Md5.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/storage/ReplaceFile.h"
#include "platform/linux/filemanagers/PlacedFile.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::size_t mostBytes = std::size_t{1} << 20;
constexpr mode_t fileMode = 0644;
constexpr auto emptyList = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<actions>\n</actions>\n";
constexpr auto usersFile = "-"; // in the place of the digest

// Of a file that cannot be read as a list.
bool mentionsUs(const std::string& path) {
    const auto text = readWholeFile(path, mostBytes);
    return text && text->find("com.ostrel.Veilkeep.") != std::string::npos;
}

bool isMissing(const Error& error) {
    return error.systemError == ENOENT || error.systemError == ENOTDIR;
}

// Whether a command is one of ours but for the place of the program, which is quoted in front.
bool differsByPlaceAlone(const QString& command, const QString& wanted) {
    const QString program = QStringLiteral("/Contents/MacOS/");
    const auto place = command.left(command.lastIndexOf(program));
    const auto isEnd = [](const QString& text, qsizetype at) { return at > 0 && text[at - 1] != u'\\'; };
    return command.contains(program) &&
           command.mid(place.size()) == wanted.mid(wanted.lastIndexOf(program)) &&
           place.startsWith(QLatin1String("\"/")) && !isEnd(place, place.indexOf(u'"', 1));
}

} // namespace

ThunarEntry::ThunarEntry(std::string path, std::string actions, std::string version,
                         std::vector<std::string> systemFiles)
    : m_path(std::move(path)),
      m_actions(std::move(actions)),
      m_version(std::move(version)),
      m_systemFiles(std::move(systemFiles)) {}

Result<ThunarActions> ThunarEntry::read() const {
    auto text = readWholeFile(m_path, mostBytes);
    if (!text)
        return text.error();
    auto actions = ThunarActions::parse(*text);
    if (actions)
        return actions;
    Error error = actions.error();
    error.path = m_path;
    return error;
}

// What Thunar's own editor made of them is as good as ours while it starts this program.
bool ThunarEntry::isCurrent(const ThunarActions& found) const {
    if (found.mark() && found.mark()->version != m_version)
        return false;
    const auto wanted = ThunarActions::parse("<actions>" + m_actions + "</actions>");
    if (!wanted)
        return true; // nothing to put in its place
    const auto commands = wanted->commands();
    for (const auto& [identifier, command] : found.commands())
        if (const auto now = commands.find(identifier); now == commands.end() || now->second != command)
            return false;
    return true;
}

// By the user: what another copy or version of this program wrote starts a program in the same way. Nothing
// is to be compared with where the actions are not known.
bool ThunarEntry::isEdited(const ThunarActions& found) const {
    const auto wanted = ThunarActions::parse("<actions>" + m_actions + "</actions>");
    if (!wanted)
        return false;
    const auto commands = wanted->commands();
    return std::ranges::any_of(found.commands(), [&commands](const auto& each) {
        const auto now = commands.find(each.first);
        return now != commands.end() && !differsByPlaceAlone(each.second, now->second);
    });
}

MenuEntry::State ThunarEntry::state() const {
    const auto found = read();
    if (!found && isMissing(found.error()))
        return State::Absent;
    if (!found)
        return mentionsUs(m_path) ? State::Changed : State::Foreign;
    if (found->commands().empty())
        return State::Absent;
    if (isEdited(*found))
        return State::Changed;
    return isCurrent(*found) ? State::Current : State::Outdated;
}

std::string ThunarEntry::newText() const {
    for (const std::string& file : m_systemFiles)
        if (auto text = readWholeFile(file, mostBytes); text && ThunarActions::parse(*text))
            return *std::move(text);
    return emptyList;
}

Result<void> ThunarEntry::install(int directoriesMade) {
    EntryMark mark{m_version, directoriesMade, usersFile};
    auto found = read();
    if (!found && !isMissing(found.error()))
        return found.error();
    if (!found) {
        const std::string text = newText();
        mark.digest = md5(text);
        found = ThunarActions::parse(text);
    } else if (!found->commands().empty() && (isEdited(*found) || isCurrent(*found))) {
        return {};
    } else if (found->mark()) {
        mark.directories = found->mark()->directories;
        mark.digest = found->mark()->digest;
    }
    const auto target = replaceTarget(m_path);
    if (!target)
        return target.error();
    return placeFile(*target, found->with(m_actions, mark), fileMode);
}

Result<int> ThunarEntry::remove() {
    const auto found = read();
    if (!found)
        return mentionsUs(m_path) ? Result<int>(found.error()) : 0;
    if (found->commands().empty() && !found->mark())
        return 0;
    if (isEdited(*found))
        return Error::system("compare", m_path, ESTALE);
    const std::string rest = found->without();
    const bool isOurs = found->mark() && found->mark()->digest == md5(rest);
    const auto target = replaceTarget(m_path);
    if (!target)
        return target.error();
    const auto changed =
        isOurs && *target == m_path ? removePlacedFile(m_path) : placeFile(*target, rest, fileMode);
    if (!changed)
        return changed.error();
    return found->mark() ? found->mark()->directories : 0;
}

} // namespace veilkeep
