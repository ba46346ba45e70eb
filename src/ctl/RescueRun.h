#pragma once

#include "core/rescue/HiddenFolders.h"
#include "core/rescue/RescueMoves.h"
#include "core/rescue/RescuedPlaces.h"
#include "ctl/TerminalCaller.h"
#include "ctl/TerminalOutput.h"

#include <cstddef>
#include <string>
#include <vector>

namespace veilkeep {

// Moves all that a search has found, and tells of each item where it lies or why it stays. Nothing of what it
// is given is owned. Main thread.
class RescueRun {
public:
    RescueRun(std::string worker, TerminalOutput& output, const TerminalCaller& caller)
        : m_moves(std::move(worker)), m_output(output), m_caller(caller) {}

    void moveAll(const HiddenFolders& folders); // arranged

    std::size_t cameBack() const { return m_cameBack; }
    std::size_t failed() const { return m_failed; }
    std::size_t leftAlone() const { return m_total - m_cameBack - m_failed; } // after an interruption
    bool hadTooFewRights() const { return m_hadTooFewRights; }
    bool isDurable() const { return m_isDurable; } // what came back survives a power cut

private:
    void moveFolder(const HiddenFolder& folder);
    void move(const HiddenFolder& folder, std::size_t number);
    void tellName(const std::string& hiddenPath, const std::string& place);
    void fail(const std::string& path, int error);
    void settle(const HiddenFolder& folder);

    RescueMoves m_moves;
    TerminalOutput& m_output;
    const TerminalCaller& m_caller;
    RescuedPlaces m_places;
    std::vector<std::string> m_settled; // to be told once they are safe on the disk
    std::size_t m_total = 0, m_cameBack = 0, m_failed = 0;
    bool m_hadTooFewRights = false, m_isDurable = true;
};

} // namespace veilkeep
