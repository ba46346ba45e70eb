#include "platform/linux/PolkitAuthority.h"

#include "tests/support/bus/BusService.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace veilkeep {
namespace {

using Answer = RightsAuthority::Answer;
using Interaction = RightsAuthority::Interaction;

constexpr const char* action = "com.ostrel.Veilkeep.move";
const QString name = QStringLiteral("org.freedesktop.PolicyKit1");
const QString checkMethod = QStringLiteral("CheckAuthorization");
const QString cancelMethod = QStringLiteral("CancelCheckAuthorization");
const QString revokeMethod = QStringLiteral("RevokeTemporaryAuthorizationById");

PolkitDetails detail(const char* key, const char* value = "1") {
    return {{QString::fromLatin1(key), QString::fromLatin1(value)}};
}

const PolkitResult granted = {true, false, {}};
const PolkitResult grantedForAWhile = {true, false, detail("polkit.temporary_authorization_id", "tmp7")};
const PolkitResult refused = {false, false, {}};
const PolkitResult dismissed = {false, false, detail("polkit.dismissed", "true")};
const PolkitResult askable = {false, true, detail("polkit.retains_authorization_after_challenge")};
const PolkitResult askableOnce = {false, true, {}};

bool asks(const QDBusMessage& call) {
    return call.arguments().value(3).toUInt() == 1;
}

// Plays polkit.
class PolkitAuthorityTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!m_bus.whyMissing().empty())
            GTEST_SKIP() << m_bus.whyMissing();
        m_polkit.emplace(name, [this](const QDBusMessage& call) { return answer(call); });
    }

    QDBusMessage answer(const QDBusMessage& call) {
        if (call.member() == checkMethod && asks(call)) {
            if (m_isQuestionLeftOpen) {
                m_openQuestion = call;
                return {};
            }
            return call.createReply(QVariant::fromValue(m_afterQuestion));
        }
        if (call.member() == checkMethod && m_known)
            return call.createReply(QVariant::fromValue(m_held));
        if (call.member() == revokeMethod && m_known)
            return call.createReply();
        if (call.member() == cancelMethod && isOpen(call)) {
            m_polkit->connection().send(m_openQuestion->createErrorReply(name + ".Error.Cancelled", {}));
            return call.createReply();
        }
        return call.createErrorReply(name + QStringLiteral(".Error.Failed"),
                                     QStringLiteral("not registered"));
    }

    // Known by who asked and the name that he gave it.
    bool isOpen(const QDBusMessage& cancel) const {
        return m_openQuestion && m_openQuestion->service() == cancel.service() &&
               m_openQuestion->arguments().value(4) == cancel.arguments().value(0);
    }

    const test::ScratchTree m_tree;
    const test::PrivateBus m_bus{m_tree};
    bool m_isQuestionLeftOpen = false;
    std::optional<QDBusMessage> m_openQuestion;
    PolkitResult m_held, m_afterQuestion;
    bool m_known = true;
    std::optional<test::BusService> m_polkit;
};

TEST_F(PolkitAuthorityTest, ReadsWhatPolkitAnswers) {
    const struct {
        const char* what;
        PolkitResult held, afterQuestion;
        Answer withoutInteraction, withInteraction;
        std::size_t questions;
    } rows[] = {
        {"held", granted, refused, Answer::Granted, Answer::Granted, 0},
        {"never", refused, granted, Answer::Refused, Answer::Refused, 0},
        {"granted when asked", askable, grantedForAWhile, Answer::Refused, Answer::Granted, 1},
        {"wrong password", askable, refused, Answer::Refused, Answer::Refused, 1},
        {"dismissed", askable, dismissed, Answer::Refused, Answer::Dismissed, 1},
        {"no agent", askable, askable, Answer::Refused, Answer::NoAgent, 1},
        {"not kept", askableOnce, granted, Answer::AskedEachRun, Answer::AskedEachRun, 0},
    };
    PolkitAuthority authority;
    std::size_t before = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        m_held = row.held;
        m_afterQuestion = row.afterQuestion;
        EXPECT_EQ(authority.check(action, Interaction::Never), row.withoutInteraction);
        EXPECT_EQ(authority.check(action, Interaction::Allowed), row.withInteraction);
        const auto calls = m_polkit->calls(checkMethod);
        const auto questions = static_cast<std::size_t>(std::count_if(calls.begin(), calls.end(), asks));
        EXPECT_EQ(questions - before, row.questions);
        before = questions;
    }
    m_known = false;
    EXPECT_EQ(authority.check(action, Interaction::Allowed), Answer::Unavailable);
}

TEST_F(PolkitAuthorityTest, GivesUpWhatWasGrantedForAWhile) {
    PolkitAuthority authority;
    m_held = granted;
    EXPECT_EQ(authority.giveUp(action), Answer::Granted);
    EXPECT_EQ(m_polkit->calls(revokeMethod).size(), 0U);
    m_held = grantedForAWhile;
    EXPECT_EQ(authority.giveUp(action), Answer::Granted);
    ASSERT_EQ(m_polkit->calls(revokeMethod).size(), 1U);
    EXPECT_EQ(m_polkit->calls(revokeMethod)[0].arguments(), QVariantList{QStringLiteral("tmp7")});
    m_known = false;
    EXPECT_EQ(authority.giveUp(action), Answer::Unavailable);
}

TEST_F(PolkitAuthorityTest, EndsAQuestionWhenToldSo) {
    m_held = askable;
    m_isQuestionLeftOpen = true;
    PolkitAuthority* asking = nullptr;
    PolkitAuthority authority(Tick([&] { asking->cancel(); }, std::chrono::milliseconds(0)));
    asking = &authority;
    authority.cancel(); // none is open
    EXPECT_EQ(authority.check(action, Interaction::Allowed), Answer::Dismissed);
    EXPECT_EQ(m_polkit->calls(cancelMethod).size(), 1U);
    m_isQuestionLeftOpen = false;
    m_afterQuestion = granted;
    asking->cancel();
    m_held = granted;
    EXPECT_EQ(authority.check(action, Interaction::Allowed), Answer::Granted)
        << "no question, nothing to end";
}

TEST(PolkitAuthorityWithoutPolkit, IsUnavailable) {
    const test::ScratchTree tree;
    test::PrivateBus::useItsAddress();
    PolkitAuthority authority;
    EXPECT_EQ(authority.check(action, Interaction::Allowed), Answer::Unavailable) << "no bus";
    const test::PrivateBus bus(tree);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    EXPECT_EQ(authority.check(action, Interaction::Allowed), Answer::Unavailable) << "no service";
}

} // namespace
} // namespace veilkeep
