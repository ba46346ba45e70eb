#pragma once

class QMenu;

namespace veilkeep {

// Tells screen readers, once the menu and all others have gone, who has the focus: it has been there all the
// while, so that nobody else does. Main thread.
void tellFocusAfter(const QMenu& menu);

} // namespace veilkeep
