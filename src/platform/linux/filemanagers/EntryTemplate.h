#pragma once

#include <map>
#include <string>

namespace veilkeep {

// The text with each "@NAME@" that is known replaced, once: what is put in is not looked at.
std::string filledTemplate(const std::string& text, const std::map<std::string, std::string>& values);

} // namespace veilkeep
