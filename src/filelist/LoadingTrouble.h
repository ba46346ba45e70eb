#pragma once

#include "alerts/Alerts.h"
#include "core/storage/RecordsFile.h"

#include <string>

namespace veilkeep {

enum class StoredList { Items, Groups };

// Tells the user what was found at the place of the list, and what was done about it. Main thread.
void tellLoadingTrouble(Alerts& alerts, StoredList list, const RecordsFile& file, const Error& trouble,
                        const std::string& earlierCopy);

} // namespace veilkeep
