#include "platform/linux/filemanagers/EntryTemplate.h"

namespace veilkeep {

std::string filledTemplate(const std::string& text, const std::map<std::string, std::string>& values) {
    std::string filled;
    std::size_t done = 0;
    for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at + 1)) {
        const std::size_t end = text.find('@', at + 1);
        if (end == std::string::npos)
            break;
        const auto value = values.find(text.substr(at + 1, end - at - 1));
        if (value == values.end())
            continue;
        filled += text.substr(done, at - done) + value->second;
        done = end + 1;
        at = end;
    }
    return filled + text.substr(done);
}

} // namespace veilkeep
