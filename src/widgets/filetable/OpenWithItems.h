#pragma once

#include "filelist/FileListActions.h"

#include <functional>

class QMenu;

namespace veilkeep {

// The applications that can open the selected item, anew; main thread.
void fillOpenWithMenu(QMenu& menu, FilesViewController& files, FileListActions& actions,
                      const std::function<void()>& chooseOther);

} // namespace veilkeep
