#include "core/tracking/FileAlias.h"

#include "core/base/PathText.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veilkeep {
namespace {

std::optional<AliasRecord> aliasOf(const std::string& path) {
    const auto bytes = aliasRecordFromPath(path);
    return bytes ? decodeAliasRecord(*bytes) : std::nullopt;
}

std::uint64_t inodeAt(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status.st_ino;
}

std::string makeLink(const std::string& path, const std::string& target) {
    EXPECT_EQ(::symlink(target.c_str(), path.c_str()), 0);
    return path;
}

std::string makeFifo(const std::string& path) {
    EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
    return path;
}

TEST(FileAlias, DescribesTheItemItself) {
    const test::ScratchTree tree;
    const std::string file = tree.makeFile("dir/file", "123");
    const std::string directory = tree.path("dir");
    const std::string linkToDirectory = makeLink(tree.path("to-dir"), "dir");
    const struct {
        const char* what;
        std::string path, item; // the item's own path, free of links and of "/" at its end
        ItemKind kind;
    } rows[] = {
        {"file", file, file, ItemKind::File},
        {"directory", directory, directory, ItemKind::Directory},
        {"directory with a slash", directory + "//", directory, ItemKind::Directory},
        {"link", linkToDirectory, linkToDirectory, ItemKind::Link},
        {"dangling link", makeLink(tree.path("dangling"), "nowhere"), tree.path("dangling"), ItemKind::Link},
        {"below a link", linkToDirectory + "/file", file, ItemKind::File},
        {"not clean", tree.root() + "//dir/../dir/./file", file, ItemKind::File},
        {"no text", tree.makeFile("\xff\xfe\n\t"), tree.path("\xff\xfe\n\t"), ItemKind::File},
        {"said to be deleted", tree.makeFile("x (deleted)"), tree.path("x (deleted)"), ItemKind::File},
        {"fifo", makeFifo(tree.path("fifo")), tree.path("fifo"), ItemKind::Fifo},
        {"root", "/", "/", ItemKind::Directory},
        {"no file system of the disk", "/proc/self/status", "", ItemKind::File},
    };
    for (const auto& row : rows) {
        const auto alias = aliasOf(row.path);
        ASSERT_TRUE(alias) << row.what;
        EXPECT_EQ(alias->lastPath, row.path) << row.what;
        EXPECT_EQ(alias->item.kind, row.kind) << row.what;
        EXPECT_TRUE(alias->volume.isKnown()) << row.what;
        if (row.item.empty())
            continue;
        EXPECT_EQ(alias->item.inode, inodeAt(row.item)) << row.what;
        const Mount* const mount = MountTable::current()->mountHolding(row.item);
        EXPECT_EQ(alias->volumePath, pathOnVolume(*mount, row.item)) << row.what;
    }
    EXPECT_EQ(aliasOf(file)->item.size, 3u);
}

TEST(FileAlias, HoldsThePathOfWhatIsMissing) {
    const test::ScratchTree tree;
    const std::string file = tree.makeFile("file");
    const std::string missing = tree.path("missing");
    const auto alias = aliasOf(missing);
    ASSERT_TRUE(alias);
    EXPECT_EQ(alias->lastPath, missing);
    EXPECT_EQ(alias->item, FileIdentity());
    EXPECT_EQ(alias->volume, aliasOf(file)->volume) << "its directory tells the volume";
    EXPECT_EQ(parentPath(alias->volumePath), parentPath(aliasOf(file)->volumePath));
    const auto bare = aliasOf(missing + "/x");
    ASSERT_TRUE(bare);
    EXPECT_EQ(bare->lastPath, missing + "/x");
    EXPECT_EQ(bare->item, FileIdentity());
    EXPECT_FALSE(bare->volume.isKnown());
}

TEST(FileAlias, IsNotMadeOfWhatCannotBeLookedAt) {
    const test::ScratchTree tree;
    const std::string file = tree.makeFile("file");
    const std::string locked = tree.makeFile("locked/file");
    ASSERT_EQ(::chmod(tree.path("locked").c_str(), 0), 0);
    const bool isRoot = ::geteuid() == 0;
    const std::string circle = makeLink(tree.path("circle"), "circle");
    ASSERT_TRUE(!isRoot || ::seteuid(65534) == 0);
    const std::pair<const char*, std::string> rows[] = {
        {"no path", ""},
        {"locked directory", locked},
        {"missing in a locked directory", tree.path("locked/missing")},
        {"name too long", tree.path(std::string(256, 'n'))},
        {"path with a NUL", file + std::string(1, '\0')},
        {"circle of links", circle + "/x"},
    };
    for (const auto& [what, path] : rows)
        EXPECT_FALSE(aliasRecordFromPath(path)) << what;
    EXPECT_TRUE(aliasRecordFromPath(file)) << "no rights on the file itself are needed";
    EXPECT_TRUE(aliasRecordFromPath(tree.root() + std::string(4'096, '/') + "file")) << "no path is too long";
    ASSERT_TRUE(!isRoot || ::seteuid(0) == 0);
}

// Numbers that a file system makes up anew at each mount are no handle to keep.
TEST(FileAlias, KeepsNoPassingHandle) {
    const test::ScratchTree tree;
    EXPECT_TRUE(aliasOf(tree.root())) << "the mounts that are known from now on are those of before";
    if (const std::string why = test::enterPrivateMounts(); !why.empty())
        GTEST_SKIP() << why;
    const std::string place = tree.makeDirectory("memory");
    ASSERT_EQ(::mount("some", place.c_str(), "tmpfs", 0, nullptr), 0);
    test::writeFile(place + "/file", "");
    const auto alias = aliasOf(place + "/file");
    ASSERT_EQ(::umount2(place.c_str(), MNT_DETACH), 0);
    ASSERT_TRUE(alias);
    EXPECT_EQ(alias->volume.fileSystemType, "tmpfs");
    EXPECT_FALSE(alias->item.handle);
}

} // namespace
} // namespace veilkeep
