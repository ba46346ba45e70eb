#include "widgets/images/DrawnImage.h"
#include "widgets/images/ProgramImages.h"

#include "tests/support/ScratchTree.h"
#include "tests/widgets/preview/PreviewFiles.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <QBuffer>
#include <QImageWriter>

#include <random>

namespace veilkeep {
namespace {

using namespace test;

QImage plain(QSize size, const QColor& colour) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

std::string encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(image.save(&buffer, format)) << format;
    return bytes.toStdString();
}

QImage imageOf(const std::optional<Bytes>& bytes) {
    return bytes ? QImage::fromData(QByteArray::fromStdString(std::string(bytes->data.view())), "png")
                 : QImage();
}

QImage indexedRed(QSize size, QImage::Format format) {
    QImage image(size, format);
    image.setColorTable({qRgb(255, 0, 0), qRgb(0, 0, 0)});
    image.fill(0);
    return image;
}

QImage grey(QSize size) {
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(128);
    return image;
}

// A red GIF of one pixel.
const std::string redGif("GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 35);

class GroupImages : public ::testing::Test {
protected:
    std::optional<Bytes> imageIn(const std::string& name, const std::string& content) {
        return m_images.imageAtPath(m_tree.makeFile(name, content));
    }

    ScratchTree m_tree;
    ProgramGroupImages m_images;
};

TEST_F(GroupImages, OwnImagesComeByTheirNames) {
    const QImage image = imageOf(m_images.imageNamed("folder-pictures"));
    EXPECT_EQ(image.size(), QSize(42, 42));
    EXPECT_EQ(image.convertToFormat(QImage::Format_ARGB32_Premultiplied),
              drawnImage::drawn("folder-pictures", {42, 42}));
    for (const char* other : {"", "no such image", "/etc/passwd", "folder-pictures.svg"})
        EXPECT_FALSE(m_images.imageNamed(other)) << other;
}

TEST_F(GroupImages, FilesOfTheKnownKindsAreTaken) {
    const QImage red = plain({90, 60}, Qt::red);
    std::vector<std::pair<std::string, std::string>> rows{
        {"a.png", encoded(red, "png")},
        {"a.bmp", encoded(red, "bmp")},
        {"a.jpg", encoded(red, "jpg")},
        {"PHOTO.JPEG", encoded(red, "jpg")},
        {"a.gif", redGif},
        {"really a jpeg.png", encoded(red, "jpg")},
        {"grand.png", encoded(plain({3000, 2000}, Qt::red), "png")},
        {"two colours.png", encoded(indexedRed({900, 700}, QImage::Format_Mono), "png")},
        {"few colours.png", encoded(indexedRed({900, 700}, QImage::Format_Indexed8), "png")},
        {"grand.jpg", encoded(plain({3000, 2000}, Qt::red), "jpg")},
        {"not UTF-8 \xFF.png", encoded(red, "png")},
    };
    if (QImageWriter::supportedImageFormats().contains("tif"))
        rows.emplace_back("a.tif", encoded(red, "tif"));
    for (const auto& [name, content] : rows) {
        const QImage image = imageOf(imageIn(name, content));
        ASSERT_EQ(image.size(), QSize(42, 42)) << name;
        const QColor centre = image.pixelColor(21, 21);
        EXPECT_TRUE(centre.red() > 250 && centre.green() < 5 && centre.alpha() == 255) << name;
    }
}

TEST_F(GroupImages, WhatIsNoImageOfThatKindGivesNothing) {
    const std::string png = previewFiles::image("png", {8, 8});
    const std::pair<std::string, std::string> rows[] = {
        {"png.txt", png},
        {"png", png},
        {"folder.png/png", png},
        {"empty.png", ""},
        {"text.png", "no image at all"},
        {"drawing.png", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' "
                        "height='9'/></svg>"},
        {"icon.bmp", std::string("\0\0\1\0\1\0\x10\x10\0\0\1\0\x20\0", 14)},
        {"only its head.png", png.substr(0, 33)},
        {"only its name.gif", "GIF89a"},
        {"only its name.jpg", "\xFF\xD8\xFF\xE0"},
        {"only its name.tif", std::string("II*\0", 4)},
        {"only its name.jp2", std::string("\0\0\0\x0CjP  \r\n\x87\n", 12)},
        {"nothing wide.png", previewFiles::pngOfSize(0, 8)},
        {"too many pixels.jpg", encoded(grey({9000, 7200}), "jpg")},
        {"far too many pixels.png", previewFiles::pngOfSize(60'000, 60'000)},
        {"endless row.png", previewFiles::pngOfSize(0x7FFFFFFF, 1)},
        {"endless bmp.bmp", std::string("BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\xFF\xFF\xFF\x7F\xFF\xFF\xFF"
                                        "\x7F\1\0\x20\0\0\0\0\0\0\0\0\0",
                                        38) +
                                std::string(16, '\0')},
    };
    for (const auto& [name, content] : rows)
        EXPECT_FALSE(imageIn(name, content)) << name;
}

TEST_F(GroupImages, WhatIsNoFileIsNotWaitedFor) {
    const std::string pipe = m_tree.path("pipe.png");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::string link = m_tree.path("link.png");
    ASSERT_EQ(::symlink("nowhere", link.c_str()), 0);
    const std::string vast = m_tree.makeFile("vast.png", previewFiles::image("png", {8, 8}));
    ASSERT_EQ(::truncate(vast.c_str(), (off_t{64} << 20) + 1), 0);
    for (const std::string& path : {pipe, link, vast, m_tree.makeDirectory("folder.png"),
                                    m_tree.path("none.png"), std::string(), std::string("/dev/zero")})
        EXPECT_FALSE(m_images.imageAtPath(path)) << path;
    ASSERT_EQ(::truncate(vast.c_str(), off_t{64} << 20), 0);
    EXPECT_TRUE(m_images.imageAtPath(vast));
}

TEST_F(GroupImages, DamagedFilesDoNoHarm) {
    QImage colourful(17, 13, QImage::Format_ARGB32);
    for (int y = 0; y < colourful.height(); ++y)
        for (int x = 0; x < colourful.width(); ++x)
            colourful.setPixelColor(x, y, QColor(x * 15, y * 19, (x * y) % 256, 255 - x));
    std::mt19937 chance(20);
    std::vector<std::pair<std::string, std::string>> files{{"gif", redGif}};
    for (const char* kind : {"png", "bmp", "jpg", "tif"})
        if (QImageWriter::supportedImageFormats().contains(kind))
            files.emplace_back(kind, encoded(colourful, kind));
    for (const auto& [kind, whole] : files) {
        for (std::size_t length = 0; length < whole.size(); length += 1 + whole.size() / 150)
            imageIn("cut." + kind, whole.substr(0, length));
        for (int round = 0; round < 150; ++round) {
            std::string bent = whole;
            for (int flips = 0; flips < 3; ++flips)
                bent[chance() % bent.size()] ^= static_cast<char>(1U << chance() % 8);
            const QImage image = imageOf(imageIn("bent." + kind, bent));
            EXPECT_TRUE(image.isNull() || image.size() == QSize(42, 42));
        }
    }
}

TEST_F(GroupImages, AGroupShowsItsIconOrTheDefault) {
    const auto group = [](const std::string& icon, const std::string& iconPath) {
        Group made = Group::initWithName("Letters", 3);
        made.setIconData(Bytes{icon});
        made.setIconPath(iconPath);
        return made;
    };
    const std::string games(m_images.imageNamed("folder_games")->data.view());
    const std::string red = encoded(plain({42, 42}, Qt::red), "png");
    const struct {
        const char* what;
        Group group;
        QString drawnAs; // empty: the red image
    } rows[] = {
        {"no icon", group("", "folder_games"), "folder-documents_alt"},
        {"rubbish", group("rubbish", "folder_games"), "folder-documents_alt"},
        {"cut off", group(red.substr(0, 30), "folder_games"), "folder-documents_alt"},
        {"own", group(games, "folder_games"), "folder_games"},
        {"user's", group(red, "/home/ann/red.png"), ""},
        {"old one, its new path being none", group(red, "folder_none"), ""},
    };
    for (const auto& row : rows) {
        const QImage wanted =
            row.drawnAs.isEmpty() ? plain({42, 42}, Qt::red) : drawnImage::drawn(row.drawnAs, {42, 42});
        const QPixmap icon = groupIcon(row.group, {42, 42}, 1);
        EXPECT_EQ(icon.toImage().convertToFormat(wanted.format()), wanted) << row.what;
    }
}

} // namespace
} // namespace veilkeep
