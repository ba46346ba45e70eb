#include "core/protocol/SecurityController.h"

#include "core/log/Log.h"
#include "core/protocol/CloakWorkerComunicator.h"
#include "core/protocol/TrustedProgram.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace veilkeep {
namespace {

using Answer = RightsAuthority::Answer;

class ScriptedAuthority : public RightsAuthority {
public:
    Answer check(const std::string& action, Interaction interaction) override {
        EXPECT_EQ(action, "com.ostrel.Veilkeep.move");
        if (interaction == Interaction::Never)
            return held;
        ++questions;
        return held = asked;
    }
    Answer giveUp(const std::string&) override {
        ++givenUp;
        return held = Answer::Granted;
    }

    Answer held = Answer::Refused;
    Answer asked = Answer::Granted;
    int questions = 0;
    int givenUp = 0;
};

const std::string anyTrustedProgram = "/usr/bin/true";
const std::string item = "/srv/secret \n name";

// A controller with a script in pkexec's place.
class SecurityControllerTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!checkTrustedProgram(anyTrustedProgram))
            GTEST_SKIP() << anyTrustedProgram << " does not belong to root alone here";
    }

    void behave(const std::string& script) {
        ::unlink(m_pkexec.c_str());
        m_tree.makeFile("pkexec", "#!/bin/sh\ntouch " + m_tree.path("ran") + "\n" + script, 0755);
    }
    bool hasRun() const { return test::exists(m_tree.path("ran")); }

    CloakWorkerResult hide(const std::string& tool = anyTrustedProgram) {
        return m_controller.executeCommandWithPrivilidges(tool, {"-p", "-i", "-hide", item});
    }
    std::string log() const { return test::readFile(Log::shared().path()); }

    const test::ScratchTree m_tree;
    const std::string m_pkexec = m_tree.path("pkexec");
    UserDefaults m_defaults;
    ScriptedAuthority m_authority;
    SecurityController m_controller{m_authority, m_defaults, m_tree.path("InProgress"), Tick(), m_pkexec};
};

TEST_F(SecurityControllerTest, IsDisabledUntilTheUserAllowsIt) {
    EXPECT_FALSE(m_controller.isEnabled());
    EXPECT_EQ(UserDefaults().boolean("allowPrivilidgedFiles"), false) << "not stored";
    m_defaults.set("allowPrivilidgedFiles", true);
    EXPECT_TRUE(m_controller.isEnabled());
    m_defaults.set("allowPrivilidgedFiles", "rubbish");
    EXPECT_FALSE(m_controller.isEnabled());
    EXPECT_EQ(SecurityController::sharedInstance(), &m_controller);
}

TEST_F(SecurityControllerTest, IsAuthorizedByTheAnswer) {
    const struct {
        Answer asked;
        bool authorized;
        int status;
        std::string logged;
    } rows[] = {
        {Answer::Refused, false, 2, "was not granted"},
        {Answer::Dismissed, false, 3, "was dismissed"},
        {Answer::NoAgent, false, 4, "nobody who could"},
        {Answer::Unavailable, false, 5, "could not be asked"},
        {Answer::Granted, true, 0, ""},
        {Answer::AskedEachRun, true, 0, ""},
    };
    for (const auto& row : rows) {
        m_authority.asked = row.asked;
        m_authority.held = Answer::Refused;
        m_controller.authorize();
        EXPECT_EQ(m_controller.authorized(), row.authorized) << row.status;
        EXPECT_EQ(m_controller.status(), row.status);
        EXPECT_NE(log().find(row.logged), std::string::npos) << row.logged;
    }
}

TEST_F(SecurityControllerTest, AsksOnlyWhileTheRightIsNotHeld) {
    EXPECT_FALSE(m_controller.authorized());
    m_controller.authorize();
    m_controller.authorize();
    EXPECT_EQ(m_authority.questions, 1);
    m_authority.held = Answer::Refused; // the time is over
    EXPECT_FALSE(m_controller.authorized());
    m_controller.authorize();
    EXPECT_EQ(m_authority.questions, 2);

    m_controller.deauthorize();
    EXPECT_EQ(m_authority.givenUp, 1);
    EXPECT_FALSE(m_controller.authorized()) << "though it would be granted without a question";
    m_authority.asked = Answer::Dismissed;
    m_controller.authorize();
    m_controller.deauthorize();
    EXPECT_EQ(m_authority.givenUp, 1) << "after a request that failed";
}

TEST_F(SecurityControllerTest, EndsAQuestionOfPkexecsWhenToldSo) {
    behave("exec tail -f /dev/null");
    m_controller.authorize();
    m_controller.setShouldEnd([this] { return hasRun(); });
    EXPECT_EQ(hide(), CloakWorkerResult::resultWithErrorCode(3));
    EXPECT_EQ(m_controller.status(), 3);
    m_controller.setShouldEnd([] { return false; });
    behave("kill -TERM $$");
    EXPECT_EQ(hide(), CloakWorkerResult::resultWithErrorCode(1)) << "by somebody else";
}

TEST_F(SecurityControllerTest, NamesTheItemOnStandardInputAlone) {
    behave("printf 'NewFilename: '; printf '%s|' \"$@\"; env | grep -v '^_=\\|^PWD=' | sort; pwd; cat");
    ::setenv("LC_ALL", "C", 1);
    m_controller.authorize();
    const std::string told = hide().newFileName();
    ::unsetenv("LC_ALL");
    const std::string nul(1, '\0');
    EXPECT_EQ(told, "--disable-internal-agent|/usr/bin/true|-p|-i|-hide|-|LANG=C.UTF-8\n"
                    "PATH=/usr/sbin:/usr/bin:/sbin:/bin\n/\n" +
                        item + nul + m_tree.path("InProgress") + nul);
    EXPECT_EQ(m_controller.executeCommandWithPrivilidges(anyTrustedProgram, {"-hide", "/a" + nul + "/b"}),
              CloakWorkerResult::resultWithErrorCode(1));
}

TEST_F(SecurityControllerTest, FollowsLinksAmongTheParentsFirst) {
    behave("printf 'NewFilename: '; cat | tr '\\0' '\\n' | head -n 1");
    m_controller.authorize();
    const std::string real = m_tree.makeDirectory("real");
    ASSERT_EQ(::symlink(real.c_str(), m_tree.path("link").c_str()), 0);
    ASSERT_EQ(::symlink("nowhere", m_tree.path("real/item").c_str()), 0);
    const std::pair<std::string, std::string> rows[] = {
        {m_tree.path("link/item"), real + "/item"},
        {real + "/item", real + "/item"},
        {m_tree.path("link"), m_tree.path("link")},
        {"/no such folder/item", "/no such folder/item"},
    };
    for (const auto& [path, told] : rows)
        EXPECT_EQ(
            m_controller.executeCommandWithPrivilidges(anyTrustedProgram, {"-hide", path}).newFileName(),
            told + "\n");
}

TEST_F(SecurityControllerTest, ReadsWhatARunLeaves) {
    m_controller.authorize();
    const struct {
        std::string script;
        int code;
        std::string newFileName;
        int status;
    } rows[] = {
        {"printf 'NewFilename: /x/.SYS_INDEX/y'; exit 1", 0, "/x/.SYS_INDEX/y", 0},
        {"printf 'NewFilename: /x/.SYS_INDEX/y'; exit 0", 0, "/x/.SYS_INDEX/y", 0},
        {"printf 'NewFilename: /x'; exit 126", 0, "/x", 0},
        {"printf 'NewFilename: /x'; kill -9 $$", 0, "/x", 0},
        {"printf 'Error: 13'; exit 1", 13, "", 0},
        {"printf 'Error: 3'; exit 127", 3, "", 0},
        {"exit 1", 1, "", 0},
        {"kill -9 $$", 1, "", 0},
        {"printf 'NewFilename: '; head -c 1100000 /dev/zero", 1, "", 0},
        {"exit 126", 3, "", 3},
        {"exit 127", 3, "", 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.script);
        behave(row.script);
        const CloakWorkerResult result = hide();
        EXPECT_EQ(result.errorCode(), row.code);
        EXPECT_EQ(result.newFileName(), row.newFileName);
        EXPECT_EQ(m_controller.status(), row.status);
    }
    EXPECT_EQ(log().find("secret"), std::string::npos) << "the log names an item";
}

TEST_F(SecurityControllerTest, DoesNotRunWhatItMayNotRun) {
    behave("printf 'NewFilename: /x'");
    const auto expectRefused = [&](const std::string& tool, const std::string& logged) {
        EXPECT_EQ(hide(tool), CloakWorkerResult::resultWithErrorCode(3)) << logged;
        EXPECT_NE(m_controller.status(), 0) << logged;
        EXPECT_NE(log().find(logged), std::string::npos) << logged;
        EXPECT_FALSE(hasRun()) << logged;
    };
    m_authority.held = Answer::Granted;
    expectRefused(anyTrustedProgram, "was not granted"); // nobody said authorize()
    m_controller.authorize();
    const std::string ours = m_tree.makeFile("cloakWorker", {}, 0755);
    ASSERT_EQ(::chmod(m_tree.root().c_str(), 0777), 0);
    expectRefused(ours, "writable by others " + m_tree.root());
    expectRefused("true", "not a plain absolute path true");
    m_authority.held = Answer::Refused; // the time is over
    expectRefused(anyTrustedProgram, "has run out");
    m_authority.held = Answer::Granted;
    ASSERT_EQ(::unlink(m_pkexec.c_str()), 0);
    expectRefused(anyTrustedProgram, "posix_spawn " + m_pkexec);
    EXPECT_EQ(m_authority.questions, 1) << "asked in a run";
}

} // namespace
} // namespace veilkeep
