#include "tests/endurance/World.h"

#include "core/base/PathText.h"
#include "core/base/UniqueFd.h"
#include "filelist/MainThread.h"
#include "format/PrintableName.h"
#include "groups/GroupNames.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace veilkeep::test {
namespace {

constexpr std::size_t mostRows = 9;

// Leaves no room on the file system of a directory, as long as this lives.
class FullDisk {
public:
    explicit FullDisk(const std::string& directory) : m_filler(joinPath(directory, "filler")) {
        const UniqueFd file(::open(m_filler.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (!file)
            throw std::runtime_error(m_filler + ": " + std::strerror(errno));
        off_t size = 0;
        for (off_t part = off_t{64} << 20; part >= 512; part /= 2)
            while (::posix_fallocate(file.get(), size, part) == 0)
                size += part;
    }
    ~FullDisk() { ::unlink(m_filler.c_str()); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    const std::string m_filler;
};

} // namespace

std::ostream& operator<<(std::ostream& stream, const World::Row& row) {
    return stream << printableName(row.name) << " " << row.groupID.value_or(-1) << " " << row.state << " "
                  << row.autoHide;
}

void World::openProgram() {
    m_program.reset();
    m_program = std::make_unique<ControllerWorld>(m_options);
}

// As OwnList does it, but that what is missing is found before the pass.
void World::startProgram() {
    list().load();
    const std::string path = GroupWorld::dataPath();
    const SafeFile file(path);
    if ((exists(path) || !file.earlierCopies().empty()) && !GroupsInfoFile(path).load().groups)
        m_areGroupsDamaged = true;
    if (GroupsInfoFile(path).load().trouble)
        program().presenter.expect({.title = "The list of groups could not be read.", .answer = "OK"});
    groups().start();
    list().check();
    MainThread::runUntil([this] { return !list().brokenFiles().isSearching(); });
    m_isAway = false;
    m_current = 0;
    if (m_rows.empty() || m_areGroupsDamaged)
        m_rows = rowsNow();
    if (m_program->mark.isSet()) {
        say("the pass of a start");
        noteStatesOfPass();
    }
    m_program->controller.start();
    m_model.seeWhatIsHidden();
}

// --- What is expected ---

std::vector<World::Row> World::rowsNow() {
    std::vector<Row> rows;
    for (const ListedGroup& group : groups().groups())
        rows.push_back({std::string(group->name()), group->groupID(), group->state(),
                        group->autoHide().value_or(false), group->isHeaderRow()});
    return rows;
}

World::Numbers World::itemsOf(const Row& row) {
    Numbers items;
    for (const ListedFile& file : list().files().all())
        if (row.groupID == CurrentGroup::allFiles || row.groupID == file->groupID())
            items.push_back(numberOf(*file));
    return items;
}

bool World::isInAutoHideGroup(Number item) const {
    return std::ranges::any_of(m_rows, [&](const Row& row) {
        return row.autoHide && (row.groupID == CurrentGroup::allFiles || row.groupID == m_groupOf.at(item));
    });
}

void World::compareGroups() {
    const bool isDamaged = m_loaded == Loaded::Damaged;
    if (std::exchange(m_areGroupsDamaged, false))
        m_mayLackMark = true;
    EXPECT_EQ(rowsNow(), m_rows);
    std::erase_if(m_groupOf, [this](const auto& entry) { return !m_listed.contains(entry.first); });
    m_mayLackMark = m_mayLackMark || isDamaged;
    for (const ListedFile& file : list().files().all()) {
        const Number item = numberOf(*file);
        const auto [known, isNew] = m_groupOf.emplace(item, file->groupID());
        if (isDamaged)
            known->second = file->groupID();
        EXPECT_EQ(file->groupID(), known->second) << m_model.shown(item);
        EXPECT_TRUE(!isNew || m_loaded != Loaded::No || file->groupID() == CurrentGroup::allFiles ||
                    file->groupID() == m_rows[m_current].groupID)
            << "a new item, " << m_model.shown(item);
    }
    for (const Number item : m_listed)
        if (m_isTold && !m_mayLackMark && isInAutoHideGroup(item) && !m_model.isHidden(item)) {
            EXPECT_TRUE(m_program->mark.isSet()) << m_model.shown(item) << " is visible without it";
        }
}

// --- Groups ---

std::size_t World::chooseRow(std::size_t first) {
    std::size_t row = 0;
    if (first >= m_rows.size())
        return row;
    do
        row = first + m_choices.below(m_rows.size() - first);
    while (m_rows[row].isHeader);
    return row;
}

std::string World::shownRow(std::size_t row) const {
    return "group " + printableName(m_rows[row].name) + " (" + std::to_string(*m_rows[row].groupID) + ")";
}

void World::addGroup() {
    if (m_rows.size() >= mostRows)
        return removeGroup();
    say("add a group");
    const ListedGroup group = groups().addGroup();
    EXPECT_FALSE(std::ranges::count(m_rows, group->name(), &Row::name)) << "a name that is taken";
    m_rows.push_back({std::string(group->name()), group->groupID()});
}

// What the table shows goes to the group of all files.
void World::removeGroup() {
    if (m_rows.size() <= GroupViewController::firstMovableRow)
        return;
    const std::size_t row = chooseRow(GroupViewController::firstMovableRow);
    const bool isMeant = !m_choices.oneIn(4);
    say((isMeant ? "remove " : "nearly remove ") + shownRow(row));
    const ListedGroup group = groups().groups()[row];
    program().presenter.expect(
        {.title = QStringLiteral("Are you sure you want to remove \"%1\" group?").arg(shownGroupName(*group)),
         .answer = isMeant ? "Remove" : "Cancel"});
    const Numbers shown = itemsOf(m_rows[m_current]);
    EXPECT_EQ(groups().removeGroup(group), isMeant);
    if (!isMeant)
        return;
    for (const Number item : shown)
        m_groupOf[item] = CurrentGroup::allFiles;
    m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(row));
    if (m_current == row)
        m_current = 0;
    else if (m_current > row)
        --m_current;
}

void World::renameGroup() {
    if (m_rows.size() <= GroupViewController::firstMovableRow)
        return;
    static const char* const names[] = {"Letters", "\xFF\xFE", "a\nb", "😀 \xF0\x9F\x98", "New Group 1", " "};
    const std::size_t row = chooseRow(GroupViewController::firstMovableRow);
    const std::string name = names[m_choices.below(std::size(names))];
    say("rename " + shownRow(row) + " to " + printableName(name));
    groups().setNewName(name, m_choices.oneIn(2) ? "folder-pictures" : "/nowhere", groups().groups()[row]);
    m_rows[row].name = name;
}

void World::moveGroup() {
    constexpr std::size_t first = GroupViewController::firstMovableRow;
    if (m_rows.size() <= first)
        return;
    const std::size_t from = chooseRow(first), to = first + m_choices.below(m_rows.size() - first);
    say("move " + shownRow(from) + " to row " + std::to_string(to));
    const std::optional<std::int64_t> current = m_rows[m_current].groupID;
    const ListedGroup selected = groups().currentGroup();
    groups().moveGroup(groups().groups()[from], to);
    const Row moved = m_rows[from];
    m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(from));
    m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(to), moved);
    m_current = groups().rowOf(selected).value_or(m_rows.size());
    EXPECT_EQ(m_rows.at(m_current).groupID, current);
}

void World::selectGroup() {
    m_current = chooseRow(0);
    say("select " + shownRow(m_current));
    groups().selectRow(static_cast<std::ptrdiff_t>(m_current));
    EXPECT_EQ(groups().currentGroup(), groups().groups()[m_current]);
}

void World::markAutoHide() {
    const std::size_t row = chooseRow(m_choices.oneIn(8) ? 0 : GroupViewController::firstMovableRow);
    const bool autoHide = !m_choices.oneIn(3);
    say((autoHide ? "AutoHide for " : "no AutoHide for ") + shownRow(row));
    groups().setAutoHide(autoHide, groups().groups()[row]);
    m_rows[row].autoHide = autoHide;
}

void World::moveToGroup() {
    const Numbers items = someListed("move to a group");
    const std::size_t row = chooseRow(m_choices.oneIn(4) ? 0 : GroupViewController::firstMovableRow);
    say("... to " + shownRow(row));
    list().moveFiles(recordsOf(items), *m_rows[row].groupID);
    EXPECT_TRUE(list().saveDataToDisk());
    for (const Number item : items)
        m_groupOf[item] = *m_rows[row].groupID;
}

void World::hideGroup() {
    const std::size_t row = chooseRow(0);
    say("hide " + shownRow(row));
    const Numbers items = itemsOf(m_rows[row]);
    EXPECT_TRUE(groups().hideGroup(groups().groups()[row], true));
    noteHidden(items);
    m_rows[row].state = 1;
}

void World::showGroup() {
    const std::size_t row = chooseRow(0);
    say("show " + shownRow(row));
    const bool isPossible = noteShown(itemsOf(m_rows[row]));
    EXPECT_EQ(groups().unhideGroup(groups().groups()[row], true), isPossible);
    m_rows[row].state = 0;
}

void World::damageGroups() {
    const std::string path = GroupWorld::dataPath();
    std::string bytes = exists(path) ? readFile(path) : std::string();
    if (bytes.empty())
        return;
    say("damage the groups' file and restart");
    if (m_choices.oneIn(2))
        bytes.resize(m_choices.below(bytes.size()));
    else
        bytes[m_choices.below(bytes.size())] ^= static_cast<char>(1 << m_choices.below(8));
    writeFile(path, bytes);
    m_areGroupsDamaged = true;
    restart();
}

// --- Leaving and coming back ---

void World::noteStatesOfPass() {
    for (Row& row : m_rows)
        row.state = row.autoHide ? 1 : row.state;
}

void World::notePass() {
    noteStatesOfPass();
    for (const Row& row : m_rows)
        if (row.autoHide && m_isTold)
            noteHidden(itemsOf(row));
    if (!m_isTold)
        m_model.seeWhatIsHidden(); // what was moved by hand is not looked for everywhere
    else {
        EXPECT_FALSE(m_program->mark.isSet());
        EXPECT_TRUE(groups().leftVisible().empty());
        m_mayLackMark = false;
    }
}

void World::leave() {
    if (m_isAway)
        return;
    say("leave");
    m_isAway = true;
    const int releases = m_program->events.releases;
    emit m_program->events.absenceChanged(Absence::Lock, true);
    notePass();
    EXPECT_GT(m_program->events.releases, releases);
}

// A search of the whole volume is not for passes, so that everything has to be where the list says.
void World::comeBack() {
    if (!m_isAway)
        return leave();
    if (!m_isTold)
        check();
    say("come back");
    m_isAway = false;
    bool isPossible = true;
    for (Row& row : m_rows)
        if (row.autoHide) {
            isPossible = noteShown(itemsOf(row)) && isPossible;
            row.state = 0;
        }
    if (!isPossible)
        program().presenter.expect(
            {.title = "Some errors have been occured while unhiding files", .answer = "OK"});
    emit m_program->events.absenceChanged(Absence::Lock, false);
    EXPECT_TRUE(turnUntil([this] { return groups().autoUnhideHappened(); }));
    groups().leftVisibleWasSeen();
}

void World::quit() {
    say("quit");
    emit m_program->events.endRequested(Ending::Signal);
    notePass();
    restart();
}

// --- Accidents ---

void World::doSomething() {
    switch (m_choices.below(4)) {
    case 0:
        list().hideFiles(recordsOf(someListed("hide")), true);
        break;
    case 1:
        list().unhideFiles(recordsOf(someListed("unhide")), true);
        break;
    case 2:
        say("a pass");
        groups().makeAutoHide("an accident");
        noteStatesOfPass();
        break;
    case 3:
        say("restore");
        runRestore();
        break;
    }
    m_model.seeWhatIsHidden();
    m_isTold = false;
}

// Whatever befell the program, it needs no more than its usual looks.
void World::putRight() {
    list().checkTempFiles();
    for (const ListedFile& file : list().files().all())
        m_listed.insert(numberOf(*file));
    EXPECT_TRUE(list().saveDataToDisk());
    EXPECT_TRUE(groups().saveDataToDisk());
    EXPECT_FALSE(list().saveTrouble() || groups().saveTrouble());
    list().hideOperations().clearErrorList();
    groups().leftVisibleWasSeen();
    m_choices.oneIn(2) ? check() : restart();
}

void World::breakWorker() {
    const std::size_t last = BadWorker::kinds() - 1; // takes long
    const std::size_t kind = m_choices.oneIn(300) ? last : m_choices.below(last);
    say("a worker that " + m_worker.goBad(kind));
    doSomething();
    m_worker.goWell();
    putRight();
}

void World::fillDisk() {
    {
        say("the disk is full");
        const FullDisk full(m_place);
        if (m_choices.oneIn(3))
            addGroup();
        m_mayLackMark = true;
        doSomething();
    }
    putRight();
}

} // namespace veilkeep::test
