// Previews of the list's records, as views ask for them.

#include "widgets/preview/Previews.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/gui/RealInput.h"
#include "tests/widgets/preview/PreviewFiles.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace veilkeep {
namespace {

using namespace veilkeep::test;

class PreviewsOfRecords : public ::testing::Test {
protected:
    void make(const PreviewOptions& options = {.devicePixelRatio = 1}) {
        m_previews = std::make_unique<Previews>(m_files, options);
        QObject::connect(m_previews.get(), &Previews::changed, [this] { ++m_changes; });
    }

    ListedFile add(std::string_view name, std::string_view content) {
        return m_files.append(File::initWithPath(m_tree.makeFile(name, content)));
    }

    ListedFile addPicture(std::string_view name = "a.png") {
        return add(name, previewFiles::image("png", {300, 150}));
    }

    bool comes(const ListedFile& file) {
        return eventually([&] { return !m_previews->preview(file).isNull(); });
    }

    // Whatever had been asked for before is done.
    void waitForType(const ListedFile& file) {
        EXPECT_TRUE(eventually([&] { return !m_previews->typeText(file).isEmpty(); }));
    }

    ScratchTree m_tree;
    FileList m_files;
    std::unique_ptr<Previews> m_previews;
    int m_changes = 0;
};

TEST_F(PreviewsOfRecords, TheFirstCallGivesNoneAndTheOneAfterChangedDoes) {
    make({.devicePixelRatio = 2});
    const ListedFile file = addPicture();
    EXPECT_TRUE(m_previews->preview(file).isNull());
    EXPECT_TRUE(m_previews->preview(file).isNull()) << "while it is being made";
    EXPECT_TRUE(eventually([&] { return m_changes == 2; })) << "its type, its image";
    const QImage image = m_previews->preview(file);
    EXPECT_EQ(image.size(), QSize(300, 150));
    EXPECT_EQ(image.deviceIndependentSize(), QSizeF(150, 75));
    EXPECT_EQ(m_previews->typeText(file), QStringLiteral("PNG image"));
}

TEST_F(PreviewsOfRecords, WhereNoImageComesTheRecordIsNotAskedAgain) {
    make();
    const ListedFile file = add("a.png", "no image yet");
    m_previews->preview(file);
    EXPECT_TRUE(eventually([&] { return m_changes == 2; }));
    writeFile(std::string(file->path()), previewFiles::image("png", {9, 9}));
    EXPECT_TRUE(m_previews->preview(file).isNull());
    waitForType(addPicture("later.png"));
    EXPECT_TRUE(m_previews->preview(file).isNull());
    EXPECT_FALSE(m_previews->typeIcon(file).isNull());
}

TEST_F(PreviewsOfRecords, AnItemThatIsMovedMeanwhileIsAskedForAgain) {
    make();
    const ListedFile file = addPicture();
    const std::string elsewhere = m_tree.path("gnp.a");
    std::filesystem::rename(std::string(file->path()), elsewhere);
    m_previews->preview(file); // nothing lies there any more
    m_files.change(file, [&](File& changed) { changed.setPath(elsewhere); });
    EXPECT_TRUE(comes(file));
}

TEST_F(PreviewsOfRecords, ImagesBeyondTheBoundAreMadeAgain) {
    constexpr qsizetype bytesOfOne = qsizetype{150} * 75 * 4;
    make({.cacheBytes = bytesOfOne * 10, .devicePixelRatio = 1});
    std::vector<ListedFile> files;
    for (int count = 0; count < 40; ++count) {
        files.push_back(addPicture("a" + std::to_string(count) + ".png"));
        ASSERT_TRUE(comes(files.back()));
    }
    const auto numberKept = std::ranges::count_if(
        files, [&](const ListedFile& file) { return !m_previews->preview(file).isNull(); });
    EXPECT_EQ(numberKept, 10);
    EXPECT_TRUE(comes(files.front()));
}

TEST_F(PreviewsOfRecords, OfTooManyRequestsTheOldestAreForgottenAndMayComeAgain) {
    make({.threads = 1, .mostWaiting = 20, .devicePixelRatio = 1});
    std::vector<ListedFile> files;
    for (int count = 0; count < 200; ++count) {
        files.push_back(addPicture("a" + std::to_string(count) + ".png"));
        m_previews->preview(files.back());
    }
    for (const ListedFile& file : {files[100], files[199], files[0]})
        EXPECT_TRUE(comes(file));
}

TEST_F(PreviewsOfRecords, RemovedRecordsAreForgotten) {
    make();
    ListedFile kept = addPicture("kept.png"), removed = addPicture("removed.png"),
               inProgress = addPicture("busy.png");
    ASSERT_TRUE(comes(kept));
    ASSERT_TRUE(comes(removed));
    m_previews->preview(inProgress);
    const std::vector<ListedFile> leaving{removed, inProgress};
    m_files.remove(leaving);
    EXPECT_EQ(removed.use_count(), 2) << "this one and the vector's";
    waitForType(kept);
    EXPECT_EQ(inProgress.use_count(), 2);
    EXPECT_FALSE(m_previews->preview(kept).isNull());
}

TEST_F(PreviewsOfRecords, TheEndMayComeInTheMidst) {
    make();
    const std::string content = previewFiles::image("png", {1500, 1500});
    for (int count = 0; count < 100; ++count)
        m_previews->preview(add("a" + std::to_string(count) + ".png", content));
    m_previews.reset();
    EXPECT_FALSE(exists(m_tree.home() + "/.cache/thumbnails"));
}

} // namespace
} // namespace veilkeep
