#include "app/StartOptions.h"

#include "core/base/FileUri.h"
#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "format/PrintableName.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

// "scheme:" as RFC 3986 writes it, of two letters or more.
bool hasScheme(std::string_view argument) {
    const auto isLetter = [](char each) {
        return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z');
    };
    const auto mayFollow = [&](char each) {
        return isLetter(each) || (each >= '0' && each <= '9') || each == '+' || each == '-' || each == '.';
    };
    const std::size_t colon = argument.find(':');
    return colon != std::string_view::npos && colon >= 2 && isLetter(argument[0]) &&
           std::ranges::all_of(argument.substr(0, colon), mayFollow);
}

std::string currentDirectory() {
    std::error_code gone;
    return std::filesystem::current_path(gone).string();
}

void take(std::string_view argument, StartOptions& options) {
    if (argument.starts_with('/'))
        options.toOpen.paths.emplace_back(argument);
    else if (const auto path = pathOfFileUri(argument))
        options.toOpen.paths.push_back(*path);
    else if (std::string here = joinPath(currentDirectory(), std::string(argument));
             !hasScheme(argument) || itemExistsAt(here)) // names may hold colons
        options.toOpen.paths.push_back(std::move(here));
    else
        options.toOpen.links.push_back(
            QString::fromUtf8(argument.data(), static_cast<qsizetype>(argument.size())));
}

} // namespace

std::variant<StartOptions, std::string> StartOptions::parse(std::span<char* const> arguments) {
    StartOptions options;
    bool areOptionsOver = false;
    for (const std::string_view argument : arguments) {
        options.arguments += (options.arguments.empty() ? "" : " ") + std::string(argument);
        if (areOptionsOver || !argument.starts_with('-') || argument == "-")
            take(argument, options);
        else if (argument == "--")
            areOptionsOver = true;
        else if (argument == "--login")
            options.byLogin = true;
        else if (argument == "--service")
            options.asService = true;
        else if (argument == "--hide")
            options.mode = Mode::Hide;
        else if (argument == "--show")
            options.toOpen.shows = true;
        else if (argument == "--self-test")
            options.mode = Mode::SelfTest;
        else if (argument == "--version")
            options.mode = Mode::Version;
        else if (argument == "--help" || argument == "-h")
            options.mode = Mode::Help;
        else
            return "unknown option " + quotedName(argument);
    }
    return options;
}

const char* StartOptions::helpText() {
    return "usage: veilkeep [--login] [FILE|URL]...\n"
           "       veilkeep --hide | --show [--] FILE|URL...\n"
           "       veilkeep --self-test | --version | --help\n"
           "\n"
           "Hides files and folders from ordinary view and brings them back.\n"
           "\n"
           "  --login      stays in the background, as at the start of a session\n"
           "  --hide       hides the items, and says in a window what could not be hidden\n"
           "  --show       shows the items in the window; those that are not in the list are added to it\n"
           "  --self-test  looks whether everything that Veilkeep needs is there, and says so\n"
           "  --version    prints the version\n"
           "\n"
           "A second start shows the window of the first one. veilkeepctl does the same work without "
           "windows,\n"
           "\"veilkeepctl doctor\" says what of this desktop will not work and what to install, and\n"
           "\"veilkeepctl rescue\" brings back all that is hidden below a folder, listed or not.\n";
}

} // namespace veilkeep
