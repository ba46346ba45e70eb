#include "prefs/FinderPlugin.h"

#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veilkeep::test {
namespace {

using Restart = FileManagerChange::Restart;

class FakeMenu : public FileManagerMenu {
public:
    bool isInstalled() const override { return installed; }
    bool isSourceThere() const override { return hasSource; }
    bool isAnyManagerPresent() const override { return hasManager; }
    FileManagerChange install() override { return did("install"); }
    FileManagerChange renew() override { return did("renew"); }
    FileManagerChange remove() override { return did("remove"); }
    std::vector<std::string> restart(const std::vector<Restart>& toRestart) override {
        done += " restart " + toRestart.front().manager;
        return toRestart.front().path == "/stays" ? std::vector{toRestart.front().manager}
                                                  : std::vector<std::string>();
    }

    bool installed = false, hasSource = true, hasManager = true;
    FileManagerChange change;
    std::string done;

private:
    FileManagerChange did(const char* what) {
        done += what;
        return change;
    }
};

Error on(const char* path) {
    return Error::system("rename", path, EROFS);
}

TEST(FinderPlugin, DoesTheOppositeOfWhatIsInstalledAndTellsWhatItHasTo) {
    const QStringList ok{"OK"}, restart{"Restart Finder", "I'll restart it later"};
    const QString notInstalled = "Finder plugin could not be installed.";
    const FileManagerChange running{.changed = {"/m", "/t"}, .toRestart = {{"Thunar", "/t"}}};
    FileManagerChange mixed = running;
    mixed.noDirectory = {on("/d"), on("/e\n")};
    mixed.notChanged = {on("/f")};
    const struct {
        const char* what;
        bool installed, hasSource, hasManager;
        FileManagerChange change;
        std::vector<ExpectedAlert> alerts;
        const char* done;
    } rows[] = {
        {"installed", false, true, true, {.changed = {"/m"}}, {}, "install"},
        {"removed", true, false, false, {.changed = {"/m"}}, {}, "remove"},
        {"no source in the bundle", false, false, true, {}, {}, ""},
        {"no file manager",
         false,
         true,
         false,
         {},
         {{notInstalled, "OK", "No file manager was found that Veilkeep can have an entry in.", ok,
           Alert::Style::Warning}},
         ""},
        {"installed, to be restarted",
         false,
         true,
         true,
         running,
         {{"Plugin was successfully installed", "Restart Finder",
           "Plugin was successfully installed to /t\nPlease restart Finder to start using it.", restart,
           Alert::Style::Informational}},
         "install restart Thunar"},
        {"installed, does not come back",
         false,
         true,
         true,
         {.changed = {"/t"}, .toRestart = {{"Thunar", "/stays"}}},
         {{"Plugin was successfully installed", "Restart Finder"},
          {"Thunar could not be restarted.", "OK",
           "Please end it, if it is still running, and start it again yourself.", ok, Alert::Style::Warning}},
         "install restart Thunar"},
        {"removed, restarted later",
         true,
         true,
         true,
         running,
         {{"Plugin successfully uninstalled", "I'll restart it later",
           "Plugin successfully uninstalled from /t\nPlease restart Finder to apply the changes.", restart,
           Alert::Style::Informational}},
         "remove"},
        {"installed in part",
         false,
         true,
         true,
         mixed,
         {{notInstalled, "OK",
           "Could not create directory for Finder plugins: /d, /e\\n\n"
           "Try to create it manually and repeat the installation.",
           ok, Alert::Style::Warning},
          {notInstalled, "OK", "Could not install plugin to /f.", ok, Alert::Style::Warning},
          {"Plugin was successfully installed", "I'll restart it later"}},
         "install"},
        {"not removed",
         true,
         true,
         true,
         {.notChanged = {on("/f"), on("/g")}},
         {{"Finder plugin could not be uninstalled.", "OK",
           "Could not uninstall plugin from /f, /g. Try to remove it manually.", ok, Alert::Style::Warning}},
         "remove"},
        {"removed, but for those of all users",
         true,
         true,
         true,
         {.changed = {"/m"}, .forEverybody = {"Dolphin", "Nemo"}},
         {{"Entries for all users stay", "OK",
           "Dolphin, Nemo: the entries came with Veilkeep for all users of this computer, and go with it.",
           ok, Alert::Style::Informational}},
         "remove"},
    };
    const ScratchTree tree;
    UserDefaults defaults;
    for (const bool asked : {true, false}) // what the check box shows
        for (const auto& row : rows) {
            SCOPED_TRACE(row.what);
            ScriptedPresenter presenter;
            for (const ExpectedAlert& alert : row.alerts)
                presenter.expect(alert);
            Alerts alerts(presenter, defaults);
            FakeMenu menu;
            menu.installed = row.installed;
            menu.hasSource = row.hasSource;
            menu.hasManager = row.hasManager;
            menu.change = row.change;
            FinderPlugin(menu, alerts).setFinderPluginInstalled(asked);
            EXPECT_EQ(menu.done, row.done);
        }
}

} // namespace
} // namespace veilkeep::test
