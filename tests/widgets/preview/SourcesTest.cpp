// What images are made of, and what cannot stop their maker.

#include "tests/support/ScratchTree.h"
#include "tests/widgets/preview/PreviewFiles.h"
#include "widgets/preview/PreviewMaker.h"
#include "widgets/preview/QuickContent.h"

#include <gtest/gtest.h>

#include <QImageReader>

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>

namespace veilkeep {
namespace {

using namespace veilkeep::test;

constexpr QSize none(0, 0);

std::string repeated(const char* text, int count) {
    std::string all;
    while (count-- > 0)
        all += text;
    return all;
}

class Sources : public ::testing::Test {
protected:
    DecodedImage imageOf(const std::string& path, const std::string& name, QSize bound = {150, 150}) {
        const OpenedItem item(path);
        const PreviewSubject subject{.path = path, .name = name};
        m_type = typeOf(subject, item, m_stop);
        return m_maker.imageOf(subject, item, m_type, {.bound = bound}, m_stop);
    }

    ScratchTree m_tree;
    WorkStop m_stop;
    PreviewMaker m_maker{std::chrono::seconds(5)};
    ItemType m_type;
};

TEST_F(Sources, ImagesComeInTheirProportionsAndTheRestGivesNone) {
    const std::string png = previewFiles::image("png", {300, 100});
    const std::string fifo = m_tree.path("pipe");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0644), 0);
    const auto drawingWith = [](const std::string& inside) { return previewFiles::svg(inside); };
    struct Row {
        const char* name;
        std::string content;
        QSize size;
        ItemType::Family family;
    };
    using Family = ItemType::Family;
    const Row rows[] = {
        {"wide.png", png, {150, 50}, Family::Image},
        {"thin.png", previewFiles::image("png", {4000, 2}), {150, 1}, Family::Image},
        {"photo.jpeg", previewFiles::image("jpeg", {200, 400}), {75, 150}, Family::Image},
        {"wrongly-named.jpg", png, {150, 50}, Family::Image},
        {"\xff\xfe.png", png, {150, 50}, Family::Image},
        {"drawing.svg", previewFiles::svg(), {150, 75}, Family::Image},
        {"drawing-with-pipe.svg",
         drawingWith("<image xlink:href='" + fifo + "' width='9' height='9'/>"),
         {150, 75},
         Family::Image},
        {"drawing-with-style.svg",
         "<?xml version='1.0'?><?xml-stylesheet type='text/css' href='" + fifo + "'?>" + previewFiles::svg(),
         {150, 75},
         Family::Image},
        {"drawing-with-zeros.svg",
         drawingWith("<image href='file:///dev/zero' width='9' height='9'/>"),
         {150, 75},
         Family::Image},
        {"deep.svg", drawingWith(repeated("<g>", 100'000)), none, Family::Image},
        {"deep-and-whole.svg", drawingWith(repeated("<g>", 100'000) + repeated("</g>", 100'000)), none,
         Family::Image},
        {"cut.png", png.substr(0, 40), none, Family::Image},
        {"bomb.png", previewFiles::pngOfSize(60'000, 60'000), none, Family::Image},
        {"text.png", "just text", none, Family::Image},
        {"notes.txt", "just text", none, Family::Text},
        {"compressed.svgz", png, {150, 50}, Family::Image},
        {"song.mp3", "ID3", none, Family::Audio},
        {"things.zip", "PK", none, Family::Archive},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = m_tree.makeFile("scrambled", row.content); // as a hidden item is
        EXPECT_EQ(imageOf(path, row.name).image.size(), row.size);
        EXPECT_EQ(m_type.family, row.family);
    }
}

TEST_F(Sources, WhatIsNoRegularFileIsNeverOpened) {
    const std::string fifo = m_tree.path("pipe.png");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0644), 0);
    const std::string picture = m_tree.makeFile("real.png", previewFiles::image("png", {20, 20}));
    const std::string link = m_tree.path("link.png"), dangling = m_tree.path("dangling.png"),
                      toFifo = m_tree.path("to-pipe.png");
    ASSERT_EQ(::symlink("real.png", link.c_str()), 0);
    ASSERT_EQ(::symlink("nothing", dangling.c_str()), 0);
    ASSERT_EQ(::symlink("pipe.png", toFifo.c_str()), 0);
    struct Row {
        std::string path;
        OpenedItem::Kind kind;
        const char* mimeType;
    };
    using Kind = OpenedItem::Kind;
    for (const Row& row :
         {Row{fifo, Kind::Other, "inode/fifo"}, Row{toFifo, Kind::Other, "inode/fifo"},
          Row{"/dev/zero", Kind::Other, "inode/chardevice"}, Row{dangling, Kind::Other, "inode/symlink"},
          Row{m_tree.makeDirectory("folder.png"), Kind::Folder, "inode/directory"},
          Row{m_tree.path("missing.png"), Kind::Missing, "image/png"},
          Row{link, Kind::RegularFile, "image/png"}}) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(OpenedItem(row.path).kind(), row.kind);
        EXPECT_EQ(imageOf(row.path, "name.png").image.isNull(), row.kind != Kind::RegularFile);
        EXPECT_EQ(m_type.mimeType, QLatin1String(row.mimeType));
    }
}

TEST_F(Sources, PagesOfDocumentsAreDrawnOnWhite) {
    if (!QImageReader::supportedImageFormats().contains("pdf"))
        GTEST_SKIP() << "Qt's reader for PDF is not installed";
    const std::string path = m_tree.makeFile("hidden", previewFiles::pdf());
    const DecodedImage first = imageOf(path, "letter.pdf");
    EXPECT_EQ(first.image.size(), QSize(100, 150));
    EXPECT_EQ(first.image.pixelColor(1, 1), QColor(Qt::white));
    EXPECT_EQ(first.image.pixelColor(30, 120), QColor(Qt::red));
    const QuickContent second = quickContentOf({.path = path, .name = "letter.pdf"}, m_maker,
                                               {.bound = {900, 900}, .page = 1}, m_stop);
    EXPECT_EQ(second.kind, QuickContent::Kind::Image);
    EXPECT_EQ(second.image.size(), QSize(900, 600));
    EXPECT_EQ(second.pages, 2);
    EXPECT_TRUE(imageOf(m_tree.makeFile("cut", previewFiles::pdf().substr(0, 100)), "a.pdf").image.isNull());
}

TEST_F(Sources, QuickContentFollowsTheKind) {
    const std::string limit(std::size_t{256} << 10, 'a');
    struct Row {
        const char* name;
        std::string content;
        QuickContent::Kind kind;
        QString text;
        bool isCut = false;
    };
    using Kind = QuickContent::Kind;
    for (const Row& row :
         {Row{"a.txt", "gr\xc3\xbc\xc3\x9f", Kind::Text, QStringLiteral("grüß")},
          Row{"a.txt", "gr\xfc\xdf", Kind::Text, QStringLiteral("grüß")},
          Row{"a.html", "<b>x</b>", Kind::Text, QStringLiteral("<b>x</b>")},
          Row{"a.txt", limit, Kind::Text, QString::fromStdString(limit)},
          Row{"a.txt", limit.substr(1) + "\xc3\xbc", Kind::Text, QString::fromStdString(limit.substr(1)),
              true},
          Row{"a.bin", std::string("\x7f\0\x01", 3), Kind::Facts, {}}, Row{"a.png", "text", Kind::Facts, {}},
          Row{"a.svg", previewFiles::svg(), Kind::Image, {}}}) {
        SCOPED_TRACE(row.content.substr(0, 20));
        const PreviewSubject subject{.path = m_tree.makeFile("x", row.content), .name = row.name};
        const QuickContent content = quickContentOf(subject, m_maker, {.bound = {64, 64}}, m_stop);
        EXPECT_EQ(content.kind, row.kind);
        EXPECT_EQ(content.text, row.text);
        EXPECT_EQ(content.isCut, row.isCut);
        EXPECT_FALSE(content.modified.isEmpty());
    }
    const QuickContent missing =
        quickContentOf({.path = m_tree.path("no"), .name = "a.txt"}, m_maker, {.bound = {64, 64}}, m_stop);
    EXPECT_EQ(missing.kind, Kind::Missing);
}

} // namespace
} // namespace veilkeep
