#pragma once

#include "core/base/Result.h"

#include <QImage>
#include <QSize>

#include <string>
#include <string_view>

namespace veilkeep::boundedImage {

// Images of kinds that groups may be given, whoever made them: known by their content, limited in bytes and
// pixels, and decoded at no more than a few times the size that is needed. Any thread.

// Null where the bytes are no such image.
QImage decoded(std::string_view bytes, QSize neededSize);

bool isNamedAsImage(const std::string& name);

// Of a file that is named as one of those kinds too.
Result<QImage> atPath(const std::string& path, QSize neededSize);

} // namespace veilkeep::boundedImage
