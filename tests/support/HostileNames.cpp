#include "tests/support/HostileNames.h"

#include <set>

namespace veilkeep::test {
namespace {

std::string repeated(const std::string& piece, std::size_t longest) {
    std::string name;
    while (name.size() + piece.size() <= longest)
        name += piece;
    return name;
}

// Hostile in themselves or at an end of a name.
const char* const shortPieces[] = {
    " ",         "\t",        "\n",       "\r",     "\x1b[31m", "\x7f",     "'",      "\"",     "`",
    "\\",        "$HOME",     "$(id)",    ";",      "&",        "|",        "*",      "?",      "[a]",
    "{a,b}",     "<",         ">",        "(",      ")",        "!",        "#",      "~",      "%",
    "%00",       "%s",        "%n",       "-",      "--",       "-rf",      "-0",     "--help", "é",
    "e\xCC\x81", "ß",         "Å",        "日本",   "한",       "عربى",     "עברית",  "😀",      "\u200B",
    "\u200D",    "\u200E",    "\u202E",   "\u2066", "\u2028",   "\u2029",   "\uFEFF", "\uFFFD", "\uFFFF",
    "\u0085",    "\u00A0",    "\u3000",   "\xFF",   "\xFE",     "\xFF\xFE", "\xC3",   "\xA9",   "\xA9\xC3",
    "\xC0\xAF",  "XEDNI_SYS", "Error: 3", "CON",    "a"};
const char* const longerPieces[] = {"👩\u200D👧\u200D👦",
                                    "🏳\uFE0F\u200D🌈",
                                    "\U000E0041",
                                    "\xED\xA0\xBD",
                                    "\xED\xB8\x80",
                                    "\xED\xA0\xBD\xED\xB8\x80",
                                    "\xED\xB8\x80\xED\xA0\xBD",
                                    "\xF0\x9F\x98",
                                    "\xF4\x90\x80\x80",
                                    "\xE0\x80\xAF",
                                    "\xF8\x88\x80\x80\x80",
                                    ".SYS_INDEX",
                                    "NewFilename: "};

std::vector<std::string> pieces() {
    std::vector<std::string> all(std::begin(shortPieces), std::end(shortPieces));
    all.insert(all.end(), std::begin(longerPieces), std::end(longerPieces));
    for (char byte = 1; byte < 32; ++byte)
        all.emplace_back(1, byte);
    return all;
}

const char* const dottedNames[] = {
    "...",        "....",       ".a",        "..a",         "...a",        "a.",         "a..",
    "a...",       "a.b",        "a..b",      "a.b.c",       ".a.b",        "a.b.",       ".a.",
    "..a..",      "a. b",       "a .b",      ". a",         "a. ",         ". ",         " .",
    "a.b ",       " a.b",       ".-",        "-.",          "a.tar.gz",    "a.é",        "é.a",
    "é.é",        ".é",         "é.",        "😀.a",         "a.😀",         "😀.😀",        ".😀",
    "😀.",         "..😀",        "a.\xFF",    "\xFF.a",      "\xFF.",       ".\xFF",      ".SYS_INDEX.",
    ".SYS_INDEX", "XEDNI_SYS.", "XEDNI_SYS", ".SYS_INDEX2", "x.SYS_INDEX", ".sys_index", "a.SYS_INDEX",
    "XEDNI_SYS.."};

const char* const longPieces[] = {"a", "ab", "é",  "日", "😀", "a😀", "😀b.", "\xFF",     "\xED\xA0\xBD",
                                  ".", "a.", ".a", " ",  "-", "\n", "\\",  "e\xCC\x81"};

} // namespace

std::vector<std::string> hostileNames() {
    std::set<std::string> names(std::begin(dottedNames), std::end(dottedNames));
    for (const std::string& piece : pieces()) {
        for (const std::string& name : {piece, piece + piece, "a" + piece, piece + "a", "a" + piece + "b",
                                        piece + ".txt", "a." + piece, "." + piece, piece + "."})
            names.insert(name);
    }
    for (const char* const piece : longPieces) {
        for (const std::size_t longest : {126u, 127u, 128u, 189u, 190u, 252u, 253u, 254u, 255u}) {
            names.insert(repeated(piece, longest));
            names.insert(repeated(piece, longest - 4) + ".txt");
        }
    }
    names.erase(".");
    names.erase("..");
    names.erase("");
    return {names.begin(), names.end()};
}

} // namespace veilkeep::test
