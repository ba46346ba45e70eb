#include "requests/RequestRules.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

// Whole groups are a matter of the list's, and what is brought back or listed would be seen.
TEST(RequestRules, OnlyItemsThatAMenuHidesGoWithoutThePassword) {
    const std::vector<std::string> item{"/a"};
    const QVariantMap fromMenu{{requestOption::fromMenu, true}};
    const struct {
        const char* command;
        std::vector<std::string> paths;
        QVariantMap options;
        bool passesGate;
    } rows[] = {
        {"hide", item, fromMenu, false},
        {"hide", item, {}, true},
        {"hide", item, {{requestOption::fromMenu, false}}, true},
        {"hide", {}, {{requestOption::fromMenu, true}, {requestOption::all, true}}, true},
        {"hide", {}, {{requestOption::fromMenu, true}, {requestOption::group, QByteArray("g")}}, true},
        {"unhide", item, fromMenu, true},
        {"list", {}, fromMenu, true},
        {"remove", item, fromMenu, true},
        {"autohide", {}, {}, false},
        {"unknown", item, {}, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(passesGate({row.command, row.paths, row.options}), row.passesGate) << row.command;
}

} // namespace
} // namespace veilkeep::test
