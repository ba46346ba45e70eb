#include "core/base/Md5.h"

#include "tests/support/Repeated.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

TEST(Md5, IsTheDigestThatGLibMakes) {
    for (std::size_t length = 0; length < 200; ++length) {
        const std::string text = repeated("\xfb", length) + "x";
        char* const digest = g_compute_checksum_for_string(G_CHECKSUM_MD5, text.c_str(), -1);
        EXPECT_EQ(md5(text), digest);
        g_free(digest);
    }
}

} // namespace
} // namespace veilkeep::test
