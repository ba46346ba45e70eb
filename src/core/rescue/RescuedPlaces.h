#pragma once

#include <set>
#include <string>
#include <vector>

namespace veilkeep {

// Where items that came back lie in the end: those in a hidden folder come back before the folder does, and
// move along with it.
class RescuedPlaces {
public:
    // An item came back from one path to the other. Answers the places that will not change any more: its own
    // or those of what lies in it, or none yet.
    std::vector<std::string> cameBack(const std::string& hiddenPath, const std::string& place);

    // Of items in folders that stayed hidden.
    const std::set<std::string>& unsettled() const { return m_unsettled; }

private:
    void take(std::string place, std::vector<std::string>& settled);

    std::set<std::string> m_unsettled;
};

} // namespace veilkeep
