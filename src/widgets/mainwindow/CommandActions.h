#pragma once

#include "widgets/mainwindow/Commands.h"

#include <QObject>

#include <map>

class QAction;

namespace veilkeep {

// One QAction for each command that there is; menus and toolbar show them. Owned by the main window; main
// thread.
class CommandActions : public QObject {
    Q_OBJECT

public:
    explicit CommandActions(CommandTarget& target); // not owned

    QAction* action(Command command); // null where there is no such command
    void validate();                  // all that were made
    void run(Command command);        // unless it may not be run now

signals:
    void validated(); // titles may have changed

private:
    void validate(Command command, QAction& action) const;

    CommandTarget& m_target;
    std::map<Command, QAction*> m_actions;
};

} // namespace veilkeep
