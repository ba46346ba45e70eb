#pragma once

#include "app/ADApp.h"
#include "app/ADAppParts.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/gui/RealInput.h"

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
    explicit AppWorld(StartOptions options = {});
    ~AppWorld();

    bool start(); // shows the window, unless the options say otherwise, and waits until it has the keyboard

    ADApp& app() { return *m_app; }
    ADApp::Parts& parts() { return m_app->parts(); }
    FilesViewController& files() { return parts().list.files(); }
    GroupViewController& groups() { return parts().list.groups(); }
    VeilkeepWindow* window() { return parts().window.window(); }

    // Makes a file in "Docs" of the scratch home and takes it into the list; its path.
    std::string addFile(const std::string& name, const std::string& content = "content");
    bool isHiddenOnDisk(const std::string& path) const;
    void waitForBatch(); // until nobody works on the list any more

    // The child of the window with that object or accessible name; null where there is none to be seen.
    QWidget* find(const QString& name);
    template <class Widget>
    Widget* findA(const QString& name) {
        return qobject_cast<Widget*>(find(name));
    }

    // What is open beside the main window: dialogs, menus, panels. Waits for it to come.
    QWidget* dialog();
    bool clickButton(QWidget& dialog, const QString& text); // false where there is no such button

private:
    int m_count = 1;
    char m_name[9] = "Veilkeep";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<ADApp> m_app;
};

const ScratchTree& appScratch(); // of this process; its home is the user's

} // namespace veilkeep::test
