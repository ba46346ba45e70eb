#include "platform/linux/ActivationToken.h"

#include <gtest/gtest.h>

#include <QtGlobal>

namespace veilkeep {
namespace {

constexpr const char* newer = "XDG_ACTIVATION_TOKEN";
constexpr const char* older = "DESKTOP_STARTUP_ID";

TEST(ActivationTokenTest, IsTakenOnceAndGivenToNobodyElse) {
    const struct {
        QByteArray newer, older;
        QString token;
    } rows[] = {
        {"a", "b", "a"},
        {"", "host-1_TIME7", "host-1_TIME7"},
        {"", "", ""},
        {"a\nb", "b", "b"},
        {QByteArray(2000, 'x'), QByteArray("\x1b[2J"), ""},
    };
    for (const auto& row : rows) {
        qputenv(newer, row.newer);
        qputenv(older, row.older);
        EXPECT_EQ(inheritedActivationToken(), row.token) << row.newer.data();
        dropInheritedActivationToken();
        EXPECT_FALSE(qEnvironmentVariableIsSet(newer) || qEnvironmentVariableIsSet(older));
        useActivationToken(row.token);
        EXPECT_EQ(qgetenv(newer), row.token.toUtf8()) << "where the window system looks for it";
        useActivationToken({});
        EXPECT_FALSE(qEnvironmentVariableIsSet(newer)) << "an old one is of no use";
    }
}

} // namespace
} // namespace veilkeep
