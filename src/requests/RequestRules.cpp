#include "requests/RequestRules.h"

#include <algorithm>

namespace veilkeep {

std::span<const RequestRule> requestRules() {
    constexpr std::size_t any = RequestRule::anyNumber;
    static constexpr RequestRule rules[] = {
        {"add", RequestCommand::Add, true, true, 1, any},
        {"remove", RequestCommand::Remove, true, true, 1, any},
        {"hide", RequestCommand::Hide, true, true, 1, any},
        {"unhide", RequestCommand::Unhide, true, false, 1, any}, // what is hidden can always come back
        {"list", RequestCommand::List, true, false, 0, 0},
        {"status", RequestCommand::Status, false, false, 0, 0},
        {"check", RequestCommand::Check, true, true, 0, 0},
        {"locate", RequestCommand::Locate, true, true, 2, 2},
        {"restore", RequestCommand::Restore, true, true, 1, any},
        {"merge", RequestCommand::Merge, true, true, 1, 1},
    };
    return rules;
}

const RequestRule* requestRule(const QString& command) {
    const auto rule = std::ranges::find_if(
        requestRules(), [&](const RequestRule& each) { return command == QLatin1String(each.name); });
    return rule == requestRules().end() ? nullptr : &*rule;
}

} // namespace veilkeep
