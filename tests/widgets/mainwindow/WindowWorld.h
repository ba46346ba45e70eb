#pragma once

#include "tests/groups/GroupWorld.h"
#include "tests/support/gui/RealInput.h"
#include "widgets/filetable/FilesTableView.h"
#include "widgets/mainwindow/VeilkeepWindow.h"

#include <gtest/gtest.h>

#include <QLineEdit>

#include <map>
#include <memory>
#include <set>
#include <vector>

namespace veilkeep::test {

class ScriptedCommands : public CommandTarget {
public:
    void perform(Command command) override {
        performed.push_back(command);
        if (command == Command::ToggleInfo)
            window->toggleInfoView();
        else if (command == Command::Search)
            window->focusSearch();
    }
    CommandState validate(Command command) const override {
        const auto state = states.find(command);
        return state == states.end() ? CommandState() : state->second;
    }
    bool exists(Command command) const override { return !absent.contains(command); }

    std::vector<Command> performed;
    std::map<Command, CommandState> states;
    std::set<Command> absent;
    VeilkeepWindow* window = nullptr;
};

// The main window over real lists in a scratch home.
struct WindowWorld {
    WindowWorld() { world.started(); }

    FilesViewController& files() { return *world.list.list; }
    VeilkeepWindow& make() {
        window = std::make_unique<VeilkeepWindow>(
            VeilkeepWindowParts{files(), world.groups, actions, previews, world.list.defaults, commands});
        commands.window = window.get();
        return *window;
    }
    VeilkeepWindow& show() {
        make();
        EXPECT_TRUE(showAndActivate(*window));
        settle();
        return *window;
    }
    template <class Widget>
    Widget& part() {
        return *window->findChild<Widget*>();
    }
    QLineEdit& searchField() { return part<QLineEdit>(); }
    std::vector<std::string> shownNames() {
        std::vector<std::string> names;
        for (const ListedFile& file : files().filesController().arrangedObjects())
            names.emplace_back(file->name());
        return names;
    }

    GroupWorld world;
    FileListActions actions{files(), world.list.alerts, nullptr};
    Previews previews{files().files()};
    ScriptedCommands commands;
    std::unique_ptr<VeilkeepWindow> window;
};

} // namespace veilkeep::test
