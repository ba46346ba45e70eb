#pragma once

#include <string>

namespace veilkeep {

// The relocatable directory "….app" that holds this program, found from the running executable; empty when
// the executable does not lie in "Contents/MacOS" of one (a test program, for instance). It is looked for
// once: an update may move what runs aside and put a new one in its place.
std::string applicationBundlePath();

// The bundle's path followed by "/Contents/MacOS/" and the program's name.
std::string bundledProgramPath(const std::string& bundle, const std::string& program);

} // namespace veilkeep
