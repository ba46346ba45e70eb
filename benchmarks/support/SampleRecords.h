#pragma once

#include "core/records/PropertyDictionary.h"

#include <cstddef>
#include <string>
#include <vector>

namespace veilkeep::benchmark {

// Item records as a long list holds them: paths of 80 bytes, an alias of 200.
std::vector<PropertyDictionary> sampleRecords(std::size_t count);

// The data file that holds them.
std::string sampleArchive(const std::vector<PropertyDictionary>& records);

} // namespace veilkeep::benchmark
