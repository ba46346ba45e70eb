#include "tests/app/AppWorld.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

constexpr const char* prompt = "Enter your Veilkeep password:";

// Counts what happens to a widget.
class EventCount : public QObject {
public:
    EventCount(QWidget& widget, QEvent::Type type, std::function<void()> then = {})
        : m_type(type), m_then(std::move(then)) {
        widget.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == m_type && ++count == 1 && m_then)
            m_then();
        return false;
    }
    int count = 0;

private:
    const QEvent::Type m_type;
    const std::function<void()> m_then;
};

void enter(const QString& password) {
    realInput::key("Ctrl+A");
    realInput::type(password);
    realInput::key("Return");
}

TEST(PasswordTest, TheRightEntryShowsTheWindowAndThenTheAutoHideItems) {
    AppWorld::setPassword("secret");
    AppWorld world;
    const auto enterIt = [](QWidget&) { enter("secret"); };
    world.whenOpen(prompt, enterIt);
    ASSERT_TRUE(world.start());
    const std::string path = world.addFileToGroup("diary", "AutoHide Group"),
                      other = world.addFileToGroup("other", "Private Files");
    world.clickRow("other", AppWorld::Part::Switch);
    EXPECT_TRUE(world.isHidden(other));
    realInput::key("Ctrl+H");
    ASSERT_TRUE(world.isHidden(path));
    world.parts().list.window().hideWindow();

    bool wasHiddenBefore = false;
    const EventCount shows(*world.window(), QEvent::Show,
                           [&] { wasHiddenBefore = world.isHiddenOnDisk(path); });
    world.whenOpen(prompt, enterIt);
    world.app().showVeilkeep();
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(world.window()->isVisible());
    EXPECT_TRUE(wasHiddenBefore) << "the window comes first";
    EXPECT_TRUE(world.isShown(path));
    EXPECT_TRUE(world.isHiddenOnDisk(other));
    world.expectKeysToArrive();
}

TEST(PasswordTest, ACancelledPromptAddsNothing) {
    AppWorld::setPassword("secret");
    const std::string path = appScratch().makeFile("home/Docs/letter");
    StartOptions options;
    options.toOpen.paths = {path};
    AppWorld world(options);
    const auto cancel = [](QWidget&) { realInput::key("Escape"); };
    world.whenOpen(prompt, cancel);
    ASSERT_TRUE(world.start());
    EXPECT_TRUE(world.areAllAnswered());
    settle();
    EXPECT_FALSE(world.openDialog(prompt)) << "asked again";
    world.whenOpen(prompt, cancel);
    world.app().openFiles({path});
    EXPECT_TRUE(world.areAllAnswered());
    settle();
    EXPECT_EQ(world.files().files().size(), 0U);
    EXPECT_FALSE(world.parts().window.isVisible());
}

} // namespace
} // namespace veilkeep::test
