#pragma once

#include "app/ADApp.h"
#include "app/ADAppParts.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/gui/RealInput.h"
#include "widgets/filetable/FilesTableView.h"
#include "widgets/grouplist/GroupsView.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veilkeep::test {

// The desktop application within the test's own process, on the test's display and in its scratch home, with
// real workers. One in a process.
class AppWorld {
public:
    using Part = RowLayout::Part;

    explicit AppWorld(StartOptions options = {});
    ~AppWorld(); // a failure where a dialog that was expected has not come

    static void setPassword(const QString& password); // before the start
    static constexpr const char* prompt = "Enter your Veilkeep password:";

    bool start(); // shows the window, unless the options say otherwise, and waits until it has the keyboard

    // Whether the program ends by what the steps do, within its own event loop.
    bool quits(const std::function<void()>& steps);

    ADApp& app() { return *m_app; }
    ADApp::Parts& parts() { return m_app->parts(); }
    FilesViewController& files() { return parts().list.files(); }
    GroupViewController& groups() { return parts().list.groups(); }
    VeilkeepWindow* window() { return parts().window.window(); }

    // Makes a file in "Docs" of the scratch home and takes it into the list; its path.
    std::string addFile(const std::string& name, const std::string& content = "content");
    std::string addFileToGroup(const std::string& name, const std::string& group);
    static std::string hiddenPathOf(const std::string& path);
    bool isHiddenOnDisk(const std::string& path) const;
    bool isHidden(const std::string& path); // on the disk, and the window's list says the same; soon
    bool isShown(const std::string& path);
    bool shows(std::vector<std::string> names); // are the rows of the table; soon
    void waitForBatch();                        // until nobody works on the list any more
    bool isAtRest();                            // and the window takes keys and clicks
    bool giveKeyboard();                        // to the window, where no dialog has it
    // The window has the keyboard by itself; its menus and its table, which has two rows or more, take keys.
    void expectKeysToArrive();

    bool clickTool(Command command);   // its button in the toolbar
    bool choose(QStringList fromMenu); // "Edit", "Hide": by the mouse

    // --- The files table and the group list ---
    FilesTableView& table() { return *window()->findChild<FilesTableView*>(); }
    int rowOf(const std::string& name); // -1: not shown
    void clickRow(const std::string& name, Part part = Part::Elsewhere);
    GroupsView& groupList() { return *window()->findChild<GroupsView*>(); }
    void clickGroup(const std::string& name);

    // --- What opens beside the window ---
    // Chooses in the menu that is open.
    bool chooseInPopup(const QString& title);

    // Once the condition holds, the steps are done in the event loop that turns while the program does. Said
    // before what leads there, which may come back only afterwards.
    void when(const QString& what, std::function<bool()> condition, std::function<void()> steps);
    // Once a dialog with that title or accessible name is open and has the keyboard.
    void whenOpen(const QString& title, std::function<void(QWidget&)> steps);
    void answer(const QString& title, const QString& button); // by the mouse
    bool areAllAnswered();                                    // soon
    QWidget* dialog();                               // any window beside the main one, once it has come
    QWidget* openDialog(const QString& title) const; // null for none

    static bool clickButton(QWidget& dialog, const QString& text); // false where there is no such button
    static bool says(const QWidget& dialog, const QString& text);  // one of its labels, at least in part

private:
    int m_count = 1;
    char m_name[9] = "Veilkeep";
    char* m_arguments[2] = {m_name, nullptr};
    std::vector<QString> m_expected; // of which the steps are not done yet
    std::unique_ptr<ADApp> m_app;
};

const ScratchTree& appScratch(); // of this process; its home is the user's

} // namespace veilkeep::test
