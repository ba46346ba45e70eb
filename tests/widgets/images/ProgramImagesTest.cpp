#include "widgets/images/ProgramImages.h"
#include "widgets/controls/RowControls.h"
#include "widgets/images/DrawnImage.h"

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

QImage pixelsOf(const QIcon& icon, int size) {
    return icon.pixmap(QSize(size, size), 1).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

class ProgramImages : public ::testing::Test {
protected:
    ~ProgramImages() override { QApplication::setPalette(QPalette()); }
};

TEST_F(ProgramImages, HaveSomethingToShowOnLightAndOnDark) {
    for (const QString& name : allNames())
        for (const int size : {16, 22, 42, 128})
            for (const QColor& ground : {QColor("#ffffff"), QColor("#ececee"), QColor("#1c1d20")}) {
                const QImage seen = onGround(pixelsOf(programImage::named(name), size), ground);
                const double part =
                    partOf(seen, [&](const QColor& here) { return contrastRatio(here, ground) >= 2; });
                EXPECT_GE(part, 0.04)
                    << name.toStdString() << " at " << size << " on " << ground.name().toStdString();
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

TEST_F(ProgramImages, ButtonsThatAreShownFollowAChangeOfScheme) {
    QToolButton button;
    button.setIcon(programImage::symbol("clear"));
    button.setIconSize({32, 32});
    ASSERT_TRUE(showAndActivate(button));
    for (const QColor& text : {QColor("#00ff00"), QColor("#0000ff")}) {
        QPalette palette;
        palette.setColor(QPalette::WindowText, text);
        QApplication::setPalette(palette);
        settle();
        const QImage seen = button.grab().toImage();
        EXPECT_GT(partOf(seen, [&](const QColor& here) { return here == text; }), 0.1)
            << text.name().toStdString();
    }
}

} // namespace
} // namespace veilkeep
