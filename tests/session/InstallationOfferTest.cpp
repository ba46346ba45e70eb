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

const ExpectedAlert offer{"Veilkeep is currently running not from Applications folder."};
const ExpectedAlert overwrite{"Veilkeep is already installed on your system!"};
const ExpectedAlert failed{"Installation of Veilkeep failed!"};

ExpectedAlert answered(ExpectedAlert alert, const char* answer) {
    alert.answer = answer;
    return alert;
}

TEST(InstallationOfferTest, AsksOnceAndInstallsWhatIsWanted) {
    const struct {
        const char* what;
        bool isInstalled, fails;
        std::vector<ExpectedAlert> alerts;
        int installs;
    } rows[] = {
        {"declined", false, false, {answered(offer, "Don't install")}, 0},
        {"wanted", false, false, {answered(offer, "Install")}, 1},
        {"in place of another",
         true,
         false,
         {answered(offer, "Install"), answered(overwrite, "Overwrite")},
         1},
        {"rather not", true, false, {answered(offer, "Install"), answered(overwrite, "Don't overwrite")}, 0},
        {"fails", false, true, {answered(offer, "Install"), answered(failed, "OK")}, 1},
    };
    for (const auto& row : rows) {
        const ScratchTree tree;
        UserDefaults defaults;
        ScriptedPresenter presenter;
        Alerts alerts(presenter, defaults);
        NotingInstallation installation;
        installation.installed = row.isInstalled;
        installation.fails = row.fails;
        for (const ExpectedAlert& alert : row.alerts)
            presenter.expect(alert);
        InstallationOffer(alerts, defaults, installation).handleApplicationLaunchFromDiskImage();
        EXPECT_EQ(installation.installs, row.installs) << row.what;
        EXPECT_TRUE(presenter.shown().front().offersSuppression) << row.what;
        EXPECT_FALSE(UserDefaults().contains(defaultsKey::noOfferToInstall)) << row.what;
    }
}

TEST(InstallationOfferTest, NeverAgainWhereTheBoxWasTicked) {
    const ScratchTree tree;
    UserDefaults defaults;
    ScriptedPresenter presenter;
    Alerts alerts(presenter, defaults);
    NotingInstallation installation;
    InstallationOffer offers(alerts, defaults, installation);
    ExpectedAlert ticked = answered(offer, "Don't install");
    ticked.suppress = true;
    presenter.expect(ticked);
    offers.handleApplicationLaunchFromDiskImage();
    EXPECT_EQ(UserDefaults().boolean(defaultsKey::noOfferToInstall), true) << "on the disk";
    offers.handleApplicationLaunchFromDiskImage();
    EXPECT_EQ(installation.installs, 0);
}

} // namespace
} // namespace veilkeep::test
