#pragma once

#include "requests/RequestWork.h"

#include <map>
#include <string>

namespace veilkeep {

// Requests that look for items on the disk or in another list. Lives for one request; main thread.
class SearchRequests {
public:
    explicit SearchRequests(RequestWork& work) : m_work(work) {}

    void check();   // takes in what workers left, and looks for what is missing
    void locate();  // the item of the first path is the one at the second
    void restore(); // takes the hidden items below directories into the list
    void merge();   // takes over what another list's file holds

private:
    RestoreSummary searchBelow(const std::string& directory);
    void restoreBelow(const std::string& directory);
    void tellHiddenBelow(const std::string& directory);
    void tellUnreadableRecords();
    void tellInterruption();
    void tellFindings(const std::map<ListedFile, std::string>& pathsBefore);

    RequestWork& m_work;
};

} // namespace veilkeep
