#include "tests/endurance/World.h"

#include "core/base/PathText.h"
#include "core/tracking/AliasRecord.h"
#include "filelist/MainThread.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace veilkeep::test {
namespace {

// No file is as good as an empty one.
std::string contentOf(const std::string& path) {
    return exists(path) ? readFile(path) : std::string();
}

} // namespace

World::World(const std::string& place, unsigned int seed, BadWorker& worker)
    : m_place(place), m_worker(worker), m_choices(seed), m_model(joinPath(place, "items"), m_choices) {
    m_options.worker = worker.path();
    m_options.file.clock = [this] { return m_now; };
}

void World::run() {
    openProgram();
    startProgram();
    m_contents = {contentOf(dataFile())};
    for (int step = 0; step < stepsInSequence; ++step)
        take(chooseStep());
    for (const Step step : {&World::restart, &World::restore, &World::check, &World::unhideAll})
        take(step);
    m_program.reset();
}

World::Step World::chooseStep() {
    static constexpr Step ofItems[] = {
        &World::add,      &World::add,     &World::add,     &World::add,    &World::hide,   &World::hide,
        &World::hide,     &World::hide,    &World::hide,    &World::unhide, &World::unhide, &World::unhide,
        &World::move,     &World::move,    &World::move,    &World::move,   &World::move,   &World::remove,
        &World::exchange, &World::restart, &World::restart, &World::damage, &World::check,  &World::restore};
    static constexpr Step others[] = {
        &World::addGroup,    &World::removeGroup,  &World::renameGroup,  &World::moveGroup,
        &World::selectGroup, &World::selectGroup,  &World::markAutoHide, &World::markAutoHide,
        &World::moveToGroup, &World::moveToGroup,  &World::moveToGroup,  &World::hideGroup,
        &World::showGroup,   &World::damageGroups, &World::leave,        &World::leave,
        &World::comeBack,    &World::comeBack,     &World::quit,         &World::breakWorker,
        &World::breakWorker, &World::breakWorker,  &World::fillDisk,     &World::fillDisk};
    if (m_listed.size() < 3 && m_choices.oneIn(2))
        return &World::add;
    return m_choices.oneIn(2) ? ofItems[m_choices.below(std::size(ofItems))]
                              : others[m_choices.below(std::size(others))];
}

void World::take(Step step) {
    if (::testing::Test::HasFailure())
        return;
    m_now += std::chrono::hours(2); // so that each change of the list leaves an earlier copy
    m_loaded = Loaded::No;
    (this->*step)();
    EXPECT_EQ(m_model.difference(), "");
    Numbers listed;
    for (const ListedFile& record : list().files().all())
        listed.push_back(numberOf(*record));
    std::ranges::sort(listed);
    EXPECT_EQ(listed, Numbers(m_listed.begin(), m_listed.end())) << "what the list holds";
    m_contents.push_back(contentOf(dataFile()));
    if (m_isTold)
        expectAllToldRightly();
    compareGroups();
}

void World::say(const std::string& step) {
    if (!step.empty())
        m_steps.push_back(step);
}

void World::add() {
    Numbers visible;
    for (Number item = 0; item < m_model.count(); ++item)
        if (!m_model.isHidden(item))
            visible.push_back(item);
    std::vector<std::string> paths;
    int known = 0; // at their place; others that are listed were moved by hand, and their records follow
    for (const Number item : someOf(visible, "add")) {
        paths.push_back(m_model.path(item));
        known += list().ifAlreadyAddedFile(paths.back());
        m_listed.insert(item);
    }
    if (known > 0)
        program().presenter.expect(
            {.title = known == 1 ? "An item could not be added." : "Some items could not be added.",
             .answer = "OK"});
    list().addFiles(paths);
    list().waitForAdding();
}

void World::hide() {
    const Numbers items = someListed("hide");
    EXPECT_TRUE(list().hideFiles(recordsOf(items), true));
    noteHidden(items);
}

void World::noteHidden(const Numbers& items) {
    for (const Number item : items)
        if (!m_model.isHidden(item))
            m_model.setHidden(item, true);
}

void World::unhide() {
    unhide(someListed("unhide"));
}

void World::unhide(const Numbers& items) {
    const bool isPossible = noteShown(items);
    EXPECT_EQ(list().unhideFiles(recordsOf(items), true), isPossible);
}

bool World::noteShown(const Numbers& items) {
    bool isPossible = true;
    for (const Number item : items) {
        isPossible = isPossible && (m_model.isHiddenItself(item) || !m_model.isHidden(item));
        m_model.setHidden(item, false);
    }
    return isPossible;
}

void World::unhideAll() {
    say("unhide all");
    Numbers hidden(m_listed.begin(), m_listed.end());
    std::erase_if(hidden, [this](Number item) { return !m_model.isHiddenItself(item); });
    unhide(hidden);
    for (Number item = 0; item < m_model.count(); ++item)
        EXPECT_FALSE(m_model.isHidden(item));
}

void World::move() {
    say(m_model.moveByHand(m_choices));
    m_isTold = false;
}

// What lies at an item's place is not the item any more.
void World::exchange() {
    check();
    say(m_model.exchangeByHand(m_choices));
    m_isTold = false;
    m_choices.oneIn(2) ? check() : restart();
}

void World::remove() {
    const Numbers items = someListed("remove");
    list().removeFiles(recordsOf(items));
    for (const Number item : items)
        m_listed.erase(item);
}

void World::restore() {
    say("restore");
    runRestore();
    list().checkTempFiles();
    for (Number item = 0; item < m_model.count(); ++item)
        if (m_model.isHiddenItself(item)) {
            m_listed.insert(item);
            expectToldRightly(item);
        }
}

void World::runRestore() {
    QObject context;
    bool hasEnded = false;
    QObject::connect(&list().restores(), &Restores::ended, &context, [&] { hasEnded = true; });
    list().restoreDir(m_model.root());
    MainThread::runUntil([&] { return hasEnded; });
}

void World::check() {
    say("check");
    runCheck();
    m_isTold = true;
    expectAllToldRightly();
    const auto revision = list().files().revision();
    const std::string bytes = readFile(dataFile());
    runCheck();
    EXPECT_EQ(list().files().revision(), revision) << "a second check changed something";
    EXPECT_EQ(readFile(dataFile()), bytes);
}

void World::runCheck() {
    list().performSanityCheck(list().files().all());
    list().brokenFiles().searchAndWait(list().brokenFiles().brokenFiles());
    EXPECT_TRUE(list().saveDataToDisk());
}

// The list comes from its file, else from the newest earlier copy that can be read.
void World::restart() {
    say("restart");
    openProgram();
    auto records = list().readFilesInfoFileAtPath(dataFile());
    m_loaded = m_damage && contentOf(dataFile()) == *m_damage ? Loaded::Damaged : Loaded::AsSaved;
    if (m_loaded == Loaded::AsSaved) {
        EXPECT_EQ(records ? numbersOf(*records) : std::set<Number>(), m_listed) << "what the list file holds";
        if (m_isTold)
            expectToldRightly(records.value_or(std::vector<File>()));
    }
    m_damage.reset();
    m_isTold = true;
    const auto copies = SafeFile(dataFile(), m_options.file).earlierCopies();
    if (!records && (exists(dataFile()) || !copies.empty()))
        program().presenter.expect({.title = "The list of items could not be read.", .answer = "OK"});
    for (const std::string& copy : copies)
        if (!records)
            records = list().readFilesInfoFileAtPath(copy);
    startProgram();
    MainThread::runUntil([this] { return !list().brokenFiles().isSearching(); });
    m_listed = numbersOf(records.value_or(std::vector<File>()));
    takeStrangersForOurs(records.value_or(std::vector<File>()));
    expectAllToldRightly();
}

// What nobody listed and lies where an earlier copy has an item that is far away is taken for that one
// saved anew.
void World::takeStrangersForOurs(const std::vector<File>& records) {
    for (const File& record : records)
        for (const ListedFile& present : list().files().all())
            if (const Number stranger = numberOf(*present);
                record.path() == m_model.path(stranger) && !m_listed.contains(stranger)) {
                m_listed.erase(numberOf(record));
                m_listed.insert(stranger);
            }
}

void World::expectToldRightly(const std::vector<File>& saved) {
    for (const File& record : saved)
        EXPECT_EQ(record.path(), m_model.path(numberOf(record))) << "in the list file";
}

// To the list file, while the program runs or before its next start.
void World::damage() {
    std::string bytes = contentOf(dataFile());
    if (bytes.empty())
        return;
    struct stat before = {}, after = {};
    ::stat(dataFile().c_str(), &before);
    switch (m_choices.below(4)) {
    case 0:
        say("cut the list file");
        bytes.resize(m_choices.below(bytes.size()));
        break;
    case 1:
        say("flip a bit of the list file");
        bytes[m_choices.below(bytes.size())] ^= static_cast<char>(1 << m_choices.below(8));
        break;
    case 2:
        say("put an earlier list file back");
        bytes = m_contents[m_choices.below(m_contents.size())];
        break;
    case 3:
        say("delete the list file");
        std::filesystem::remove(dataFile());
        bytes.clear();
        break;
    }
    m_damage = bytes;
    while (exists(dataFile()) && ::stat(dataFile().c_str(), &after) == 0 &&
           after.st_ctim.tv_nsec == before.st_ctim.tv_nsec)
        writeFile(dataFile(), bytes); // until the system's clock dates it later
    if (m_choices.below(2) == 0)
        restart();
}

World::Number World::numberOf(const File& record) const {
    const auto alias = decodeAliasRecord(record.alias().value_or(std::string_view()));
    return alias ? m_model.withInode(alias->item.inode) : m_model.count();
}

std::set<World::Number> World::numbersOf(const std::vector<File>& records) const {
    std::set<Number> numbers;
    for (const File& record : records)
        numbers.insert(numberOf(record));
    return numbers;
}

World::Numbers World::someOf(Numbers items, const std::string& step) {
    Numbers some;
    for (std::size_t count = 1 + m_choices.below(4); count > 0 && !items.empty(); --count) {
        const std::size_t choice = m_choices.below(items.size());
        some.push_back(items[choice]);
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(choice));
    }
    m_steps.push_back(step);
    for (const Number item : some)
        m_steps.back() += " " + m_model.shown(item);
    return some;
}

std::vector<ListedFile> World::recordsOf(const Numbers& items) {
    std::vector<ListedFile> records;
    for (const Number item : items)
        records.push_back(recordOf(item));
    return records;
}

ListedFile World::recordOf(Number item) {
    for (const ListedFile& record : list().files().all())
        if (numberOf(*record) == item)
            return record;
    throw std::runtime_error("not listed: " + m_model.shown(item));
}

void World::expectAllToldRightly() {
    for (const Number item : m_listed)
        expectToldRightly(item);
}

void World::expectToldRightly(Number item) {
    const ListedFile record = recordOf(item);
    const std::string original = m_model.originalPath(item);
    EXPECT_EQ(record->path(), m_model.path(item));
    EXPECT_EQ(record->originalPath(), original);
    EXPECT_EQ(record->name(), lastPathComponent(original));
    EXPECT_EQ(record->state(), m_model.isHidden(item) ? File::Hidden : File::Visible) << original;
}

} // namespace veilkeep::test
