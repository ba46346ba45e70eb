#pragma once

#include "tests/endurance/BadWorker.h"
#include "tests/endurance/World.h"
#include "tests/groups/GroupWorld.h"
#include "tests/session/LeavingWorld.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veilkeep::test {

// The steps of World with those of groups and of leaving among them, and accidents of workers and of the
// disk. Beyond the items, groups are as they were made, each item is in its own, nothing of an AutoHide group
// is visible after a pass, and none is without the mark.
class WholeWorld : public World {
public:
    WholeWorld(const std::string& place, unsigned int seed, BadWorker& worker);
    ~WholeWorld() override;

protected:
    Step chooseStep() override;
    void openProgram(const ListWorldOptions& options) override;
    void startProgram() override;
    ListWorld& program() override;
    void end() override;
    void compare(Loaded loaded) override;

private:
    struct Program;
    struct Row {
        std::string name;
        std::optional<std::int64_t> groupID;
        int state = 0;
        bool autoHide = false;
        bool isHeader = false;

        bool operator==(const Row&) const = default;
    };
    friend std::ostream& operator<<(std::ostream& stream, const Row& row);

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

    GroupViewController& groups();
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
    std::vector<Row> m_rows;
    std::size_t m_current = 0; // which of them is selected
    std::map<Number, std::int64_t> m_groupOf;
    bool m_areGroupsDamaged = false;
    bool m_isAway = false;
    bool m_mayLackMark = false; // until the next pass: it could not be set, or what needs it was loaded
    std::unique_ptr<Program> m_program;
};

} // namespace veilkeep::test
