#include "core/tracking/IdentityComparison.h"

#include <gtest/gtest.h>

#include <functional>

namespace veilkeep {
namespace {

FileIdentity knownFile() {
    FileIdentity file;
    file.kind = ItemKind::File;
    file.inode = 12;
    file.size = 100;
    file.modificationTime = {5000, 7};
    file.birthTime = FileTime{4000, 1};
    file.handle = FileHandle{1, "handle"};
    return file;
}

TEST(IdentityComparison, GoesByTheMarksThatLast) {
    using Change = std::function<void(FileIdentity&)>;
    const auto D = Likeness::Different, U = Likeness::Unsure, S = Likeness::Same;
    const struct {
        const char* what;
        Change change;
        Likeness byHandle, byBirthTime, byInodeAndContents, byNone;
    } rows[] = {
        {"nothing", [](FileIdentity&) {}, S, S, S, S},
        {"content",
         [](FileIdentity& f) {
             f.size = 7, f.modificationTime = {6000, 0};
         },
         S, S, S, U},
        {"kind", [](FileIdentity& f) { f.kind = ItemKind::Directory; }, D, D, D, D},
        {"inode number given out again",
         [](FileIdentity& f) {
             f.handle->bytes = "other", f.birthTime = FileTime{9000, 0};
         },
         D, D, S, S},
        {"other item with the same times", [](FileIdentity& f) { f.inode = 13, f.handle->bytes = "other"; },
         D, D, D, S},
        {"copied up",
         [](FileIdentity& f) {
             f.birthTime = FileTime{9000, 0};
         },
         S, D, S, S},
        {"copied up and changed",
         [](FileIdentity& f) {
             f.birthTime = FileTime{9000, 0}, f.size = 7;
         },
         S, D, U, U},
        {"no handle to be had", [](FileIdentity& f) { f.handle.reset(); }, S, S, S, S},
        {"neither handle nor birth time", [](FileIdentity& f) { f.handle.reset(), f.birthTime.reset(); }, U,
         U, S, S},
        {"time rounded off",
         [](FileIdentity& f) {
             f.modificationTime = {5002, 0};
         },
         S, S, S, S},
        {"nothing there", [](FileIdentity& f) { f = {}; }, D, D, D, D},
    };
    for (const auto& row : rows) {
        FileIdentity seen = knownFile();
        row.change(seen);
        const auto compare = [&](LastingMarks marks) { return compareIdentities(knownFile(), seen, marks); };
        EXPECT_EQ(compare(LastingMarks::Handle), row.byHandle) << row.what;
        EXPECT_EQ(compare(LastingMarks::BirthTime), row.byBirthTime) << row.what;
        EXPECT_EQ(compare(LastingMarks::InodeAndContents), row.byInodeAndContents) << row.what;
        EXPECT_EQ(compare(LastingMarks::None), row.byNone) << row.what;
    }
    FileIdentity directory = knownFile();
    directory.kind = ItemKind::Directory;
    EXPECT_EQ(compareIdentities(directory, directory, LastingMarks::None), U)
        << "its times change with each entry";
}

} // namespace
} // namespace veilkeep
