#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// How a hidden item is named. Names are the bytes of one path component and need not be UTF-8.
namespace veilkeep {

inline constexpr std::string_view hiddenDirectoryName = ".SYS_INDEX";

// File systems that count characters allow more bytes, but no call may rely on that.
inline constexpr std::size_t longestFileName = 255;

// The base reversed by UTF-16 code units, the extension kept. A lone surrogate is written in its three-byte
// form, so a character beyond U+FFFF takes six bytes while it is reversed; a byte that belongs to no
// character is a unit of its own. Names without an extension, among them those that begin or end with a dot
// or have two dots in a row, are reversed whole. Its own inverse for every name in well-formed UTF-8.
std::string scrambledName(std::string_view name);

enum class NameRefusal {
    None,
    NoFileName,        // empty, ".", ".." or with a "/" or NUL in it
    IsHiddenDirectory, // would be, or is, the hidden directory's own name
    TooLong,           // the name or its scrambled form takes more bytes than there is room for
    NotItsOwnInverse,  // would not come back byte for byte
};

// Why an item of this name cannot be hidden. Where the answer is None, visibleName(scrambledName(name)) is
// the name again. longestName is the file system's limit in bytes; beyond 255 it counts as 255.
NameRefusal refusalToHide(std::string_view name, std::size_t longestName = longestFileName);

// The path without the ".SYS_INDEX" that it ends with, or several of them, one in the other: the folder that
// what lies there was hidden in.
std::string_view withoutHiddenDirectories(std::string_view path);

// The name that an unhide gives: the unscrambled one, or the hidden name as it is where that could not be a
// file's name. There is always one, since an item must not stay hidden for its name's sake.
std::string visibleName(std::string_view hiddenName);

} // namespace veilkeep
