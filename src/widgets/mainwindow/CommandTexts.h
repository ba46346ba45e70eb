#pragma once

#include "widgets/mainwindow/Commands.h"

#include <QAction>
#include <QKeySequence>
#include <QList>
#include <QString>

namespace veilkeep {

// The titles of menu items as long as nobody gives others, and their keys.
QString commandTitle(Command command);
QList<QKeySequence> commandShortcuts(Command command);

// A key that the views listen to themselves, shown in the menu all the same; null for none.
QKeySequence keyOfViews(Command command);

QAction::MenuRole commandRole(Command command);

} // namespace veilkeep
