#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

// What a comment in an entry says of it: "com.ostrel.Veilkeep VERSION DIRECTORIES DIGEST".
struct EntryMark {
    std::string version;
    int directories = 0; // so many of those that the file lies in were made for it, from the innermost on
    std::string digest;

    std::string text() const;
    static std::optional<EntryMark> ofText(std::string_view text);
};

// A file that is ours alone, with its mark in a line of its own. The digest is that of the content with the
// placeholder in the mark's place, and tells whether somebody changed it since.
struct MarkedContent {
    static constexpr std::string_view placeholder = "@MARK@";

    EntryMark mark;
    std::string unmarked;
    bool isUnchanged() const;

    static std::string written(const std::string& unmarked, EntryMark mark);
    static std::optional<MarkedContent> of(const std::string& content); // nothing: it is none of ours
};

} // namespace veilkeep
