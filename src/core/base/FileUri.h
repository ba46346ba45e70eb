#pragma once

#include <optional>
#include <string>
#include <string_view>

// "file" URIs (RFC 8089) of absolute paths, which need not be UTF-8.
namespace veilkeep {

// Which characters of a path are written as they are: both write what RFC 3986 allows in a path, Qt ";", "["
// and "]" too.
enum class UriSpelling { GLib, Qt };

std::string fileUri(std::string_view path, UriSpelling spelling);

// Each byte that a URI's path must not hold, and those that the spelling escapes, as "%XX".
std::string percentEncoded(std::string_view path, UriSpelling spelling);

// The path that a "file" URI of this machine names, whoever spelled it; nothing for any other text. A query
// or a fragment at its end is left aside.
std::optional<std::string> pathOfFileUri(std::string_view uri);

} // namespace veilkeep
