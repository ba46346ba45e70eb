#include "tests/support/gui/RealInput.h"
#include "widgets/controls/FilterBar.h"
#include "widgets/controls/MessageBar.h"
#include "widgets/controls/OnOffSwitch.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QToolButton>

#include <vector>

namespace veilkeep::test {
namespace {

TEST(OnOffSwitchTest, IsSwitchedByKeysAndScreenReader) {
    OnOffSwitch theSwitch;
    std::vector<int> switched;
    QObject::connect(&theSwitch, &OnOffSwitch::switched, [&](int value) { switched.push_back(value); });
    ASSERT_TRUE(showAndActivate(theSwitch));
    theSwitch.setFocus();
    realInput::key("Space");
    theSwitch.setValue(OnOffSwitch::Mixed);
    realInput::key("Space");
    EXPECT_EQ(theSwitch.value(), OnOffSwitch::On);
    QAccessibleActionInterface* const actions =
        QAccessible::queryAccessibleInterface(&theSwitch)->actionInterface();
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    actions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(switched, (std::vector{1, 1, 0}));
}

TEST(FilterBarTest, IsChosenByArrowsAndScreenReader) {
    FilterBar bar;
    std::vector<FilterBar::Filter> chosen;
    QObject::connect(&bar, &FilterBar::filterChosen,
                     [&](FilterBar::Filter filter) { chosen.push_back(filter); });
    ASSERT_TRUE(showAndActivate(bar));
    const auto buttons = bar.findChildren<QAbstractButton*>();
    ASSERT_EQ(buttons.size(), 4);
    buttons[FilterBar::All]->setFocus();
    for (const auto& [key, filter] : {std::pair("End", FilterBar::Broken),
                                      {"Right", FilterBar::Broken},
                                      {"Left", FilterBar::Visible},
                                      {"Home", FilterBar::All}}) {
        realInput::key(key);
        EXPECT_EQ(bar.filter(), filter) << key;
        EXPECT_EQ(QApplication::focusWidget(), buttons[filter]) << key;
    }
    EXPECT_EQ(chosen.size(), 3U);
    bar.setFilter(FilterBar::Broken);
    EXPECT_EQ(chosen.size(), 3U);
    QAccessible::queryAccessibleInterface(buttons[FilterBar::Hidden])
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(chosen.back(), FilterBar::Hidden);
}

TEST(MessageBarTest, IsReadOutAndHidesWhenDismissed) {
    const QString text = "Could not save to \"<b>Tom & Jerry</b>\".";
    MessageBar bar(MessageBar::Kind::Warning);
    bar.setText(text);
    bar.setDismissible(true);
    ASSERT_TRUE(showAndActivate(bar));
    for (const QLabel* const label : bar.findChildren<QLabel*>())
        EXPECT_TRUE(label->text().isEmpty() || label->textFormat() == Qt::PlainText);
    const QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&bar);
    EXPECT_EQ(accessible->role(), QAccessible::AlertMessage);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Warning: " + text);
    realInput::click(*bar.findChild<QToolButton*>());
    EXPECT_FALSE(bar.isVisible());
}

} // namespace
} // namespace veilkeep::test
