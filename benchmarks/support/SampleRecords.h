#pragma once

#include "benchmarks/support/SampleTree.h"
#include "core/records/PropertyDictionary.h"

#include <cstddef>
#include <string>
#include <vector>

namespace veilkeep::benchmark {

// Item records as a long list holds them: paths of 80 bytes, an alias of 200.
std::vector<PropertyDictionary> sampleRecords(std::size_t count);

// Of the files of a tree that is there.
std::vector<PropertyDictionary> recordsOf(const SampleTree& tree);

// The data file that holds them.
std::string sampleArchive(const std::vector<PropertyDictionary>& records);

} // namespace veilkeep::benchmark
