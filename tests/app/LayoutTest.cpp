// No text of any window is cut, in no language and with larger letters.

#include "tests/app/EveryWindow.h"
#include "tests/app/PseudoLanguage.h"

#include "widgets/controls/ElidedLabel.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QToolButton>

#include <algorithm>

namespace veilkeep::test {
namespace {

// Nothing: it has room.
QString missingRoom(const QLabel& label) {
    if (label.text().isEmpty() || qobject_cast<const ElidedLabel*>(&label))
        return {};
    if (label.wordWrap())
        return label.heightForWidth(label.width()) <= label.height() ? QString() : label.text();
    return label.sizeHint().width() <= label.width() ? QString() : label.text();
}

QString missingRoom(const QAbstractButton& button) {
    const auto* const tool = qobject_cast<const QToolButton*>(&button);
    if (button.text().isEmpty() || (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly))
        return {};
    return button.sizeHint().width() <= button.width() ? QString() : button.text();
}

QString missingRoom(const QHeaderView& header) {
    for (int section = 0; section < header.count(); ++section)
        if (!header.isSectionHidden(section) && header.sectionSizeHint(section) > header.sectionSize(section))
            return header.model()->headerData(section, header.orientation()).toString();
    return {};
}

QStringList cutTexts(const QWidget& window) {
    QStringList cut;
    const auto note = [&](const QWidget& widget, const QString& text) {
        if (!text.isEmpty())
            cut << QStringLiteral("%1 %2x%3: %4")
                       .arg(widget.metaObject()->className())
                       .arg(widget.width())
                       .arg(widget.height())
                       .arg(text);
    };
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible())
            continue;
        if (const auto* const label = qobject_cast<const QLabel*>(widget))
            note(*label, missingRoom(*label));
        else if (const auto* const button = qobject_cast<const QAbstractButton*>(widget))
            note(*button, missingRoom(*button));
        else if (const auto* const header = qobject_cast<const QHeaderView*>(widget))
            note(*header, missingRoom(*header));
    }
    return cut;
}

bool hasLetters(const QString& text) {
    return std::ranges::any_of(text, [](QChar character) { return character.isLetter(); });
}

// Texts of the program that the translations have not reached; names of items and groups are the user's.
QStringList untranslated(const QWidget& window) {
    QStringList found;
    for (const auto* const button : window.findChildren<QAbstractButton*>())
        if (hasLetters(button->text()) && !button->text().startsWith(u'['))
            found << button->text();
    if (const auto* const menu = qobject_cast<const QMenu*>(&window))
        for (const QAction* const action : menu->actions())
            if (!action->text().isEmpty() && !action->text().remove(u'&').startsWith(u'['))
                found << action->text();
    return found;
}

void lookForCutTexts(AppWorld& world, double largerLetters = 1, bool isPseudo = false) {
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * largerLetters);
    QApplication::setFont(font);
    ASSERT_TRUE(world.start());
    const QSize screen = world.window()->screen()->size();
    world.window()->resize((QSizeF(1120, 700) * largerLetters).toSize().boundedTo(screen));
    EveryWindow windows(world, [&](const std::string& name, QWidget& window) {
        EXPECT_EQ(cutTexts(window).join(u'\n').toStdString(), "") << name;
        EXPECT_TRUE(window.width() <= screen.width() && window.height() <= screen.height()) << name;
        if (isPseudo) {
            EXPECT_EQ(untranslated(window).join(u'\n').toStdString(), "") << name;
        }
        if (&window != world.window())
            return;
        const QSize usual = window.size();
        window.resize(1, 1);
        settle();
        EXPECT_TRUE(window.width() >= 640 && window.height() >= 400) << name;
        EXPECT_EQ(cutTexts(window).join(u'\n').toStdString(), "") << name << " at its smallest";
        window.resize(usual);
        settle();
    });
    windows.lookAtAll();
}

TEST(LayoutTest, NothingIsCutInGerman) {
    AppWorld world;
    world.app().translations().install({"de"});
    lookForCutTexts(world);
}

TEST(LayoutTest, NothingIsCutInSpanish) {
    AppWorld world;
    world.app().translations().install({"es"});
    lookForCutTexts(world);
}

TEST(LayoutTest, NothingIsCutInLargerLettersAndTheTranslationsReachEveryText) {
    AppWorld world;
    PseudoLanguage pseudo;
    ASSERT_TRUE(QCoreApplication::installTranslator(&pseudo));
    lookForCutTexts(world, 1.5, true);
}

} // namespace
} // namespace veilkeep::test
