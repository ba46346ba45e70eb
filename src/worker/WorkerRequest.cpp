#include "worker/WorkerRequest.h"

#include <string_view>

namespace veilkeep {

std::optional<WorkerRequest> WorkerRequest::parse(std::span<char* const> arguments) {
    if (arguments.empty())
        return std::nullopt;
    WorkerRequest request;
    std::optional<Operation> operation;
    for (const std::string_view argument : arguments.first(arguments.size() - 1)) {
        const auto isFirst = [&] { return !operation.has_value(); };
        if (argument == "-p")
            request.printAnswer = true;
        else if (argument == "-removeRecents")
            request.removeRecents = true;
        else if (argument == "-w")
            request.isHeld = true;
        else if (argument == "-i")
            request.mayAsk = true;
        else if (argument == "-hide" && isFirst())
            operation = Operation::Hide;
        else if (argument == "-unhide" && isFirst())
            operation = Operation::Unhide;
        else if (argument == "-rescue" && isFirst())
            operation = Operation::Rescue;
        else if (argument == "-restore" && isFirst())
            operation = Operation::Restore;
        else
            return std::nullopt;
    }
    if (!operation || (request.isHeld && *operation == Operation::Restore))
        return std::nullopt;
    request.operation = *operation;
    request.path = arguments.back();
    const bool mayBeOnInput = request.operation == Operation::Hide || request.operation == Operation::Unhide;
    if (request.path == "-" && mayBeOnInput && !request.isHeld) {
        request.pathIsOnInput = true;
        request.path.clear();
    } else if (!request.path.starts_with('/')) {
        return std::nullopt;
    }
    return request;
}

} // namespace veilkeep
