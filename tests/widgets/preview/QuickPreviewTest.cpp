// The quick preview panel, by its keys.

#include "widgets/preview/QuickPreview.h"
#include "tests/support/ListWorld.h"
#include "tests/support/gui/RealInput.h"
#include "tests/widgets/preview/PreviewFiles.h"
#include "widgets/preview/PictureView.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>

namespace veilkeep {
namespace {

using namespace veilkeep::test;

class QuickPreviewPanel : public ::testing::Test {
protected:
    QuickPreviewPanel() {
        m_window.resize(800, 600);
        EXPECT_TRUE(showAndActivate(m_window));
        picture = add("picture.png", previewFiles::image("png", {400, 200}));
        text = add("notes.txt", "<b>first</b> line");
        song = add("song & dance.mp3", "ID3");
    }

    ListedFile add(const std::string& name, const std::string& content) {
        return m_world.add(m_tree.makeFile(name, content));
    }

    void open(const std::vector<ListedFile>& files) {
        select(files);
        m_quick.toggle();
        ASSERT_TRUE(eventually([&] { return m_quick.panel()->isActiveWindow(); }));
    }

    void select(const std::vector<ListedFile>& files) {
        m_world.list->filesController().setSelectedObjects(files);
    }

    bool shows(const QString& wanted) {
        return eventually([&] {
            for (const QLabel* const label : m_quick.panel()->findChildren<QLabel*>())
                if (label->isVisible() && label->text() == wanted)
                    return true;
            return false;
        });
    }

    bool showsPicture() {
        return eventually([&] { return m_quick.panel()->findChild<PictureView*>()->isVisible(); });
    }

    bool showsText(const QString& wanted) {
        auto* const edit = m_quick.panel()->findChild<QPlainTextEdit*>();
        return eventually([&] { return edit->isVisible() && edit->toPlainText() == wanted; });
    }

    bool closes() {
        return eventually([&] { return !m_quick.isVisible(); });
    }

    QPushButton* openButton() const { return m_quick.panel()->findChild<QPushButton*>(); }

    ScratchTree m_tree;
    ListWorld m_world;
    QWidget m_window;
    Previews m_previews{m_world.list->files()};
    QuickPreview m_quick{*m_world.list, m_previews, m_window};
    ListedFile picture, text, song;
};

TEST_F(QuickPreviewPanel, GoesThroughTheSelectionByKeys) {
    open({song, picture, text}); // comes in the order of the rows
    EXPECT_TRUE(shows(QStringLiteral("1 of 3")));
    EXPECT_TRUE(showsPicture());
    EXPECT_EQ(m_quick.panel()->windowTitle(), QStringLiteral("picture.png"));
    realInput::key(QStringLiteral("Right"));
    EXPECT_TRUE(shows(QStringLiteral("2 of 3")));
    EXPECT_TRUE(showsText(QStringLiteral("<b>first</b> line")));
    realInput::key(QStringLiteral("Right"));
    EXPECT_TRUE(shows(QStringLiteral("song & dance.mp3")));
    EXPECT_TRUE(shows(QStringLiteral("MP3 audio")));
    realInput::key(QStringLiteral("Right"));
    EXPECT_TRUE(shows(QStringLiteral("3 of 3"))) << "the last one stays";
}

TEST_F(QuickPreviewPanel, SpaceClosesItEvenFromItsText) {
    open({text});
    ASSERT_TRUE(showsText(QStringLiteral("<b>first</b> line")));
    m_quick.panel()->findChild<QPlainTextEdit*>()->setFocus();
    realInput::key(QStringLiteral("Space"));
    EXPECT_TRUE(closes());
}

TEST_F(QuickPreviewPanel, FollowsTheSelectionAndKeepsWhatStaysSelected) {
    open({picture, text});
    realInput::key(QStringLiteral("Right"));
    select({text, song});
    EXPECT_TRUE(shows(QStringLiteral("1 of 2")));
    EXPECT_EQ(m_quick.panel()->windowTitle(), QStringLiteral("notes.txt"));
    select({song});
    EXPECT_TRUE(shows(QStringLiteral("MP3 audio")));
    select({});
    EXPECT_TRUE(shows(QStringLiteral("Nothing is selected")));
}

TEST_F(QuickPreviewPanel, HiddenItemsAreShownInPlaceAndBrokenOnesAreNotFound) {
    open({text});
    ASSERT_TRUE(showsText(QStringLiteral("<b>first</b> line")));
    EXPECT_TRUE(openButton()->isEnabled());
    ASSERT_TRUE(m_world.list->hideFiles({text}, false));
    EXPECT_TRUE(shows(QStringLiteral("plain text document · 4 KB · Hidden")));
    EXPECT_TRUE(showsText(QStringLiteral("<b>first</b> line")));
    EXPECT_FALSE(openButton()->isEnabled());
    m_world.list->files().change(song, [&](File& file) {
        file.setPath(m_tree.path("gone.mp3"));
        file.setState(File::Broken);
    });
    select({song});
    EXPECT_TRUE(shows(QStringLiteral("Not found")));
}

TEST_F(QuickPreviewPanel, LeavesOtherKeysToTheTable) {
    std::vector<int> keys;
    QObject::connect(&m_quick, &QuickPreview::keyPressed,
                     [&](QKeyEvent* event) { keys.push_back(event->keyCombination().toCombined()); });
    open({picture, text});
    for (const char* key : {"Down", "Up", "Ctrl+Right", "Ctrl+Left"})
        realInput::key(QLatin1String(key));
    const std::vector<int> wanted{Qt::Key_Down, Qt::Key_Up,
                                  QKeyCombination(Qt::CTRL, Qt::Key_Right).toCombined(),
                                  QKeyCombination(Qt::CTRL, Qt::Key_Left).toCombined()};
    EXPECT_TRUE(eventually([&] { return keys.size() >= wanted.size(); }));
    EXPECT_EQ(keys, wanted);
    EXPECT_TRUE(shows(QStringLiteral("1 of 2")));
}

TEST_F(QuickPreviewPanel, ItsButtonsWorkByMouseAndKeyboardAndHaveNames) {
    ListedFile opened;
    QObject::connect(&m_quick, &QuickPreview::openRequested, [&](const ListedFile& file) { opened = file; });
    open({picture, text});
    for (const QAbstractButton* const button : m_quick.panel()->findChildren<QAbstractButton*>()) {
        const auto* const told = QAccessible::queryAccessibleInterface(const_cast<QAbstractButton*>(button));
        EXPECT_FALSE(told->text(QAccessible::Name).isEmpty());
    }
    openButton()->setFocus();
    realInput::key(QStringLiteral("Right")); // with the focus on a button
    EXPECT_TRUE(shows(QStringLiteral("2 of 2")));
    realInput::key(QStringLiteral("Space"));
    EXPECT_TRUE(eventually([&] { return opened == text; })) << "space presses the button that has the focus";
    EXPECT_TRUE(m_quick.isVisible());
    realInput::key(QStringLiteral("Escape"));
    EXPECT_TRUE(closes());
}

} // namespace
} // namespace veilkeep
