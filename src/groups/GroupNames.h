#pragma once

#include "core/records/Group.h"

#include <QString>

namespace veilkeep {

// The names that Veilkeep itself gives to rows, as they are stored whatever the user's language is.
namespace groupName {
inline constexpr const char* allFiles = "All Files";
inline constexpr const char* customGroups = "Custom Groups";
inline constexpr const char* secretPictures = "Secret Pictures";
inline constexpr const char* privateFiles = "Private Files";
inline constexpr const char* autoHide = "AutoHide Group";
inline constexpr const char* newGroup = "New Group"; // the next ones with a number: "New Group 1"
} // namespace groupName

// The name as it is shown: harmless, and those that Veilkeep gives in the user's language. Never acted on.
QString shownGroupName(const Group& group);

} // namespace veilkeep
