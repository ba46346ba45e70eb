#pragma once

#include "tests/endurance/WorldModel.h"
#include "tests/support/ListWorld.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace veilkeep::test {

// One sequence of steps: what the user does in the program and behind its back, starts, and accidents. After
// each the disk holds every item once and unchanged, and the list every listed item once; from a check or a
// start on, until the user moves something, the list says where they are. Who knows more of the program than
// its list derives from this.
class World {
public:
    static constexpr int stepsInSequence = 30;

    World(const std::string& place, unsigned int seed);
    virtual ~World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    void run();
    const std::vector<std::string>& steps() const { return m_steps; }

protected:
    using Number = WorldModel::Number;
    using Numbers = std::vector<Number>;
    using Step = void (World::*)();

    virtual void openProgram(const ListWorldOptions& options); // another one ends before
    virtual void startProgram();
    virtual ListWorld& program() { return *m_program; }
    virtual Step chooseStep();
    virtual void end(); // after which nothing is hidden any more

    // After each step; told whether the list was loaded anew, perhaps from a file that was damaged.
    enum class Loaded { No, AsSaved, Damaged };
    virtual void compare(Loaded) {}

    FilesViewController& list() { return *program().list; }
    static std::string dataFile() { return OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep"; }
    void say(const std::string& step);
    Numbers someListed(const std::string& step) { return someOf({m_listed.begin(), m_listed.end()}, step); }
    std::vector<ListedFile> recordsOf(const Numbers& items);
    ListedFile recordOf(Number item);
    Number numberOf(const File& record) const;
    void take(Step step);

    // What a batch that went well did.
    void noteHidden(const Numbers& items);
    bool noteShown(const Numbers& items); // false: one lies in a hidden folder

    void add();
    void restore();
    void check();
    void restart();

    Choices m_choices;
    WorldModel m_model;
    std::set<Number> m_listed;
    bool m_isTold = true; // nothing was moved by hand since the list said where all is
    std::vector<std::string> m_steps;
    TimePoint m_now = std::chrono::system_clock::now();
    ListWorldOptions m_options;

private:
    void hide();
    void unhide();
    void unhide(const Numbers& items);
    void unhideAll();
    void move();
    void exchange();
    void remove();
    void damage();
    void runCheck();

    void takeStrangersForOurs(const std::vector<File>& records);
    void expectToldRightly(const std::vector<File>& saved);
    void expectAllToldRightly();
    void expectToldRightly(Number item);
    std::set<Number> numbersOf(const std::vector<File>& records) const;
    Numbers someOf(Numbers items, const std::string& step);

    std::vector<std::string> m_contents; // of the list file after each step
    std::optional<std::string> m_damage; // what an accident left of the list file
    Loaded m_loaded = Loaded::No;        // by the step in hand
    std::unique_ptr<ListWorld> m_program;
};

} // namespace veilkeep::test
