#include "tests/support/gui/RealInput.h"
#include "widgets/controls/FilterBar.h"
#include "widgets/controls/MessageBar.h"
#include "widgets/controls/OnOffSwitch.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <vector>

namespace veilkeep::test {
namespace {

struct SwitchWindow : QWidget {
    SwitchWindow() {
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(&first);
        layout->addWidget(&theSwitch);
        theSwitch.setAccessibleName("Hide the selection");
        QObject::connect(&theSwitch, &OnOffSwitch::switched,
                         [this](int value) { switched.push_back(value); });
    }
    QPushButton first{"First"};
    OnOffSwitch theSwitch;
    std::vector<int> switched;
};

TEST(OnOffSwitchTest, IsSwitchedByMouseKeysAndScreenReader) {
    SwitchWindow window;
    OnOffSwitch& theSwitch = window.theSwitch;
    ASSERT_TRUE(showAndActivate(window));
    realInput::click(theSwitch);
    EXPECT_EQ(theSwitch.value(), OnOffSwitch::On);
    realInput::click(window.first);
    realInput::key("Tab");
    ASSERT_TRUE(theSwitch.hasFocus());
    realInput::key("Space");
    EXPECT_EQ(theSwitch.value(), OnOffSwitch::Off);
    theSwitch.setValue(OnOffSwitch::Mixed);
    realInput::key("Space");
    EXPECT_EQ(theSwitch.value(), OnOffSwitch::On);
    QAccessibleActionInterface* const actions =
        QAccessible::queryAccessibleInterface(&theSwitch)->actionInterface();
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    actions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(window.switched, (std::vector{1, 0, 1, 0}));
    theSwitch.setEnabled(false);
    realInput::click(theSwitch);
    EXPECT_EQ(window.switched.size(), 4U);
}

TEST(FilterBarTest, IsChosenByMouseAndArrows) {
    FilterBar bar;
    std::vector<FilterBar::Filter> chosen;
    QObject::connect(&bar, &FilterBar::filterChosen,
                     [&](FilterBar::Filter filter) { chosen.push_back(filter); });
    ASSERT_TRUE(showAndActivate(bar));
    const auto buttons = bar.findChildren<QAbstractButton*>();
    ASSERT_EQ(buttons.size(), 4);
    realInput::click(*buttons[FilterBar::Visible]);
    EXPECT_EQ(bar.filter(), FilterBar::Visible);
    const std::pair<const char*, FilterBar::Filter> keys[] = {
        {"Right", FilterBar::Broken}, {"Right", FilterBar::Broken}, {"Left", FilterBar::Visible},
        {"Home", FilterBar::All},     {"Left", FilterBar::All},     {"Down", FilterBar::Hidden},
        {"End", FilterBar::Broken},   {"Up", FilterBar::Visible},
    };
    for (const auto& [key, filter] : keys) {
        realInput::key(key);
        EXPECT_EQ(bar.filter(), filter) << key;
        EXPECT_EQ(QApplication::focusWidget(), buttons[filter]) << key;
    }
    EXPECT_EQ(chosen.size(), 7U);
    bar.setFilter(FilterBar::All);
    EXPECT_EQ(chosen.size(), 7U);
    QAccessible::queryAccessibleInterface(buttons[FilterBar::Hidden])
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(chosen.back(), FilterBar::Hidden);
}

TEST(MessageBarTest, TellsAndActs) {
    const QString text = "Could not save to \"<b>Tom & Jerry</b>\".";
    MessageBar bar(MessageBar::Kind::Warning);
    int actions = 0, dismissals = 0;
    QObject::connect(&bar, &MessageBar::actionTriggered, [&] { ++actions; });
    QObject::connect(&bar, &MessageBar::dismissed, [&] { ++dismissals; });
    bar.setText(text);
    ASSERT_TRUE(showAndActivate(bar));
    auto* const action = bar.findChild<QPushButton*>();
    auto* const dismiss = bar.findChild<QToolButton*>();
    EXPECT_FALSE(action->isVisible());
    EXPECT_FALSE(dismiss->isVisible());
    bar.setActionText("Save & Close");
    bar.setDismissible(true);
    settle();
    EXPECT_EQ(bar.text(), text);
    for (const QLabel* const label : bar.findChildren<QLabel*>())
        EXPECT_TRUE(label->text().isEmpty() || label->textFormat() == Qt::PlainText);
    const QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&bar);
    EXPECT_EQ(accessible->role(), QAccessible::AlertMessage);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Warning: " + text);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(action)->text(QAccessible::Name), "Save & Close");
    EXPECT_FALSE(dismiss->accessibleName().isEmpty());
    realInput::click(*action);
    realInput::click(*dismiss);
    EXPECT_EQ(actions, 1);
    EXPECT_EQ(dismissals, 1);
    EXPECT_FALSE(bar.isVisible());
}

} // namespace
} // namespace veilkeep::test
