#pragma once

#include "platform/OpenRequest.h"

#include <QString>

#include <span>
#include <string>
#include <variant>

namespace veilkeep {

// What the program was started with. Hide: toOpen says what; it is not opened.
struct StartOptions {
    enum class Mode { Normal, Hide, SelfTest, Version, Help };

    Mode mode = Mode::Normal;
    bool byLogin = false;   // --login: the session started it; no window
    bool asService = false; // --service: a message bus did, which says itself what is wanted

    bool isRelaunch = false;    // goes on where a former process ended
    std::string arguments = {}; // all of them, for the log
    OpenRequest toOpen = {};
    QString activationToken = {}; // by which the desktop lets the window come to the front

    bool opensWindow() const { return !byLogin && !asService; }

    // The arguments without the program's name, or what is wrong with them. Relative paths are those of the
    // current directory.
    static std::variant<StartOptions, std::string> parse(std::span<char* const> arguments);
    static const char* helpText();
};

} // namespace veilkeep
