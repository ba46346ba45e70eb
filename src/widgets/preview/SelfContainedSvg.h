#pragma once

#include <QByteArray>

namespace veilkeep {

// The drawing without what would be read from other files while it is drawn: images beside it, style sheets.
// Such a file could be a pipe that nobody writes to. Empty where it is no drawing. Any thread.
QByteArray selfContainedSvg(const QByteArray& svg);

} // namespace veilkeep
