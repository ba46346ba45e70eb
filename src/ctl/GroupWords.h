#pragma once

#include <QVariantMap>

#include <span>
#include <string>
#include <variant>

namespace veilkeep {

// What the words after "group" ask for, as options of its request; a sentence about the mistake when they ask
// for nothing.
std::variant<QVariantMap, std::string> groupOptions(std::span<const std::string> words);

} // namespace veilkeep
