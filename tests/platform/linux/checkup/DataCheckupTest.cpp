#include "platform/linux/checkup/DataCheckup.h"

#include "core/storage/ArchiveEnvelope.h"
#include "core/storage/RecordArchive.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

std::string emptyArchive(std::uint64_t version, std::string_view key) {
    ArchiveEnvelopeWriter envelope(version, 0);
    envelope.text() += static_cast<char>(0xA1); // a map of one list
    envelope.text() += static_cast<char>(0x60 + key.size());
    envelope.text() += std::string(key) + static_cast<char>(0x80);
    return std::move(envelope).seal();
}

TEST(DataCheckupTest, TellsWhatCannotBeSavedOrCounted) {
    const ScratchTree tree;
    const std::string list = "home/.local/share/Veilkeep/FilesInfo.Veilkeep",
                      groups = "home/.local/share/Veilkeep/GroupsInfo.Veilkeep";
    EXPECT_EQ(lookAtAutoHide(lookAtData()).groups, 0U) << "there are none yet";
    tree.makeFile(list, emptyArchive(RecordArchive::currentVersion, "files"));
    tree.makeFile(groups, emptyArchive(RecordArchive::currentVersion, "groups"));
    EXPECT_EQ(lookAtData().list.trouble, std::nullopt);
    EXPECT_EQ(lookAtAutoHide(lookAtData()).groups, 0U);
    tree.makeFile(list, emptyArchive(RecordArchive::currentVersion + 1, "files"));
    tree.makeFile(groups, "rubbish");
    const DataFacts facts = lookAtData();
    EXPECT_EQ(facts.list.trouble, (Error{ErrorCode::NewerVersion, "read", tree.path(list), 0}));
    EXPECT_EQ(lookAtAutoHide(facts).groups, std::nullopt);
}

} // namespace
} // namespace veilkeep::test
