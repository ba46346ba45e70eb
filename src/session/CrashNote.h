#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// What a run leaves behind: nothing but its version while it goes on, and what it ended with where that was a
// crash. Its text is written by crashHandler.
struct CrashNote {
    static std::string beginning(); // of a run of this version

    static constexpr std::size_t maximumSize = 64 << 10; // of its text

    // Whatever the text is; what it does not say is empty.
    static CrashNote parse(std::string_view text);

    bool isOfCrash() const { return signal != 0; }
    std::string reason() const; // "SIGSEGV (Segmentation fault), version 0.1.0, 2026-01-31T12:00:00Z"

    std::string version;
    int signal = 0;
    std::string time;               // "2026-01-31T12:00:00Z"
    std::string exception;          // the name of its type, where one ended the program
    std::vector<std::string> stack; // "libc.so.6(+0x3bfd0)"
};

} // namespace veilkeep
