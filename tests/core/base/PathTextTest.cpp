#include "core/base/PathText.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

TEST(PathText, SplitsAPath) {
    const struct {
        std::string path, parent, last;
    } rows[] = {
        {"/a/b", "/a", "b"}, {"/a/b/", "/a", "b"}, {"/a//b//", "/a", "b"}, {"/a", "/", "a"},
        {"/", "/", "/"},     {"//", "/", "/"},     {"a", "", "a"},         {"a/b", "a", "b"},
        {"", "", ""},        {"//a", "/", "a"},    {"/a/ ", "/a", " "},    {"/a/\n", "/a", "\n"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(parentPath(row.path), row.parent) << row.path;
        EXPECT_EQ(lastPathComponent(row.path), row.last) << row.path;
    }
}

TEST(PathText, CleansAPath) {
    const std::pair<std::string, std::string> rows[] = {
        {"/a/./b//c/", "/a/b/c"},  {"/a/../b", "/b"}, {"/../a", "/a"},     {"/..", "/"}, {"/", "/"},
        {"a/../../b", "../b"},     {"", ""},          {"/a/b/../..", "/"}, {"//", "/"},  {"/.../a", "/.../a"},
        {"/a/..b/.c", "/a/..b/.c"}};
    for (const auto& [path, expected] : rows)
        EXPECT_EQ(cleanPath(path), expected) << path;
}

} // namespace
} // namespace veilkeep
