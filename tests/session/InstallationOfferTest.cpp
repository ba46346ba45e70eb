#include "session/InstallationOffer.h"

#include "core/storage/DefaultsKeys.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace veilkeep::test {
namespace {

class NotingInstallation : public Installation {
public:
    bool isInstalled() const override { return installed; }
    Result<void> install() override {
        ++installs;
        return fails ? Result<void>(Error::system("copy", "/x", ENOSPC)) : Result<void>();
    }
    Result<Uninstalled> uninstall() override { return Uninstalled(); }

    bool installed = false, fails = false;
    int installs = 0;
};

ExpectedAlert offer(const char* answer, bool suppress = false) {
    return {.title = "Veilkeep is currently running not from Applications folder.",
            .answer = answer,
            .suppress = suppress};
}

ExpectedAlert overwrite(const char* answer) {
    return {.title = "Veilkeep is already installed on your system!", .answer = answer};
}

TEST(InstallationOfferTest, AsksUntilTheBoxIsTickedAndInstallsWhatIsWanted) {
    const ExpectedAlert failed{"Installation of Veilkeep failed!", "OK"};
    const struct {
        const char* what;
        bool isInstalled, fails;
        std::vector<ExpectedAlert> alerts;
        int installs;
    } rows[] = {
        {"declined", false, false, {offer("Don't install")}, 0},
        {"wanted", false, false, {offer("Install")}, 1},
        {"in place of another", true, false, {offer("Install"), overwrite("Overwrite")}, 1},
        {"rather not", true, false, {offer("Install"), overwrite("Don't overwrite")}, 0},
        {"fails", false, true, {offer("Install"), failed}, 1},
        {"never again", false, false, {offer("Don't install", true)}, 0},
        {"not asked", false, false, {}, 0},
    };
    const ScratchTree tree;
    UserDefaults defaults;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        ScriptedPresenter presenter;
        Alerts alerts(presenter, defaults);
        NotingInstallation installation;
        installation.installed = row.isInstalled;
        installation.fails = row.fails;
        for (const ExpectedAlert& alert : row.alerts)
            presenter.expect(alert);
        InstallationOffer(alerts, defaults, installation).handleApplicationLaunchFromDiskImage();
        EXPECT_EQ(installation.installs, row.installs);
    }
    EXPECT_EQ(UserDefaults().boolean(defaultsKey::noOfferToInstall), true) << "on the disk";
}

} // namespace
} // namespace veilkeep::test
