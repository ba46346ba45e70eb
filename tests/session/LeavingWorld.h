#pragma once

#include "core/storage/DefaultsKeys.h"
#include "session/MainWindowController.h"
#include "tests/groups/GroupWorld.h"
#include "tests/support/TurnUntil.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace veilkeep::test {

// Tells what the test wants to be told, and notes what it is told itself.
class FakeEvents : public SessionEvents {
public:
    void start() override {}
    void release() override {
        ++releases;
        whenReleased();
    }

    int releases = 0;
    std::function<void()> whenReleased = [] {};
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

// All that MainWindowController works with.
struct ControllerWorld : GroupWorld {
    explicit ControllerWorld(const ListWorldOptions& options = {}) : GroupWorld(options) {
        passwords.setPrompt(&prompt);
    }

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

// With three items in an AutoHide group, visible or hidden. Made anew it is the program's next start.
class LeavingWorld : public ControllerWorld {
public:
    explicit LeavingWorld(const ScratchTree& tree) : m_tree(tree) {
        list.list->loadDataFromDisk();
        groups.start();
    }

    static constexpr const char* password = "secret";

    void makeItems() {
        const ListedGroup group = autoHideGroup();
        for (const char* const path : paths)
            add(m_tree.makeFile(path), group);
        ASSERT_TRUE(groups.hideGroup(group, true));
    }

    void setPassword() {
        list.defaults.set(defaultsKey::passwordEnabled, true);
        ASSERT_TRUE(passwords.setPassword(password));
    }

    bool areHidden() const {
        return std::ranges::none_of(paths, [this](const char* path) { return exists(m_tree.path(path)); });
    }
    bool areVisible() const {
        return std::ranges::all_of(paths, [this](const char* path) { return exists(m_tree.path(path)); });
    }

private:
    static constexpr const char* paths[] = {"t/a", "t/b", "t/c"};

    const ScratchTree& m_tree;
};

} // namespace veilkeep::test
