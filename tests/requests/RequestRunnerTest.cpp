#include "requests/RequestRunner.h"
#include "core/storage/DefaultsKeys.h"

#include "core/storage/ArchiveEnvelope.h"
#include "filelist/MainThread.h"
#include "tests/support/RecordingProgressView.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <optional>
#include <thread>

namespace veilkeep::test {
namespace {

using Paths = std::vector<std::string>;

// As where there is no window whose being open stands for the password.
class PromptGate : public Gate {
public:
    explicit PromptGate(PasswordManager& passwords) : m_passwords(passwords) {}

    bool operationAllowedWithoutAsking() const override { return !m_passwords.isPasswordEnabled(); }
    bool operationAllowed() override {
        return operationAllowedWithoutAsking() ||
               (!m_passwords.isPromptVisible() && m_passwords.showModalWindow() != 0);
    }

private:
    PasswordManager& m_passwords;
};

// A window with the password, as far as requests meet it.
class WindowPrompt : public PasswordPrompt {
public:
    void run(PasswordManager& manager, const QString&, const QString&) override { whileOpen(manager); }
    void showWrongEntries(int) override {}
    void close() override {}

    std::function<void(PasswordManager&)> whileOpen;
};

// Answers questions with the button of a title, and writes down what it is told.
class FakeCaller : public RequestCaller {
public:
    void itemDone(const std::string&, const std::string& newPath) override { done.push_back(newPath); }
    void itemFailed(const std::string& path, const QString& reason) override {
        failed.push_back(path + ": " + reason.toStdString());
    }
    void message(const QString& text) override { messages.append(text); }
    void listed(const std::vector<QVariantMap>& told) override {
        rows.insert(rows.end(), told.begin(), told.end());
    }
    void progress(const QString& stage, const QString&, std::size_t, std::size_t) override {
        if (whileWorking && !stage.isEmpty())
            whileWorking();
    }
    std::size_t ask(const Question& question) override {
        EXPECT_TRUE(MainThread::isCurrent());
        questions.append(question.title);
        for (std::size_t button = 0; button < question.buttons.size(); ++button)
            if (question.buttons[button] == answer)
                return button;
        return question.buttons.size() - 1;
    }
    std::optional<QString> askPassword(const QString&, int wrongEntries) override {
        EXPECT_EQ(wrongEntries, asked);
        ++asked;
        return enterPassword ? enterPassword() : std::nullopt;
    }
    void cancelQuestion() override { ++takenBack; }
    bool isCancelled() const override { return hasGone; }

    QString answer;
    bool hasGone = false;
    std::function<std::optional<QString>()> enterPassword; // none: cancels
    int asked = 0;                                         // for the password
    int takenBack = 0;
    std::function<void()> whileWorking;
    Paths done;
    Paths failed;
    QStringList messages;
    QStringList questions;
    std::vector<QVariantMap> rows;
};

// The application as far as requests need it.
class RequestRunnerTest : public ::testing::Test {
protected:
    RequestStatus run(const char* command, const Paths& paths, FakeCaller& caller,
                      const QVariantMap& options = {}) {
        std::optional<RequestStatus> status;
        m_runner.handle({command, paths, options}, caller, [&](RequestStatus told) { status = told; });
        MainThread::runUntil([&] { return status.has_value(); });
        return *status;
    }

    std::string hidden(const std::string& name) { return m_tree.path("t/.SYS_INDEX/" + name); }

    ScratchTree m_tree;
    ScriptedPresenter m_ownPresenter;
    RecordingProgressView m_ownView;
    UserDefaults m_defaults;
    CallerPresenter m_presenter{&m_ownPresenter};
    Alerts m_alerts{m_presenter, m_defaults};
    CallerProgressView m_view{&m_ownView};
    ProgressController m_progress{&m_view};
    Turns m_turns{m_alerts};
    GroupSelection m_selection;
    const OwnPlaces m_places = OwnPlaces::current();
    CloakWorkerComunicator m_worker{bundledProgram("cloakWorker"), m_places.inProgressDirectory};
    FilesInfoFile m_dataFile{m_places.dataDirectory + "/FilesInfo.Veilkeep"};
    FilesViewController m_controller{
        {m_dataFile, m_worker, m_alerts, m_progress, m_turns, m_defaults, m_selection}};
    GroupsInfoFile m_groupsFile{m_places.dataDirectory + "/GroupsInfo.Veilkeep"};
    AutoHideMark m_mark{m_places.dataDirectory};
    GroupViewController m_groups{{m_groupsFile, m_controller, m_selection, m_mark, m_alerts, m_turns}};
    PasswordManager m_passwords{m_defaults};
    PromptGate m_gate{m_passwords};
    const RequestRunnerParts m_parts{m_controller, m_dataFile,   m_worker, m_progress,
                                     m_turns,      m_presenter,  m_view,   m_places.inProgressDirectory,
                                     m_groups,     m_groupsFile, nullptr,  &m_gate,
                                     &m_passwords};
    RequestRunner m_runner{m_parts};
};

// Every command there is, and every way in which the password is not given.
TEST_F(RequestRunnerTest, NothingIsDoneWithoutThePassword) {
    m_defaults.set(defaultsKey::passwordEnabled, true);
    ASSERT_TRUE(m_passwords.setPassword("abc"));
    m_turns.setInterrupt([this] { m_passwords.cancelClick(); });
    const std::string item = m_tree.makeFile("t/a");
    ASSERT_FALSE(m_controller.files().append(File::initWithPath(item)) == nullptr);
    RequestRunnerParts parts = m_parts;
    parts.askCaller = nullptr;
    RequestRunner besideWindow(parts);
    WindowPrompt window;
    int left = 0;
    struct {
        const char* what;
        std::function<std::optional<QString>()> enterPassword;
        int asked;
        int takenBack;
    } const rows[] = {
        {"cancelled", {}, 1, 0},
        {"wrong four times", [] { return "x"; }, 4, 0},
        {"left", [&] { return m_turns.leave([&] { ++left; }), "abc"; }, 1, 1},
        {"already open", [] { return "abc"; }, 0, 0},
        {"refused in a window", [] { return "abc"; }, 0, 0},
    };
    std::size_t gated = 0;
    for (const RequestRule& rule : requestRules()) {
        const Paths paths(rule.leastPaths, item);
        for (const auto& row : rows) {
            FakeCaller caller;
            caller.enterPassword = row.enterPassword;
            std::optional<RequestStatus> status;
            const bool isInWindow = row.what == std::string_view("refused in a window");
            const auto handle = [&](PasswordManager&) {
                (isInWindow ? besideWindow : m_runner)
                    .handle({rule.name, paths, {}}, caller, [&](RequestStatus told) { status = told; });
                MainThread::runUntil([&] { return status.has_value(); });
            };
            window.whileOpen = handle;
            if (isInWindow)
                window.whileOpen = [](PasswordManager& manager) { manager.cancelClick(); };
            m_passwords.setPrompt(&window);
            if (row.what == std::string_view("already open"))
                m_passwords.showModalWindow();
            else
                handle(m_passwords);
            const std::string trace = std::string(rule.name) + ", " + row.what;
            ASSERT_TRUE(status) << trace;
            if (!rule.passesGate) {
                EXPECT_NE(*status, RequestStatus::Refused) << trace;
                EXPECT_EQ(caller.asked, 0) << trace;
                continue;
            }
            ++gated;
            EXPECT_EQ(*status, RequestStatus::Refused) << trace;
            EXPECT_EQ(caller.asked, row.asked) << trace;
            EXPECT_EQ(caller.takenBack, row.takenBack) << trace;
            EXPECT_EQ(caller.messages.size(), isInWindow ? 2 : 1) << trace;
            EXPECT_TRUE(caller.done.empty() && caller.failed.empty() && caller.rows.empty()) << trace;
            EXPECT_EQ(caller.questions, QStringList()) << trace;
            EXPECT_TRUE(exists(item) && m_controller.ifAlreadyAddedFile(item)) << trace;
            EXPECT_EQ(m_controller.files().size(), 1U) << trace;
        }
    }
    EXPECT_GE(gated, std::size(rows) * 9);
    EXPECT_GT(left, 0) << "what waited for the prompt is done";
    FakeCaller caller;
    caller.enterPassword = [&caller] { return caller.asked == 4 ? "abc" : "x"; };
    EXPECT_EQ(run("hide", {item}, caller), RequestStatus::AllWell);
    EXPECT_EQ(caller.done, Paths{hidden("a")});
    EXPECT_EQ(caller.messages, QStringList());
}

// Scripts match what they are told; a window that asks the user speaks the user's language.
TEST_F(RequestRunnerTest, CallersAreToldInEnglish) {
    class UsersLanguage : public Language {
    public:
        bool setTranslating(bool translates) override { return std::exchange(isTranslating, translates); }
        bool isTranslating = true;
    } language;
    m_defaults.set(defaultsKey::passwordEnabled, true);
    ASSERT_TRUE(m_passwords.setPassword("abc"));
    WindowPrompt window;
    int prompts = 0;
    window.whileOpen = [&](PasswordManager& manager) {
        EXPECT_TRUE(language.isTranslating);
        ++prompts;
        manager.okClick("abc");
    };
    m_passwords.setPrompt(&window);
    RequestRunnerParts parts = m_parts;
    parts.askCaller = nullptr;
    parts.language = &language;
    RequestRunner runner(parts);
    FakeCaller caller;
    bool hasWorked = false;
    caller.whileWorking = [&] {
        EXPECT_FALSE(language.isTranslating);
        hasWorked = true;
    };
    std::optional<RequestStatus> status;
    runner.handle({"hide", {m_tree.makeFile("t/a")}, {}}, caller, [&](RequestStatus told) { status = told; });
    MainThread::runUntil([&] { return status.has_value(); });
    EXPECT_EQ(status, RequestStatus::AllWell);
    EXPECT_TRUE(hasWorked);
    EXPECT_EQ(prompts, 1);
    EXPECT_TRUE(language.isTranslating);
}

TEST_F(RequestRunnerTest, WhatIsNoRequest) {
    const std::string good = m_tree.makeFile("t/a");
    const std::pair<const char*, Paths> rows[] = {
        {"vanish", {good}}, {"", {good}},         {"hide", {}},
        {"hide", {"t/a"}},  {"hide", {good, ""}}, {"hide", {good + std::string(1, '\0')}},
        {"list", {good}},   {"locate", {good}},   {"merge", {good, good}},
    };
    for (const auto& [command, paths] : rows) {
        FakeCaller caller;
        EXPECT_EQ(run(command, paths, caller), RequestStatus::WrongUsage) << command;
        EXPECT_TRUE(caller.done.empty()) << command;
    }
    FakeCaller caller;
    m_groups.start();
    const QByteArray name = "Private Files";
    const auto group = [&](QVariantMap options) {
        return options.insert(requestOption::group, name), std::pair("group", options);
    };
    const std::pair<const char*, QVariantMap> withOptions[] = {
        {"list", {{requestOption::state, "odd"}}},
        {"hide", {{requestOption::all, true}, {requestOption::group, name}}},
        {"hide", {{requestOption::all, false}}},
        {"move", {}},
        {"group", {}},
        {"group", {{requestOption::action, groupAction::remove}}},
        group({{requestOption::action, "paint"}}),
        group({{requestOption::action, groupAction::rename}}),
        group({{requestOption::action, groupAction::icon}}),
        group({{requestOption::action, groupAction::autoHide}}),
        group({{requestOption::action, groupAction::autoHide}, {requestOption::autoHide, "on"}}),
        group({{requestOption::action, groupAction::order}}),
        group({{requestOption::action, groupAction::order}, {requestOption::position, -1}}),
    };
    for (const auto& [command, options] : withOptions) {
        const Paths paths(command == std::string_view("move"), good);
        EXPECT_EQ(run(command, paths, caller, options), RequestStatus::WrongUsage)
            << command << options.value(requestOption::action).toString().toStdString();
    }
    for (const char* const option : {requestOption::group, requestOption::all})
        EXPECT_EQ(run("hide", {good}, caller, {{option, name}}), RequestStatus::WrongUsage);
    EXPECT_TRUE(exists(good));
    EXPECT_EQ(m_groups.groupsNames(), (Paths{"All Files", "Secret Pictures", "Private Files"}));
}

// While a batch runs the event loop turns, and brings the next request.
TEST_F(RequestRunnerTest, RequestsWaitTheirTurn) {
    m_tree.makeFile("t/a");
    m_tree.makeFile("t/b");
    FakeCaller first;
    FakeCaller second;
    std::optional<RequestStatus> secondStatus;
    bool isSent = false;
    first.whileWorking = [&] {
        if (!std::exchange(isSent, true))
            m_runner.handle({"hide", {m_tree.path("t/b")}, {}}, second,
                            [&](RequestStatus told) { secondStatus = told; });
        EXPECT_FALSE(secondStatus);
    };
    EXPECT_EQ(run("hide", {m_tree.path("t/a")}, first), RequestStatus::AllWell);
    EXPECT_EQ(secondStatus, RequestStatus::AllWell);
    EXPECT_EQ(first.done, Paths{hidden("a")});
    EXPECT_EQ(second.done, Paths{hidden("b")});
}

// Those of other threads as well, and to the application's own presenter while no request runs.
TEST_F(RequestRunnerTest, MessagesOfOtherThreadsGoToTheCaller) {
    const auto tellOnThread = [&] {
        std::atomic<bool> isAnswered = false;
        std::thread other([&] {
            m_controller.showProtectedAlertForFile("/etc");
            isAnswered = true;
        });
        while (!isAnswered)
            m_presenter.serveOthers();
        other.join();
    };
    FakeCaller caller;
    caller.whileWorking = tellOnThread;
    ASSERT_EQ(run("check", {}, caller), RequestStatus::AllWell);
    ASSERT_FALSE(caller.questions.isEmpty());
    m_ownPresenter.expect({.title = caller.questions[0], .answer = "OK"});
    tellOnThread();
}

// The other thread's alert may have been posted before the event in whose midst the main thread waits.
TEST_F(RequestRunnerTest, WhatCameBeforeIsServedToo) {
    bool isServed = false, wasInTime = false;
    MainThread::post(&m_controller, [&] {
        m_presenter.serveOthers();
        wasInTime = isServed;
    });
    MainThread::post(&m_controller, [&] { isServed = true; });
    MainThread::runUntil([&] { return isServed; });
    EXPECT_TRUE(wasInTime);
}

TEST_F(RequestRunnerTest, AnItemAndAWayToItThroughALinkAreOne) {
    const std::string item = m_tree.makeFile("t/a");
    ASSERT_EQ(::symlink("t", m_tree.path("link").c_str()), 0);
    const std::string through = m_tree.path("link/a");
    for (const auto& [listed, other] : {std::pair(through, item), {item, through}}) {
        m_controller.removeFiles(m_controller.files().all());
        FakeCaller caller;
        EXPECT_EQ(run("add", {listed, other}, caller), RequestStatus::AllWell);
        EXPECT_EQ(run("add", {other}, caller), RequestStatus::SomeFailed);
        m_controller.addFiles({other});
        m_controller.waitForAdding();
        EXPECT_EQ(m_controller.files().size(), 1U);
    }
    FakeCaller caller;
    EXPECT_EQ(run("hide", {through}, caller), RequestStatus::AllWell);
    EXPECT_EQ(run("unhide", {through}, caller), RequestStatus::AllWell);
    EXPECT_EQ(caller.done, (Paths{hidden("a"), item}));
    EXPECT_EQ(m_controller.files().size(), 1U);
}

// In a batch that asks as in one that collects.
TEST_F(RequestRunnerTest, EachFailedItemIsToldOnce) {
    for (const bool interactive : {false, true}) {
        const std::string a = m_tree.makeFile("t/a");
        const std::string b = m_tree.makeFile("t/b");
        FakeCaller hider;
        const QVariantMap options{{requestOption::interactive, interactive}};
        ASSERT_EQ(run("hide", {a, b}, hider, options), RequestStatus::AllWell);
        m_tree.makeFile("t/a", "another");
        FakeCaller caller;
        EXPECT_EQ(run("unhide", {a, b}, caller, options), RequestStatus::SomeFailed);
        EXPECT_EQ(caller.done, Paths{b});
        EXPECT_EQ(caller.failed, Paths{a + ": Item with the same name already exists."});
        EXPECT_EQ(caller.messages, QStringList());
        EXPECT_TRUE(m_controller.hideOperations().errors().empty());
        ASSERT_EQ(runProgram({"/bin/rm", a, hidden("a"), b}).exitStatus, 0);
        m_controller.removeFiles(m_controller.files().all());
    }
}

// What waits comes after it, what runs is cut short, and nothing cuts it short itself.
TEST_F(RequestRunnerTest, LeavingComesFirst) {
    m_groups.start();
    const Paths items{m_tree.makeFile("t/a"), m_tree.makeFile("t/b")};
    const QVariantMap group{{requestOption::group, QByteArray("Private Files")}};
    FakeCaller caller;
    ASSERT_EQ(run("add", items, caller, group), RequestStatus::AllWell);
    m_groups.setAutoHide(true, "Private Files");
    ASSERT_EQ(run("autohide", {}, caller), RequestStatus::AllWell);
    ASSERT_FALSE(exists(items[0]) || exists(items[1]));
    QStringList through;
    FakeCaller shower, waiter, leaver;
    const auto handle = [&](const char* command, FakeCaller& asking) {
        m_runner.handle({command, {}, {}}, asking, [&, command](RequestStatus status) {
            EXPECT_EQ(status, RequestStatus::AllWell) << command;
            through.append(command);
        });
    };
    shower.whileWorking = [&, isSent = false]() mutable {
        if (std::exchange(isSent, true))
            return;
        handle("status", waiter);
        leaver.hasGone = true;
        handle("autohide", leaver);
    };
    EXPECT_EQ(run("autounhide", {}, shower), RequestStatus::SomeFailed);
    MainThread::runUntil([&] { return through.size() == 2; });
    EXPECT_EQ(through, (QStringList{"autohide", "status"}));
    EXPECT_FALSE(exists(items[0]) || exists(items[1]));
    EXPECT_FALSE(m_groups.autoUnhideHappened());
}

TEST_F(RequestRunnerTest, AListOfANewerVersionStaysAsItIs) {
    m_tree.makeFile("t/.SYS_INDEX/a");
    const std::string visible = m_tree.makeFile("t/b");
    ArchiveEnvelopeWriter newer(99, 1);
    newer.text() += "?";
    m_controller.pathForDataFile();
    writeFile(m_dataFile.path(), std::move(newer).seal());
    const std::string before = readFile(m_dataFile.path());
    m_ownPresenter.expect({.title = "The list of items can only be read.", .answer = "OK"});
    m_controller.loadDataFromDisk();
    FakeCaller caller;
    EXPECT_EQ(run("hide", {visible}, caller), RequestStatus::Refused);
    EXPECT_EQ(run("unhide", {m_tree.path("t/a")}, caller), RequestStatus::SomeFailed) << "it is not saved";
    EXPECT_EQ(caller.done, Paths{m_tree.path("t/a")});
    EXPECT_TRUE(exists(visible));
    EXPECT_EQ(readFile(m_dataFile.path()), before);
}

} // namespace
} // namespace veilkeep::test
