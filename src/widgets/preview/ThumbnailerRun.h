#pragma once

#include "widgets/preview/Thumbnailers.h"
#include "widgets/preview/WorkStop.h"

#include <QImage>

#include <chrono>
#include <string>

namespace veilkeep {

// Has a thumbnailer make an image of the item at the path, of at most `size` pixels either way. It writes
// into a private directory, in which it also has its home, cache and temporary files, and which is removed at
// once: nothing about the item gets into the caches that programs share. It is killed, with all that it
// started, after the limit and when somebody stops it; it does not outlive this process. Any thread but the
// interface's.
QImage imageByThumbnailer(const Thumbnailer& thumbnailer, const std::string& path, int size,
                          std::chrono::milliseconds limit, const WorkStop& stop);

} // namespace veilkeep
