#pragma once

#include <string>

namespace veilkeep {

// A look, some microseconds long where no desktop keeps anything, at whether other programs may remember the
// item that was at the path, or for a directory anything below it. In doubt it answers true.
bool mayHaveTraces(const std::string& path, bool isDirectory);

} // namespace veilkeep
