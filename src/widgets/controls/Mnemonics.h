#pragma once

#include <QString>

class QAction;
class QWidget;

namespace veilkeep {

// The title with "&" before the letter that chooses it: the first of a word, or else any, that is not among
// those taken; there it is added. What follows a tab is left alone, and "&" in the title is shown as it is.
QString withMnemonic(const QString& title, QString& taken);

// Every item of the menu or menu bar gets a letter of its own. Titles come without any.
void setTitle(QAction& action, const QString& title);
void assignMnemonics(const QWidget& menu);

// The same for the buttons and the names of fields below the widget, beside letters that are taken already.
void assignMnemonicsWithin(const QWidget& page, QString taken);

} // namespace veilkeep
