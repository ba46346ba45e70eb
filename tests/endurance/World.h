#pragma once

#include "tests/endurance/BadWorker.h"
#include "tests/endurance/WorldModel.h"
#include "tests/session/LeavingWorld.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace veilkeep::test {

// One sequence of steps: what the user does in the program and behind its back, leaving, starts, and
// accidents of files, workers and the disk. After each the disk holds every item once and unchanged, and the
// list every listed item once; from a check or a start on, until the user moves something, the list says
// where they are. Groups are as they were made, each item is in its own, nothing of an AutoHide group is
// visible after a pass, and none is without the mark.
class World {
public:
    static constexpr int stepsInSequence = 30;

    World(const std::string& place, unsigned int seed, BadWorker& worker);
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    void run();
    const std::vector<std::string>& steps() const { return m_steps; }

private:
    using Number = WorldModel::Number;
    using Numbers = std::vector<Number>;
    using Step = void (World::*)();
    enum class Loaded { No, AsSaved, Damaged };

    struct Row {
        std::string name;
        std::optional<std::int64_t> groupID;
        int state = 0;
        bool autoHide = false;
        bool isHeader = false;

        bool operator==(const Row&) const = default;
    };
    friend std::ostream& operator<<(std::ostream& stream, const Row& row);

    ListWorld& program() { return m_program->list; }
    FilesViewController& list() { return *program().list; }
    GroupViewController& groups() { return m_program->groups; }
    static std::string dataFile() { return OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep"; }

    void openProgram(); // another one ends before
    void startProgram();
    Step chooseStep();
    void take(Step step);
    void say(const std::string& step);

    // --- Items ---
    void add();
    void hide();
    void unhide();
    void unhide(const Numbers& items);
    void unhideAll();
    void move();
    void exchange();
    void remove();
    void restore();
    void check();
    void restart();
    void damage();
    void runRestore();
    void runCheck();

    // What a batch that went well did.
    void noteHidden(const Numbers& items);
    bool noteShown(const Numbers& items); // false: one lies in a hidden folder

    Numbers someOf(Numbers items, const std::string& step);
    Numbers someListed(const std::string& step) { return someOf({m_listed.begin(), m_listed.end()}, step); }
    std::vector<ListedFile> recordsOf(const Numbers& items);
    ListedFile recordOf(Number item);
    Number numberOf(const File& record) const;
    std::set<Number> numbersOf(const std::vector<File>& records) const;
    void takeStrangersForOurs(const std::vector<File>& records);
    void expectToldRightly(const std::vector<File>& saved);
    void expectAllToldRightly();
    void expectToldRightly(Number item);

    // --- Groups, leaving, accidents ---
    void addGroup();
    void removeGroup();
    void renameGroup();
    void moveGroup();
    void selectGroup();
    void markAutoHide();
    void moveToGroup();
    void hideGroup();
    void showGroup();
    void damageGroups();
    void leave();
    void comeBack();
    void quit();
    void breakWorker();
    void fillDisk();

    void compareGroups();
    std::vector<Row> rowsNow();
    std::size_t chooseRow(std::size_t first);
    Numbers itemsOf(const Row& row); // in the order of the list
    std::string shownRow(std::size_t row) const;
    void notePass();
    void noteStatesOfPass();
    void doSomething(); // that an accident may befall
    void putRight();
    bool isInAutoHideGroup(Number item) const;

    const std::string m_place;
    BadWorker& m_worker;
    Choices m_choices;
    WorldModel m_model;
    std::set<Number> m_listed;
    bool m_isTold = true; // nothing was moved by hand since the list said where all is
    std::vector<std::string> m_steps;
    TimePoint m_now = std::chrono::system_clock::now();
    ListWorldOptions m_options;
    std::vector<std::string> m_contents; // of the list file after each step
    std::optional<std::string> m_damage; // what an accident left of the list file
    Loaded m_loaded = Loaded::No; // whether the step in hand loaded the list anew, perhaps a damaged one

    std::vector<Row> m_rows;
    std::size_t m_current = 0; // which of them is selected
    std::map<Number, std::int64_t> m_groupOf;
    bool m_areGroupsDamaged = false;
    bool m_isAway = false;
    bool m_mayLackMark = false; // until the next pass: it could not be set, or what needs it was loaded
    std::unique_ptr<ControllerWorld> m_program;
};

} // namespace veilkeep::test
