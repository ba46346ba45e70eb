#pragma once

#include "alerts/Alerts.h"
#include "filelist/FilesInfoFile.h"

#include <string>

namespace veilkeep {

// Tells the user what was found at the place of the list, and what was done about it. Main thread.
void tellLoadingTrouble(Alerts& alerts, const FilesInfoFile& file, const Error& trouble,
                        const std::string& earlierCopy);

} // namespace veilkeep
