#include "worker/traces/Thumbnails.h"

#include "core/names/TraceNames.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace veilkeep::test {
namespace {

TEST(Thumbnails, OfItemsAndEverythingBelow) {
    const ScratchTree tree;
    tree.makeFile("real/.SYS_INDEX/rid/[a].png");
    tree.makeFile("real/.SYS_INDEX/rid/deep/b\xff");
    tree.makeFile("real/.SYS_INDEX/rid/deep/.SYS_INDEX/dc.jpg");
    ASSERT_EQ(::symlink("real", tree.path("link").c_str()), 0);
    const std::string places[] = {"normal", "large", "x-large", "xx-large", "fail/some-program"};
    for (const std::string& place : places) {
        for (const std::string& root : {tree.path("link"), tree.path("real")})
            for (const std::string below : {"/dir", "/dir/[a].png", "/dir/deep/b\xff", "/dir/deep/cd.jpg"})
                for (const std::string& name : thumbnailNamesOf(root + below))
                    tree.makeFile("thumbnails/" + place + "/" + name);
        for (const std::string& path :
             {tree.path("real/dir2"), tree.path("dir/deep/b\xff"), tree.path("real")})
            for (const std::string& name : thumbnailNamesOf(path))
                tree.makeFile("thumbnails/" + place + "/" + name);
        tree.makeFile("thumbnails/" + place + "/other.png");
    }
    const TracedItems items({tree.path("link/dir")});
    EXPECT_TRUE(removeThumbnails(tree.path("thumbnails"), items).value());
    for (const std::string& place : places)
        EXPECT_EQ(namesIn(tree.path("thumbnails/" + place)).size(), 4U) << place;
    EXPECT_FALSE(removeThumbnails(tree.path("thumbnails"), items).value());
    EXPECT_FALSE(removeThumbnails(tree.path("missing"), items).value());
}

} // namespace
} // namespace veilkeep::test
