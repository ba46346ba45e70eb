#include "widgets/controls/Mnemonics.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QWidget>

namespace veilkeep {
namespace {

constexpr const char* titleProperty = "veilkeepTitle";

bool isTaken(QChar letter, const QString& taken) {
    return !letter.isLetterOrNumber() || letter.isSurrogate() || taken.contains(letter, Qt::CaseInsensitive);
}

qsizetype placeOfMnemonic(const QString& title, const QString& taken) {
    const qsizetype end =
        title.indexOf(QLatin1Char('\t')) < 0 ? title.size() : title.indexOf(QLatin1Char('\t'));
    qsizetype within = -1;
    for (qsizetype place = 0; place < end; ++place) {
        if (isTaken(title[place], taken))
            continue;
        if (place == 0 || !title[place - 1].isLetterOrNumber())
            return place;
        within = within < 0 ? place : within;
    }
    return within;
}

QString doubled(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

QString withMnemonic(const QString& title, QString& taken) {
    const qsizetype place = placeOfMnemonic(title, taken);
    if (place < 0)
        return doubled(title);
    taken += title[place];
    return doubled(title.left(place)) + QLatin1Char('&') + doubled(title.mid(place));
}

void setTitle(QAction& action, const QString& title) {
    action.setProperty(titleProperty, title);
}

void assignMnemonics(const QWidget& menu) {
    QString taken;
    for (QAction* const action : menu.actions()) {
        const QString title = action->property(titleProperty).toString();
        if (!title.isEmpty() && action->isVisible())
            action->setText(withMnemonic(title, taken));
    }
}

void assignMnemonicsWithin(const QWidget& page, QString taken) {
    const auto plain = [](QString text) { return text.remove(QLatin1Char('&')); };
    for (QWidget* const widget : page.findChildren<QWidget*>()) {
        auto* const label = qobject_cast<QLabel*>(widget);
        if (auto* const button = qobject_cast<QAbstractButton*>(widget))
            button->setText(withMnemonic(plain(button->text()), taken));
        else if (label && label->buddy())
            label->setText(withMnemonic(plain(label->text()), taken));
    }
}

} // namespace veilkeep
