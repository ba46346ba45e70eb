#pragma once

#include <QString>

#include <limits>
#include <string_view>

namespace veilkeep {

// The number that a desktop system's application kit had in its several versions; where a system has no such
// number it counts as the newest.
inline constexpr double newestSystem = std::numeric_limits<double>::max();

bool isOnTigerOrBetter(double version = newestSystem);
bool isTiger(double version = newestSystem);
bool isOnLeopardOrBetter(double version = newestSystem);
bool isSnowLeopardOrBetter(double version = newestSystem);

// The text without a leading "Version ", up to the first blank.
QString shortVersion(const QString& versionText);

// VERSION, or else VERSION_ID, of an os-release file's content; null where it has neither.
QString versionInOsRelease(std::string_view content);

// Of the system that this runs on: what its os-release says, or else the kernel's release.
QString osVersion();

} // namespace veilkeep
