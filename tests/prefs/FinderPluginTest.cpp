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
    const ExpectedAlert notInstalled{"Finder plugin could not be installed.", "OK"},
        later{"Plugin was successfully installed", "I'll restart it later"},
        now{"Plugin was successfully installed", "Restart Finder"},
        gone{"Thunar could not be restarted.", "OK"},
        removedLater{"Plugin successfully uninstalled", "I'll restart it later"},
        notRemoved{"Finder plugin could not be uninstalled.", "OK",
                   "Could not uninstall plugin from /f, /g. Try to remove it manually."},
        forEverybody{"Entries for all users stay", "OK"};
    const FileManagerChange running{.changed = {"/m", "/t"}, .toRestart = {{"Thunar", "/t"}}},
        stays{.changed = {"/t"}, .toRestart = {{"Thunar", "/stays"}}},
        refused{.notChanged = {on("/f"), on("/g")}}, ofAll{.changed = {"/m"}, .forEverybody = {"Nemo"}};
    FileManagerChange mixed = running;
    mixed.noDirectory = {on("/d"), on("/e\n")};
    mixed.notChanged = {on("/f")};
    const ExpectedAlert noDirectory{"Finder plugin could not be installed.", "OK",
                                    "Could not create directory for Finder plugins: /d, /e\\n\n"
                                    "Try to create it manually and repeat the installation."};
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
        {"no file manager", false, true, false, {}, {notInstalled}, ""},
        {"to be restarted", false, true, true, running, {now}, "install restart Thunar"},
        {"does not come back", false, true, true, stays, {now, gone}, "install restart Thunar"},
        {"removed, restarted later", true, true, true, running, {removedLater}, "remove"},
        {"installed in part", false, true, true, mixed, {noDirectory, notInstalled, later}, "install"},
        {"not removed", true, true, true, refused, {notRemoved}, "remove"},
        {"removed, but for those of all users", true, true, true, ofAll, {forEverybody}, "remove"},
    };
    const ScratchTree tree;
    UserDefaults defaults;
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
        FinderPlugin(menu, alerts).setFinderPluginInstalled(true);
        EXPECT_EQ(menu.done, row.done);
    }
}

} // namespace
} // namespace veilkeep::test
