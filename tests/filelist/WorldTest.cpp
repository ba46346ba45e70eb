#include "core/base/PathText.h"
#include "core/tracking/AliasRecord.h"
#include "filelist/MainThread.h"
#include "tests/filelist/WorldModel.h"
#include "tests/support/ListWorld.h"
#include "tests/support/LoopVolume.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/Rounds.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <set>

namespace veilkeep::test {
namespace {

using Number = WorldModel::Number;
using Numbers = std::vector<Number>;

constexpr int stepsInSequence = 30;

Number numberOf(const WorldModel& model, const File& record) {
    const auto alias = decodeAliasRecord(record.alias().value_or(std::string_view()));
    return alias ? model.withInode(alias->item.inode) : model.count();
}

// No file is as good as an empty one.
std::string contentOf(const std::string& path) {
    return exists(path) ? readFile(path) : std::string();
}

// One sequence of steps: what the user does in the program and behind its back, starts, and accidents. After
// each the disk holds every item once and unchanged, and the list every listed item once; from a check or a
// start on, until the user moves something, the list says where they are.
class World {
public:
    World(const std::string& place, unsigned int seed)
        : m_choices(seed), m_model(joinPath(place, "items"), m_choices) {
        m_options.file.clock = [this] { return m_now; };
        m_program = std::make_unique<ListWorld>(m_options);
        list().start();
        m_contents = {readFile(dataFile())};
    }

    void run() {
        for (int step = 0; step < stepsInSequence; ++step)
            take(chooseStep());
        for (const Step step : {&World::restart, &World::restore, &World::check, &World::unhideAll})
            take(step);
    }

    const std::vector<std::string>& steps() const { return m_steps; }

private:
    using Step = void (World::*)();

    Step chooseStep() {
        static constexpr Step steps[] = {&World::add,     &World::add,    &World::add,      &World::add,
                                         &World::hide,    &World::hide,   &World::hide,     &World::hide,
                                         &World::hide,    &World::unhide, &World::unhide,   &World::unhide,
                                         &World::move,    &World::move,   &World::move,     &World::move,
                                         &World::move,    &World::remove, &World::exchange, &World::restart,
                                         &World::restart, &World::damage, &World::check,    &World::restore};
        return steps[m_choices.below(std::size(steps))];
    }

    void take(Step step) {
        if (::testing::Test::HasFailure())
            return;
        m_now += std::chrono::hours(2); // so that each change of the list leaves an earlier copy
        (this->*step)();
        EXPECT_EQ(m_model.difference(), "");
        Numbers listed;
        for (const ListedFile& record : list().files().all())
            listed.push_back(numberOf(m_model, *record));
        std::ranges::sort(listed);
        EXPECT_EQ(listed, Numbers(m_listed.begin(), m_listed.end())) << "what the list holds";
        m_contents.push_back(contentOf(dataFile()));
        if (m_isTold)
            expectAllToldRightly();
    }

    void say(const std::string& step) {
        if (!step.empty())
            m_steps.push_back(step);
    }

    FilesViewController& list() { return *m_program->list; }
    static std::string dataFile() { return OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep"; }

    void add() {
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
            m_program->presenter.expect(
                {.title = known == 1 ? "An item could not be added." : "Some items could not be added.",
                 .answer = "OK"});
        list().addFiles(paths);
        list().waitForAdding();
    }

    void hide() {
        const Numbers items = someListed("hide");
        EXPECT_TRUE(list().hideFiles(recordsOf(items), true));
        for (const Number item : items)
            if (!m_model.isHidden(item))
                m_model.setHidden(item, true);
    }

    void unhide() { unhide(someListed("unhide")); }

    void unhide(const Numbers& items) {
        bool isPossible = true;
        for (const Number item : items) {
            isPossible = isPossible && (m_model.isHiddenItself(item) || !m_model.isHidden(item));
            m_model.setHidden(item, false);
        }
        EXPECT_EQ(list().unhideFiles(recordsOf(items), true), isPossible);
    }

    void unhideAll() {
        say("unhide all");
        Numbers hidden(m_listed.begin(), m_listed.end());
        std::erase_if(hidden, [this](Number item) { return !m_model.isHiddenItself(item); });
        unhide(hidden);
        for (Number item = 0; item < m_model.count(); ++item)
            EXPECT_FALSE(m_model.isHidden(item));
    }

    void move() {
        say(m_model.moveByHand(m_choices));
        m_isTold = false;
    }

    // What lies at an item's place is not the item any more.
    void exchange() {
        check();
        say(m_model.exchangeByHand(m_choices));
        m_isTold = false;
        m_choices.oneIn(2) ? check() : restart();
    }

    void remove() {
        const Numbers items = someListed("remove");
        list().removeFiles(recordsOf(items));
        for (const Number item : items)
            m_listed.erase(item);
    }

    void restore() {
        say("restore");
        QObject context;
        bool hasEnded = false;
        QObject::connect(&list().restores(), &Restores::ended, &context, [&] { hasEnded = true; });
        list().restoreDir(m_model.root());
        MainThread::runUntil([&] { return hasEnded; });
        list().checkTempFiles();
        for (Number item = 0; item < m_model.count(); ++item)
            if (m_model.isHiddenItself(item)) {
                m_listed.insert(item);
                expectToldRightly(item);
            }
    }

    void check() {
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

    void runCheck() {
        list().performSanityCheck(list().files().all());
        list().brokenFiles().searchAndWait(list().brokenFiles().brokenFiles());
        EXPECT_TRUE(list().saveDataToDisk());
    }

    // The list comes from its file, else from the newest earlier copy that can be read.
    void restart() {
        say("restart");
        m_program = std::make_unique<ListWorld>(m_options);
        auto records = list().readFilesInfoFileAtPath(dataFile());
        if (!m_damage || contentOf(dataFile()) != *m_damage) {
            EXPECT_EQ(records ? numbersOf(*records) : std::set<Number>(), m_listed)
                << "what the list file holds";
            if (m_isTold)
                expectToldRightly(records.value_or(std::vector<File>()));
        }
        m_damage.reset();
        m_isTold = true;
        const auto copies = SafeFile(dataFile(), m_options.file).earlierCopies();
        if (!records && (exists(dataFile()) || !copies.empty()))
            m_program->presenter.expect({.title = "The list of items could not be read.", .answer = "OK"});
        for (const std::string& copy : copies)
            if (!records)
                records = list().readFilesInfoFileAtPath(copy);
        list().start();
        MainThread::runUntil([this] { return !list().brokenFiles().isSearching(); });
        m_listed = numbersOf(records.value_or(std::vector<File>()));
        takeStrangersForOurs(records.value_or(std::vector<File>()));
        expectAllToldRightly();
    }

    // What nobody listed and lies where an earlier copy has an item that is far away is taken for that one
    // saved anew.
    void takeStrangersForOurs(const std::vector<File>& records) {
        for (const File& record : records)
            for (const ListedFile& present : list().files().all())
                if (const Number stranger = numberOf(m_model, *present);
                    record.path() == m_model.path(stranger) && !m_listed.contains(stranger)) {
                    m_listed.erase(numberOf(m_model, record));
                    m_listed.insert(stranger);
                }
    }

    void expectToldRightly(const std::vector<File>& saved) {
        for (const File& record : saved)
            EXPECT_EQ(record.path(), m_model.path(numberOf(m_model, record))) << "in the list file";
    }

    // To the list file, while the program runs or before its next start.
    void damage() {
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

    std::set<Number> numbersOf(const std::vector<File>& records) const {
        std::set<Number> numbers;
        for (const File& record : records)
            numbers.insert(numberOf(m_model, record));
        return numbers;
    }

    Numbers someListed(const std::string& step) { return someOf({m_listed.begin(), m_listed.end()}, step); }

    Numbers someOf(Numbers items, const std::string& step) {
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

    std::vector<ListedFile> recordsOf(const Numbers& items) {
        std::vector<ListedFile> records;
        for (const Number item : items)
            records.push_back(recordOf(item));
        return records;
    }

    ListedFile recordOf(Number item) {
        for (const ListedFile& record : list().files().all())
            if (numberOf(m_model, *record) == item)
                return record;
        throw std::runtime_error("not listed: " + m_model.shown(item));
    }

    void expectAllToldRightly() {
        for (const Number item : m_listed)
            expectToldRightly(item);
    }

    void expectToldRightly(Number item) {
        const ListedFile record = recordOf(item);
        const std::string original = m_model.originalPath(item);
        EXPECT_EQ(record->path(), m_model.path(item));
        EXPECT_EQ(record->originalPath(), original);
        EXPECT_EQ(record->name(), lastPathComponent(original));
        EXPECT_EQ(record->state(), m_model.isHidden(item) ? File::Hidden : File::Visible) << original;
    }

    Choices m_choices;
    WorldModel m_model;
    std::set<Number> m_listed;
    std::vector<std::string> m_contents; // of the list file after each step
    bool m_isTold = true;                // nothing was moved by hand since the list said where all is
    std::optional<std::string> m_damage; // what an accident left of the list file
    std::vector<std::string> m_steps;
    TimePoint m_now = std::chrono::system_clock::now();
    ListWorldOptions m_options;
    std::unique_ptr<ListWorld> m_program;
};

// A volume of its own, so that a search of the whole volume is short.
class WorldTest : public testing::TestWithParam<const char*> {
protected:
    WorldTest() {
        if (GetParam() == std::string("tmpfs"))
            m_memory = std::make_unique<PrivateMount>("memory", m_tree.makeDirectory("volume"), "tmpfs");
        else
            m_volume = std::make_unique<LoopVolume>(m_tree, GetParam());
    }
    std::string place() const { return m_volume ? m_volume->mountPoint() : m_tree.path("volume"); }
    std::string whyMissing() const { return m_volume ? m_volume->whyMissing() : m_memory->whyMissing(); }

    void runSequence(unsigned int seed) {
        ::setenv("XDG_DATA_HOME", joinPath(place(), "data").c_str(), 1);
        World world(place(), seed);
        try {
            world.run();
        } catch (const std::exception& exception) {
            ADD_FAILURE() << exception.what();
        }
        if (HasFailure()) {
            std::printf("VEILKEEP_SEED=%u on %s:\n", seed, GetParam());
            for (const std::string& step : world.steps())
                std::printf("  %s\n", step.c_str());
        }
        std::filesystem::remove_all(joinPath(place(), "items"));
        std::filesystem::remove_all(joinPath(place(), "data"));
    }

private:
    ScratchTree m_tree;
    std::unique_ptr<PrivateMount> m_memory;
    std::unique_ptr<LoopVolume> m_volume;
};

// New random sequences for a minute; in a long run for as long as it takes to make a good number of them.
TEST_P(WorldTest, NothingIsLostAndTheListSaysSo) {
    if (!whyMissing().empty())
        GTEST_SKIP() << whyMissing();
    if (const char* const seed = std::getenv("VEILKEEP_SEED"))
        return runSequence(static_cast<unsigned int>(std::strtoul(seed, nullptr, 10)));
    const unsigned int first = std::random_device()();
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    const unsigned int least = static_cast<unsigned int>(rounds(1, 1'000));
    unsigned int count = 0;
    for (; !HasFailure() && (count < least || std::chrono::steady_clock::now() < end); ++count)
        runSequence(first + count);
    std::printf("%u sequences of %d steps with the seeds from %u on\n", count, stepsInSequence, first);
}

INSTANTIATE_TEST_SUITE_P(Volumes, WorldTest, testing::Values("tmpfs", "ext4"),
                         [](const auto& volume) { return std::string(volume.param); });

} // namespace
} // namespace veilkeep::test
