#pragma once

#include <string>
#include <string_view>
#include <vector>

// Paths as text: byte strings whose components are separated by "/". Nothing here touches the disk.
namespace veilkeep {

// The text after the last "/", trailing "/" left aside; "/" for the root, empty for the empty path.
std::string_view lastPathComponent(std::string_view path);

// What holds the last component: "/a" for "/a/b" and for "/a/b/", "/" for "/a" and for "/", empty for "a".
std::string_view parentPath(std::string_view path);

// The same as a path that can be opened: "." for "a".
std::string directoryOf(std::string_view path);

// "/a" for "/a//", "/" for "//".
std::string_view withoutTrailingSlashes(std::string_view path);

// The path with "/" and the component after it, one "/" between them.
std::string joinPath(std::string_view directory, std::string_view component);

// "/" first where the path is absolute, then every component that is not empty.
std::vector<std::string_view> pathComponents(std::string_view path);

// Without ".", "..", doubled and trailing "/", by the text alone; "/.." is "/". Relative paths stay relative
// and keep a leading "..".
std::string cleanPath(std::string_view path);

// True when path is directory itself or lies below it. Both clean.
bool isSameOrBelow(std::string_view path, std::string_view directory);

} // namespace veilkeep
