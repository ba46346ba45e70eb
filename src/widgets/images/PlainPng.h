#pragma once

#include <QImage>

#include <string>

namespace veilkeep {

// The image as a PNG. Qt's own writer loads every plugin that knows any kind of image, megabytes of them, and
// groups need theirs at each start. Any thread.
std::string plainPng(const QImage& image);

} // namespace veilkeep
