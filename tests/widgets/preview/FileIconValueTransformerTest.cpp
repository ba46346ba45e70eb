// The image of the selected item's path.

#include "widgets/preview/FileIconValueTransformer.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/gui/RealInput.h"
#include "tests/widgets/preview/PreviewFiles.h"
#include "widgets/images/ProgramImages.h"

#include <gtest/gtest.h>

#include <QObject>

#include <memory>
#include <optional>

namespace veilkeep {
namespace {

using namespace veilkeep::test;

TEST(FileIcon, ShowsWhatLiesAtThePathToThoseWhoAreThere) {
    const ScratchTree tree;
    FileList files;
    Previews previews(files, {.devicePixelRatio = 1});
    FileIconValueTransformer transformer(previews);
    QObject context;
    const auto imageOf = [&](const QByteArray& path) {
        std::optional<QImage> told;
        transformer.transformedValue(path, &context, [&](const QImage& image) { told = image; });
        EXPECT_TRUE(eventually([&] { return told.has_value(); }));
        return told.value_or(QImage());
    };
    bool isTold = false;
    auto gone = std::make_unique<QObject>();
    transformer.transformedValue(QByteArray("/"), gone.get(), [&](const QImage&) { isTold = true; });
    gone.reset();
    const QImage several =
        programImage::named(QStringLiteral("MultipleSelection")).pixmap(Previews::pathImageSize).toImage();
    tree.makeFile("home/a \xff.png", previewFiles::image("png", {300, 600}));
    EXPECT_EQ(imageOf("~/a \xff.png").size(), QSize(64, 128));
    EXPECT_EQ(imageOf(""), several);
    EXPECT_EQ(imageOf("/no/such/item"), several);
    EXPECT_NE(imageOf("/"), several);
    EXPECT_FALSE(isTold);
}

} // namespace
} // namespace veilkeep
