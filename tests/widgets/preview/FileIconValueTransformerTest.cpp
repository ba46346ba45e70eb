// The image of the selected item's path.

#include "widgets/preview/FileIconValueTransformer.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/gui/RealInput.h"
#include "tests/widgets/preview/PreviewFiles.h"
#include "widgets/images/ProgramImages.h"

#include <gtest/gtest.h>

#include <QObject>

#include <optional>

namespace veilkeep {
namespace {

using namespace veilkeep::test;

class FileIcon : public ::testing::Test {
protected:
    std::optional<QImage> imageOf(const QVariant& value) {
        std::optional<QImage> told;
        m_transformer.transformedValue(value, &m_context, [&](const QImage& image) { told = image; });
        EXPECT_TRUE(eventually([&] { return told.has_value(); }));
        return told;
    }

    ScratchTree m_tree;
    FileList m_files;
    Previews m_previews{m_files, {.devicePixelRatio = 1}};
    FileIconValueTransformer m_transformer{m_previews};
    QObject m_context;
};

TEST_F(FileIcon, ShowsWhatLiesAtThePath) {
    const QImage several =
        programImage::named(QStringLiteral("MultipleSelection")).pixmap(Previews::pathImageSize).toImage();
    ASSERT_FALSE(several.isNull());
    const std::string picture = m_tree.makeFile("home/a \xff.png", previewFiles::image("png", {300, 600}));
    EXPECT_EQ(imageOf(QByteArray::fromStdString(picture))->size(), QSize(64, 128));
    EXPECT_EQ(imageOf(QByteArray("~/a \xff.png"))->size(), QSize(64, 128));
    EXPECT_EQ(imageOf(QStringLiteral("")), several);
    EXPECT_EQ(imageOf(QByteArray("/no/such/item")), several);
    const auto folder = imageOf(QString::fromStdString(m_tree.home()));
    EXPECT_FALSE(folder->isNull());
    EXPECT_NE(folder, several);
    EXPECT_LE(folder->width(), 128);
}

TEST_F(FileIcon, ContextsThatAreGoneAreNotTold) {
    auto context = std::make_unique<QObject>();
    bool isTold = false;
    m_transformer.transformedValue(QByteArray("/"), context.get(), [&](const QImage&) { isTold = true; });
    context.reset();
    EXPECT_TRUE(imageOf(QByteArray("/")));
    EXPECT_TRUE(imageOf(QByteArray("/")));
    EXPECT_FALSE(isTold);
}

} // namespace
} // namespace veilkeep
