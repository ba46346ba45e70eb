#include "core/names/NumberedName.h"

#include "core/base/Utf8.h"

namespace veilkeep {
namespace {

// With its dot; empty where there is none, as in ".profile" and "name.".
std::string_view extensionOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size())
        return {};
    return name.substr(dot);
}

std::string_view cutTo(std::string_view text, std::size_t length) {
    std::size_t end = 0;
    while (end < text.size()) {
        const std::size_t next = end + firstUtf8Character(text.substr(end)).length;
        if (next > length)
            break;
        end = next;
    }
    return text.substr(0, end);
}

} // namespace

std::string numberedName(std::string_view name, unsigned int number, bool isDirectory,
                         std::size_t longestName) {
    const std::string suffix = " " + std::to_string(number);
    std::string_view extension = isDirectory ? std::string_view() : extensionOf(name);
    if (extension.size() + suffix.size() >= longestName)
        extension = {}; // no extension, but the end of a sentence
    const std::string_view base = name.substr(0, name.size() - extension.size());
    const std::size_t room = longestName - extension.size() - suffix.size();
    return std::string(cutTo(base, room)) + suffix + std::string(extension);
}

std::string firstNumberedName(std::string_view name, bool isDirectory, std::size_t longestName,
                              const std::function<bool(const std::string& numbered)>& takes) {
    constexpr unsigned int firstNumber = 2, lastNumber = 9'999;
    std::string numbered;
    for (unsigned int number = firstNumber; number <= lastNumber; ++number)
        if (numbered = numberedName(name, number, isDirectory, longestName); takes(numbered))
            break;
    return numbered;
}

} // namespace veilkeep
