// Every key of the user defaults: what holds without it, when it first gets a value, who writes and who reads
// it, each by what really does.

#include "core/storage/DefaultsKeys.h"

#include "core/protocol/CloakWorkerComunicator.h"
#include "core/protocol/SecurityController.h"
#include "prefs/SoftwareUpdater.h"
#include "session/InstallationOffer.h"
#include "session/LeavingTriggers.h"
#include "tests/app/AppWorld.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QSplitter>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <optional>

namespace veilkeep::test {
namespace {

struct Row {
    const char* key;
    std::function<std::string()> read; // what whoever reads it makes of it
    std::string whenAbsent;
    std::optional<Value> afterwards; // stored by then, where that is the first value
    std::function<void()> write;
    std::optional<Value> written; // nothing: another one each time
    std::string whenWritten;
    bool isSetByReader = false; // which does what sets it
};

std::string yes(bool isTrue) {
    return isTrue ? "yes" : "no";
}

class Silence : public SoundPlayer {
public:
    void play(const std::string&) override { isPlayed = true; }
    bool isPlayed = false;
};

class NoInstallation : public Installation {
public:
    bool isInstalled() const override { return false; }
    Result<void> install() override { return {}; }
    Result<Uninstalled> uninstall() override { return Uninstalled(); }
};

// Declines, with the box ticked or not.
class Refusal : public AlertPresenter {
public:
    explicit Refusal(bool ticksBox) : m_ticksBox(ticksBox) {}
    AlertAnswer run(const Alert& alert) override {
        isAsked = true;
        return {alert.buttons.back().code, m_ticksBox};
    }
    void begin(const Alert&) override {}
    void cancelOpen() override {}
    void serveOthers() override {}
    bool isAsked = false;

private:
    bool m_ticksBox;
};

class NothingNew : public SoftwareUpdates {
public:
    void check(WhenKnown whenKnown) override {
        UpdateOutcome outcome;
        outcome.kind = UpdateOutcome::Kind::UpToDate;
        whenKnown(outcome);
    }
    void cancel() override {}
};

class DefaultsKeysTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!m_bus.whyMissing().empty())
            GTEST_SKIP() << m_bus.whyMissing();
        m_world.emplace();
        ASSERT_TRUE(m_world->start());
        m_world->addFile("letter");
        m_world->app().showPreferenceWindow();
    }

    ADApp::Parts& parts() { return m_world->parts(); }
    PrefsWindow& preferences() { return *parts().preferences; }

    std::function<void()> click(PrefsBox box) {
        return [this, box] {
            parts().prefs.windowWillAppear();
            preferences().setOn(box, !preferences().isOn(box));
            parts().prefs.boxClick(box);
        };
    }
    void setPassword() {
        preferences().setStringValue(PrefsField::SetPasswordSecureField, "secret");
        preferences().setStringValue(PrefsField::SetConfirfmSecureField, "secret");
        parts().prefs.setPasswordOkClick();
    }
    std::string doesHideOn(Absence kind) { return yes(hidesOn(kind, parts().defaults)); }

    // Whether a question or a message comes with it, which is closed.
    std::string comesUp(const std::function<void()>& action, const QString& title) {
        bool hasCome = false;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            if (QWidget* const dialog = m_world->openDialog(title)) {
                hasCome = true;
                dialog->close();
            }
        });
        look.start(std::chrono::milliseconds(2));
        action();
        for (int turn = 0; turn < 10; ++turn)
            settle();
        return yes(hasCome);
    }
    std::function<void()> withRelaunchAsked(std::function<void()> action) {
        return [this, action] { EXPECT_EQ(comesUp(action, "Relaunch required"), "yes"); };
    }
    std::string removalAsks() {
        auto& files = m_world->files();
        files.filesController().setSelectedObjects(files.files().all());
        const std::string asks = comesUp([&] { files.removeFromListAction(); },
                                         "Are you sure you want to remove selected items from list?");
        settle();
        if (files.files().size() == 0)
            m_world->addFile("letter");
        return asks;
    }
    std::string closingTells() {
        const std::string tells = comesUp([this] { m_world->app().perform(Command::CloseWindow); },
                                          "Veilkeep goes on without a window.");
        parts().window.show();
        m_world->giveKeyboard();
        return tells;
    }
    std::string sounds() {
        Silence player;
        SoundController controller(std::string(VEILKEEP_SOUNDS), parts().defaults, player);
        controller.playSound("DropSound");
        return yes(player.isPlayed);
    }
    std::string traces() {
        const auto wished = TraceWishes::from(parts().defaults).cleanRecentItems;
        return wished ? yes(*wished) : "asks";
    }
    std::string tracesWithoutAnswer() {
        parts().defaults.remove(defaultsKey::cleanRecentItems);
        EXPECT_TRUE(parts().defaults.synchronize());
        return traces();
    }
    std::string offersToInstall(bool ticksBox) {
        Refusal refusal(ticksBox);
        Alerts alerts(refusal, parts().defaults);
        NoInstallation installation;
        InstallationOffer(alerts, parts().defaults, installation).handleApplicationLaunchFromDiskImage();
        return yes(refusal.isAsked);
    }
    void checkForUpdates() {
        NothingNew updates;
        SoftwareUpdater(updates, parts().defaults).checkForUpdates();
    }
    std::string lastCheck() {
        parts().prefs.setSelectedTab("TOOLBAR_UPDATE");
        parts().prefs.lastCheckChanged();
        return preferences().findChild<QLabel*>("lastCheckDateText")->text() == "Never" ? "never" : "then";
    }
    std::string inNextWindow(const std::function<bool(VeilkeepWindow&)>& isSo) {
        VeilkeepWindow next({parts().list.files(), parts().list.groups(), parts().actions, parts().previews,
                             parts().defaults, m_world->app()});
        (void)next.grab(); // lays it out
        return yes(isSo(next));
    }
    std::function<void()> hideAfter(std::function<void(VeilkeepWindow&)> change) {
        return [this, change] {
            change(*m_world->window());
            m_world->window()->hide();
            parts().window.show();
            m_world->giveKeyboard();
        };
    }

    std::vector<Row> rows();
    void check(const Row& row, const DefaultsKeyRow& known);

    PrivateBus m_bus{appScratch(), PrivateBus::Place::Session};
    std::optional<AppWorld> m_world;
};

std::vector<Row> DefaultsKeysTest::rows() {
    using namespace defaultsKey;
    using enum PrefsBox;
    const std::string place = "40 30 900 620";
    PrefsController& prefs = parts().prefs;
    PasswordManager& passwords = parts().list.passwords();
    const auto nobody = [] { return std::string(); };
    const auto newPassword = [this] { setPassword(); };
    const auto toggleInfo = [](VeilkeepWindow& window) { window.toggleInfoView(); };
    const auto hasInfo = [](VeilkeepWindow& window) { return window.isInfoViewShown(); };
    const auto isResized = [](VeilkeepWindow& window) { return window.size() == QSize(900, 620); };
    const auto hasWideGroups = [](VeilkeepWindow& window) {
        return window.findChild<QSplitter*>()->sizes().first() == 300;
    };
    return {
        {passwordEnabled, [&] { return yes(passwords.isPasswordEnabled()); }, "no", false, newPassword, true,
         "yes"},
        {passwordDigest, [&] { return yes(passwords.checkPassword("secret")); }, "no", std::nullopt,
         newPassword, PasswordManager::cypher("secret").toStdString(), "yes"},
        {playSounds, [this] { return sounds(); }, "yes", true, click(PlaySoundsBox), false, "no"},
        {cleanRecentItems, [this] { return traces(); }, "asks", std::nullopt, click(CleanRecentItemsBox),
         true, "yes"},
        {recentsQuestionAnswered, [this] { return tracesWithoutAnswer(); }, "asks", std::nullopt,
         click(CleanRecentItemsBox), true, "no"},
        {noRemoveWarning, [this] { return removalAsks(); }, "yes", std::nullopt, click(AskBeforeRemovingBox),
         true, "no"},
        {allowPrivilidgedFiles, [] { return yes(SecurityController::sharedInstance()->isEnabled()); }, "no",
         false, click(AllowPrivilidgedFilesBox), true, "yes"},
        {showMenuIcon,
         [this] {
             m_world->app().setStatusBarItem();
             return yes(parts().statusItem != nullptr);
         },
         "yes", true, click(ShowInMenuBarBox), false, "no"},
        {showMenuIconOfOld, nobody, "", std::nullopt,
         withRelaunchAsked([&] { prefs.setDockIconIsHidden(true); }), std::int64_t{1}, ""},
        {dockIconHidden,
         [this] { return yes(LSUIElementManipulation(parts().defaults).shouldBeUIElement()); }, "no",
         std::nullopt, withRelaunchAsked(click(ShowInDockBox)), true, "yes"},
        {hideOnSleep, [this] { return doesHideOn(Absence::Sleep); }, "yes", std::nullopt,
         click(HideOnSleepBox), false, "no"},
        {hideOnLock, [this] { return doesHideOn(Absence::Lock); }, "yes", std::nullopt, click(HideOnLockBox),
         false, "no"},
        {hideOnSessionSwitch, [this] { return doesHideOn(Absence::Session); }, "yes", std::nullopt,
         click(HideOnSessionSwitchBox), false, "no"},
        {hideOnQuit, [this] { return yes(hidesOnQuit(parts().defaults)); }, "yes", std::nullopt,
         click(HideOnQuitBox), false, "no"},
        {autoHideExample, [&] { return yes(prefs.needToCreateAutoHideExample()); }, "yes", std::int64_t{1},
         [&] { prefs.needToCreateAutoHideExample(); }, std::int64_t{1}, "no"},
        {noOfferToInstall, [this] { return offersToInstall(false); }, "yes", std::nullopt,
         [this] { offersToInstall(true); }, true, "no"},
        {toldOfNoMenuIcon, [this] { return closingTells(); }, "yes", true, [this] { closingTells(); }, true,
         "no", true},
        {lastUpdateCheck, [this] { return lastCheck(); }, "never", std::nullopt,
         [this] { checkForUpdates(); }, std::nullopt, "then"},
        {windowGeometry, [&, this] { return inNextWindow(isResized); }, "no", std::nullopt,
         hideAfter([](VeilkeepWindow& window) { window.setGeometry(40, 30, 900, 620); }), place, "yes"},
        {windowSplitter, [&, this] { return inNextWindow(hasWideGroups); }, "no", std::nullopt,
         hideAfter([](VeilkeepWindow& window) {
             auto& splitter = *window.findChild<QSplitter*>();
             splitter.setSizes({300, splitter.sizes()[1], 251});
         }),
         "300 251", "yes"},
        {infoPaneHidden, [&, this] { return inNextWindow(hasInfo); }, "yes", std::nullopt,
         hideAfter(toggleInfo), true, "no"},
    };
}

void DefaultsKeysTest::check(const Row& row, const DefaultsKeyRow& known) {
    using FirstWrite = DefaultsKeyRow::FirstWrite;
    UserDefaults& defaults = parts().defaults;
    defaults.remove(row.key);
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(row.read(), row.whenAbsent) << "without a value";
    EXPECT_EQ(UserDefaults().value(row.key), row.afterwards) << "after it was read";
    EXPECT_EQ(row.afterwards.has_value(), known.firstWrite != FirstWrite::WhenSet || row.isSetByReader)
        << "the table says otherwise";
    defaults.remove(row.key);
    ASSERT_TRUE(defaults.synchronize());
    row.write();
    const auto written = UserDefaults().value(row.key);
    ASSERT_TRUE(written);
    EXPECT_EQ(*written, row.written.value_or(*written));
    EXPECT_EQ(row.read(), row.whenWritten) << "with the value that was written";
    using Kind = DefaultsKeyRow::Kind;
    const Kind kind = written->asString()                                ? Kind::String
                      : std::holds_alternative<bool>(written->content()) ? Kind::Boolean
                                                                         : Kind::Integer;
    EXPECT_EQ(kind, known.kind);
}

TEST_F(DefaultsKeysTest, EachHasItsDefaultItsFirstValueItsWriterAndItsReader) {
    const std::vector<Row> all = rows();
    for (const DefaultsKeyRow& known : defaultsKeyRows()) {
        SCOPED_TRACE(known.key);
        const auto row = std::ranges::find(all, std::string_view(known.key), &Row::key);
        if (row == all.end())
            ADD_FAILURE() << "is not tried here";
        else
            check(*row, known);
    }
    EXPECT_EQ(all.size(), defaultsKeyRows().size()) << "some are in no document";
}

} // namespace
} // namespace veilkeep::test
