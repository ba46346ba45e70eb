#include "requests/RequestRules.h"

#include <algorithm>

namespace veilkeep {

std::span<const RequestRule> requestRules() {
    constexpr std::size_t any = RequestRule::anyNumber;
    static constexpr RequestRule rules[] = {
        {"add", RequestCommand::Add, true, true, 1, any, GroupUse::Optional},
        {"remove", RequestCommand::Remove, true, true, 1, any},
        {"hide", RequestCommand::Hide, true, true, 1, any, GroupUse::InsteadOfPaths},
        // What is hidden can always come back.
        {"unhide", RequestCommand::Unhide, true, false, 1, any, GroupUse::InsteadOfPaths},
        {"list", RequestCommand::List, true, false, 0, 0, GroupUse::Optional},
        {"status", RequestCommand::Status, false, false, 0, 0},
        {"check", RequestCommand::Check, true, true, 0, 0},
        {"locate", RequestCommand::Locate, true, true, 2, 2},
        {"restore", RequestCommand::Restore, true, true, 1, any},
        {"merge", RequestCommand::Merge, true, true, 1, 1},
        {"groups", RequestCommand::Groups, true, false, 0, 0},
        {"group", RequestCommand::Group, true, true, 0, 0},
        {"move", RequestCommand::Move, true, true, 1, any, GroupUse::Needed},
        {"autohide", RequestCommand::AutoHide, false, false, 0, 0}, // each item tells why it stays visible
        {"autounhide", RequestCommand::AutoUnhide, true, false, 0, 0},
    };
    return rules;
}

const RequestRule* requestRule(const QString& command) {
    const auto rule = std::ranges::find_if(
        requestRules(), [&](const RequestRule& each) { return command == QLatin1String(each.name); });
    return rule == requestRules().end() ? nullptr : &*rule;
}

bool isFromMenu(const Request& request) {
    const RequestRule* const rule = requestRule(request.command);
    return rule && rule->command == RequestCommand::Hide && !request.paths.empty() &&
           request.options.value(QLatin1String(requestOption::fromMenu)).toBool();
}

bool passesGate(const Request& request) {
    const RequestRule* const rule = requestRule(request.command);
    return rule && rule->passesGate && !isFromMenu(request);
}

} // namespace veilkeep
