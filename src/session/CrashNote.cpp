#include "session/CrashNote.h"

#include "core/log/TimeText.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <sstream>

namespace veilkeep {
namespace {

constexpr const char* beginningOfVersion = "version ";

struct Module {
    std::uintptr_t begin = 0, end = 0, offset = 0;
    std::string name;
};

std::string hexadecimal(std::uintptr_t number) {
    char text[24];
    std::snprintf(text, sizeof text, "0x%jx", static_cast<std::uintmax_t>(number));
    return text;
}

std::string frameText(std::uintptr_t frame, const std::vector<Module>& modules) {
    for (const Module& module : modules)
        if (frame >= module.begin && frame < module.end)
            return module.name + "(+" + hexadecimal(frame - module.begin + module.offset) + ")";
    return hexadecimal(frame);
}

std::string restOf(std::istringstream& line) {
    std::string rest;
    std::getline(line >> std::ws, rest);
    return rest;
}

} // namespace

std::string CrashNote::beginning() {
    return std::string(beginningOfVersion) + VEILKEEP_VERSION + "\n";
}

CrashNote CrashNote::parse(std::string_view text) {
    CrashNote note;
    std::vector<std::uintptr_t> frames;
    std::vector<Module> modules;
    std::istringstream lines{std::string(text)};
    for (std::string whole; std::getline(lines, whole);) {
        std::istringstream line(whole);
        std::string what;
        line >> what;
        if (what == "version") {
            note.version = restOf(line);
        } else if (what == "signal") {
            line >> note.signal;
        } else if (std::int64_t seconds = 0; what == "time" && line >> seconds) {
            note.time = timeText(TimePoint(std::chrono::seconds(seconds)));
        } else if (what == "exception") {
            note.exception = restOf(line);
        } else if (what == "frames") {
            for (std::uintptr_t frame = 0; line >> std::hex >> frame;)
                frames.push_back(frame);
        } else if (Module module;
                   what == "module" && line >> std::hex >> module.begin >> module.end >> module.offset) {
            module.name = restOf(line);
            modules.push_back(module);
        }
    }
    for (const std::uintptr_t frame : frames)
        note.stack.push_back(frameText(frame, modules));
    return note;
}

std::string CrashNote::reason() const {
    const char* const name = ::sigabbrev_np(signal);
    const char* const description = ::sigdescr_np(signal);
    std::string text = exception.empty() ? std::string() : exception + ", ";
    text += name ? std::string("SIG") + name : "signal " + std::to_string(signal);
    if (description)
        text += std::string(" (") + description + ")";
    return text + ", version " + version + ", " + time;
}

} // namespace veilkeep
