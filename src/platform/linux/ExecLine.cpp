#include "platform/linux/ExecLine.h"

#include "core/base/Utf8.h"
#include "platform/linux/GObjectPointer.h"

#include <algorithm>
#include <memory>

namespace veilkeep {
namespace {

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;

struct KeyFileFree {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
};

struct WordsFree {
    void operator()(char** words) const { g_strfreev(words); }
};

bool isPlain(char byte) {
    return g_ascii_isalnum(byte) || std::string_view("/._+-,:@").find(byte) != std::string_view::npos;
}

std::string quoted(const std::string& path) {
    if (std::ranges::all_of(path, isPlain))
        return path;
    std::string word = "\"";
    for (const char byte : path) {
        if (std::string_view("\"`$\\").find(byte) != std::string_view::npos)
            word += '\\';
        word += byte;
    }
    return word + '"';
}

// As all values of key files are.
std::string escaped(const std::string& text) {
    std::string value;
    for (const char byte : text)
        switch (byte) {
        case '\\':
            value += "\\\\";
            break;
        case '\n':
            value += "\\n";
            break;
        case '\r':
            value += "\\r";
            break;
        case '\t':
            value += "\\t";
            break;
        default:
            value += byte;
        }
    return value;
}

std::string replaced(const std::string& text, std::string_view from, std::string_view to) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const bool isThere = std::string_view(text).substr(at).starts_with(from);
        result += isThere ? to : std::string_view(text).substr(at, 1);
        at += isThere ? from.size() : 1;
    }
    return result;
}

bool isTrue(GKeyFile* file, const char* key, bool whenAbsent) {
    GError* error = nullptr;
    const bool value = g_key_file_get_boolean(file, group, key, &error);
    const GErrorPointer absent(error);
    return absent ? whenAbsent : value;
}

// The first word that is neither "env" nor a variable that it sets.
std::string programAmong(const char* const* words) {
    if (std::string_view(words[0]) == "env" || std::string_view(words[0]).ends_with("/env"))
        for (++words; *words && std::string_view(*words).find('=') != std::string_view::npos; ++words) {
        }
    return *words ? replaced(*words, "%%", "%") : std::string();
}

std::string programOf(GKeyFile* file) {
    const GText exec(g_key_file_get_string(file, group, G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr));
    char** list = nullptr;
    if (!exec || !g_shell_parse_argv(exec.get(), nullptr, &list, nullptr))
        return {};
    const std::unique_ptr<char*, WordsFree> words(list);
    const std::string program = programAmong(list);
    if (program.find('/') != std::string::npos)
        return program;
    const GText found(g_find_program_in_path(program.c_str()));
    return found ? found.get() : std::string();
}

} // namespace

// GLib looks whether the first word exists before it takes "%%" for "%".
Result<std::string> execWord(const std::string& program, FieldCodes codes) {
    const bool needsEnv = codes == FieldCodes::Known && program.find('%') != std::string::npos;
    if (!isWellFormedUtf8(program) || (needsEnv && program.find('=') != std::string::npos))
        return Error{ErrorCode::InvalidArgument, "write Exec", program, 0};
    return needsEnv ? "/usr/bin/env " + escaped(quoted(replaced(program, "%", "%%")))
                    : escaped(quoted(program));
}

Result<std::string> unitWord(const std::string& program) {
    if (!isWellFormedUtf8(program))
        return Error{ErrorCode::InvalidArgument, "write ExecStart", program, 0};
    if (std::ranges::all_of(program, isPlain))
        return program;
    std::string word = "\"";
    for (const char byte : program) {
        if (std::string_view("\"\\").find(byte) != std::string_view::npos)
            word += '\\';
        if (byte == '%')
            word += byte;
        word += byte;
    }
    return replaced(word, "\n", "\\n") + '"';
}

Result<std::string> entryText(const std::string& path) {
    if (!isWellFormedUtf8(path))
        return Error{ErrorCode::InvalidArgument, "write a path", path, 0};
    return escaped(path);
}

std::optional<StartingEntry> startingEntry(std::string_view content) {
    const std::unique_ptr<GKeyFile, KeyFileFree> file(g_key_file_new());
    if (!g_key_file_load_from_data(file.get(), content.data(), content.size(), G_KEY_FILE_NONE, nullptr) ||
        !g_key_file_has_group(file.get(), group))
        return std::nullopt;
    const bool isOn = !isTrue(file.get(), G_KEY_FILE_DESKTOP_KEY_HIDDEN, false) &&
                      isTrue(file.get(), "X-GNOME-Autostart-enabled", true);
    return StartingEntry{programOf(file.get()), isOn};
}

} // namespace veilkeep
