#pragma once

#include "core/storage/DefaultsKeys.h"
#include "session/MainWindowController.h"
#include "tests/support/ListWorld.h"
#include "tests/support/TurnUntil.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace veilkeep::test {

// Tells what the test wants to be told, and notes what it is told itself.
class FakeEvents : public SessionEvents {
public:
    void start() override {
        isStarted = true;
        whenStarted();
    }
    void release() override {
        ++releases;
        whenReleased();
    }

    bool isStarted = false;
    int releases = 0;
    std::function<void()> whenStarted = [] {}, whenReleased = [] {};
};

class FakeWindow : public MainWindow {
public:
    bool isVisible() const override { return visible; }
    void show() override {
        whenShown();
        visible = true;
        ++shows;
    }
    void close() override { visible = false; }
    void activate(bool) override {}

    bool visible = false;
    int shows = 0;
    std::function<void()> whenShown = [] {};
};

// Does to the manager what the script says, an entry for each prompt, and stays open until it is closed.
class ScriptedPrompt : public PasswordPrompt {
public:
    void run(PasswordManager& manager, const QString&, const QString&) override {
        ++runs;
        m_isOpen = true;
        if (script.empty())
            ADD_FAILURE() << "a prompt that was not expected";
        else
            script.front()(manager);
        if (script.empty())
            close();
        else
            script.pop_front();
        EXPECT_TRUE(turnUntil([this] { return !m_isOpen; }));
    }
    void showWrongEntries(int) override {}
    void close() override { m_isOpen = false; }

    std::deque<std::function<void(PasswordManager&)>> script;
    int runs = 0;

private:
    bool m_isOpen = false;
};

// All that MainWindowController works with, and three items in an AutoHide group, visible or hidden. Made
// anew it is the program's next start.
class LeavingWorld {
public:
    explicit LeavingWorld(const ScratchTree& tree) : m_tree(tree) {
        passwords.setPrompt(&prompt);
        list.list->loadDataFromDisk();
        groups.start();
    }

    static constexpr const char* password = "secret";

    void makeItems() {
        const ListedGroup group = groups.addGroup();
        for (const char* const name : names)
            list.add(m_tree.makeFile(name));
        list.list->moveFiles(list.list->files().all(), group->groupID().value());
        groups.setAutoHide(true, group);
        ASSERT_TRUE(groups.hideGroup(group, true));
    }

    void setPassword() {
        list.defaults.set(defaultsKey::passwordEnabled, true);
        ASSERT_TRUE(passwords.setPassword(password));
    }

    bool areHidden() const {
        return std::ranges::none_of(names, [this](const char* name) { return exists(m_tree.path(name)); });
    }
    bool areVisible() const {
        return std::ranges::all_of(names, [this](const char* name) { return exists(m_tree.path(name)); });
    }

private:
    static constexpr const char* names[] = {"t/a", "t/b", "t/c"};

    const ScratchTree& m_tree;
    GroupSelection m_selection;

public:
    ListWorld list{{.groups = &m_selection}};

private:
    GroupsInfoFile m_groupsFile{OwnPlaces::current().dataDirectory + "/GroupsInfo.Veilkeep"};

public:
    AutoHideMark mark{OwnPlaces::current().dataDirectory};
    GroupViewController groups{{.dataFile = m_groupsFile,
                                .files = *list.list,
                                .selection = m_selection,
                                .mark = mark,
                                .alerts = list.alerts,
                                .turns = list.turns}};
    PasswordManager passwords{list.defaults};
    ScriptedPrompt prompt;
    FakeEvents events;
    FakeWindow window;
    MainWindowController controller{{.groups = groups,
                                     .files = *list.list,
                                     .mark = mark,
                                     .passwords = passwords,
                                     .turns = list.turns,
                                     .defaults = list.defaults,
                                     .events = &events,
                                     .window = &window}};
};

} // namespace veilkeep::test
