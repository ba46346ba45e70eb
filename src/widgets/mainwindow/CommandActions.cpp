#include "widgets/mainwindow/CommandActions.h"

#include "widgets/controls/Mnemonics.h"
#include "widgets/mainwindow/CommandTexts.h"

#include <QAction>

namespace veilkeep {
namespace {

// The label of the toolbar, with "…" where a dialog follows, and the key that a view listens to.
QString menuTitle(Command command, const QString& label) {
    const QString title = command == Command::Password ? label + QChar(u'…') : label;
    const QKeySequence key = keyOfViews(command);
    return key.isEmpty() ? title : title + QLatin1Char('\t') + key.toString(QKeySequence::NativeText);
}

} // namespace

CommandActions::CommandActions(CommandTarget& target) : m_target(target) {}

QAction* CommandActions::action(Command command) {
    if (const auto known = m_actions.find(command); known != m_actions.end())
        return known->second;
    if (!m_target.exists(command))
        return nullptr;
    auto* const action = new QAction(this);
    action->setShortcuts(commandShortcuts(command));
    action->setMenuRole(commandRole(command));
    action->setIconVisibleInMenu(false);
    connect(action, &QAction::triggered, this, [this, command] { run(command); });
    m_actions.emplace(command, action);
    validate(command, *action);
    return action;
}

void CommandActions::run(Command command) {
    if (m_target.exists(command) && m_target.validate(command).isEnabled)
        m_target.perform(command);
    validate();
}

void CommandActions::validate() {
    for (const auto& [command, action] : m_actions)
        validate(command, *action);
    emit validated();
}

void CommandActions::validate(Command command, QAction& action) const {
    const CommandState state = m_target.validate(command);
    if (!state.title.isNull() || action.iconText().isEmpty()) {
        const QString label = state.title.isNull() ? commandTitle(command) : state.title;
        setTitle(action, menuTitle(command, label));
        action.setIconText(label);
    }
    if (!state.toolTip.isNull())
        action.setToolTip(state.toolTip);
    action.setEnabled(state.isEnabled);
    action.setCheckable(state.isChecked.has_value());
    action.setChecked(state.isChecked.value_or(false));
}

} // namespace veilkeep
