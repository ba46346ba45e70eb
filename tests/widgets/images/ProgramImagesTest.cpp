#include "widgets/images/ProgramImages.h"
#include "widgets/controls/RowControls.h"
#include "widgets/images/DrawnImage.h"

#include "tests/support/ScratchTree.h"
#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDirIterator>
#include <QPainter>
#include <QPalette>
#include <QStringList>
#include <QToolButton>

namespace veilkeep {
namespace {

using namespace test;

QStringList allNames() {
    QStringList names;
    for (QDirIterator each(":/images"); each.hasNext();)
        names << each.nextFileInfo().completeBaseName();
    EXPECT_TRUE(names.contains("add") && names.contains("folder-generic"));
    return names;
}

QImage onGround(const QImage& image, const QColor& ground) {
    QImage whole(image.size(), QImage::Format_RGB32);
    whole.fill(ground);
    QPainter(&whole).drawImage(0, 0, image);
    return whole;
}

template <class Condition>
double partOf(const QImage& image, const Condition& condition) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += condition(image.pixelColor(x, y)) ? 1 : 0;
    return double(count) / (image.width() * image.height());
}

// The colour of the pixel that covers most.
QColor inkOf(const QImage& image) {
    QColor ink(0, 0, 0, 0);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (const QColor here = image.pixelColor(x, y); here.alpha() > ink.alpha())
                ink = here;
    return ink;
}

QImage pixelsOf(const QIcon& icon, int size, qreal scale, QIcon::Mode mode = QIcon::Normal) {
    return icon.pixmap(QSize(size, size), scale, mode)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QPalette paletteWith(const QColor& text, const QColor& faint, const QColor& highlighted) {
    QPalette palette;
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, faint);
    palette.setColor(QPalette::HighlightedText, highlighted);
    return palette;
}

class ProgramImages : public ::testing::Test {
protected:
    ~ProgramImages() override { QApplication::setPalette(QPalette()); }
};

TEST_F(ProgramImages, HaveSomethingToShowOnLightAndOnDark) {
    for (const QString& name : allNames())
        for (const int size : {16, 22, 42, 128})
            for (const QColor& ground : {QColor("#ffffff"), QColor("#ececee"), QColor("#1c1d20")}) {
                const QImage seen = onGround(pixelsOf(programImage::named(name), size, 1), ground);
                const double part =
                    partOf(seen, [&](const QColor& here) { return contrastRatio(here, ground) >= 2; });
                EXPECT_GE(part, 0.04)
                    << name.toStdString() << " at " << size << " on " << ground.name().toStdString();
            }
}

TEST_F(ProgramImages, DifferFromEachOtherWhereTheyAreSmallest) {
    const QStringList all = allNames();
    for (const QString& one : all)
        for (const QString& other : all) {
            const bool isSameMark = one.startsWith("VeilkeepMenu") && other.endsWith("-symbolic");
            if (one >= other || isSameMark)
                continue;
            const QImage first = drawnImage::drawn(one, {16, 16});
            const QImage second = drawnImage::drawn(other, {16, 16});
            int differing = 0;
            for (int y = 0; y < 16; ++y)
                for (int x = 0; x < 16; ++x)
                    differing += first.pixel(x, y) != second.pixel(x, y) ? 1 : 0;
            EXPECT_GE(differing, 12) << one.toStdString() << " and " << other.toStdString();
        }
}

TEST_F(ProgramImages, AreUnderstoodWhollyByTheRenderer) {
    static QStringList told;
    told.clear();
    const auto before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& message) { told << message; });
    for (const QString& name : allNames())
        drawnImage::drawn(name, {42, 42});
    qInstallMessageHandler(before);
    EXPECT_TRUE(told.isEmpty()) << told.join('\n').toStdString();
}

TEST_F(ProgramImages, AreDrawnAnewForEachScale) {
    for (const qreal scale : {1.0, 1.5, 2.0}) {
        const QIcon icon = programImage::named("folder-pictures");
        const QSize pixels = QSize(42, 42) * scale;
        const QImage exact = drawnImage::drawn("folder-pictures", pixels);
        EXPECT_EQ(pixelsOf(icon, 42, scale), exact) << scale;

        QImage ground(pixels, QImage::Format_ARGB32_Premultiplied);
        ground.setDevicePixelRatio(scale);
        ground.fill(Qt::transparent);
        QPainter painter(&ground);
        icon.paint(&painter, QRect(0, 0, 42, 42));
        painter.end();
        ground.setDevicePixelRatio(1);
        EXPECT_EQ(ground, exact) << scale;
    }
}

TEST_F(ProgramImages, AreFaintWhileDisabled) {
    const QIcon icon = programImage::named("folder-generic");
    EXPECT_EQ(inkOf(pixelsOf(icon, 42, 1)).alpha(), 255);
    EXPECT_NEAR(inkOf(pixelsOf(icon, 42, 1, QIcon::Disabled)).alpha(), 102, 2);
}

TEST_F(ProgramImages, NoneIsMadeUp) {
    for (const QString name : {"", "nothing", "../images/add", "add.svg", "/images/add"}) {
        EXPECT_FALSE(programImage::exists(name)) << name.toStdString();
        EXPECT_TRUE(programImage::named(name).isNull()) << name.toStdString();
        EXPECT_TRUE(programImage::symbol(name).isNull()) << name.toStdString();
        EXPECT_TRUE(programImage::symbolPixmap(name, {16, 16}, 1, Qt::red).isNull()) << name.toStdString();
    }
}

TEST_F(ProgramImages, SymbolsTakeThePalettesColourWhenTheyAreDrawn) {
    const QIcon icon = programImage::symbol("clear");
    for (const auto& [text, faint, highlighted] :
         {std::tuple("#202124", "#a0a1a4", "#ffffff"), std::tuple("#e4e5e8", "#606266", "#101010")}) {
        QApplication::setPalette(paletteWith(text, faint, highlighted));
        EXPECT_EQ(inkOf(pixelsOf(icon, 16, 1)).name().toStdString(), text);
        EXPECT_EQ(inkOf(pixelsOf(icon, 16, 1, QIcon::Active)).name().toStdString(), text);
        EXPECT_EQ(inkOf(pixelsOf(icon, 16, 2, QIcon::Disabled)).name().toStdString(), faint);
        EXPECT_EQ(inkOf(pixelsOf(icon, 16, 2, QIcon::Selected)).name().toStdString(), highlighted);
    }
    const QPixmap ours = programImage::symbolPixmap("clear", {16, 16}, 2, QColor("#c03010"));
    EXPECT_EQ(inkOf(ours.toImage()).name(), "#c03010");
    EXPECT_EQ(ours.deviceIndependentSize(), QSizeF(16, 16));
}

TEST_F(ProgramImages, ButtonsThatAreShownFollowAChangeOfScheme) {
    QToolButton button;
    button.setIcon(programImage::symbol("clear"));
    button.setIconSize({32, 32});
    ASSERT_TRUE(showAndActivate(button));
    for (const QColor& text : {QColor("#00ff00"), QColor("#0000ff")}) {
        QApplication::setPalette(paletteWith(text, Qt::gray, Qt::white));
        settle();
        const QImage seen = button.grab().toImage();
        EXPECT_GT(partOf(seen, [&](const QColor& here) { return here == text; }), 0.1)
            << text.name().toStdString();
    }
}

} // namespace
} // namespace veilkeep
