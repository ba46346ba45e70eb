#pragma once

#include "core/rescue/CopyPlan.h"
#include "core/rescue/RescueCopy.h"
#include "ctl/TerminalCaller.h"
#include "ctl/TerminalOutput.h"

#include <cstddef>
#include <string>
#include <vector>

namespace veilkeep {

// Copies all that a search has found to another directory, and tells of each item where its copy lies or why
// there is none. Nothing of what it is given is owned. Main thread.
class RescueCopyRun {
public:
    RescueCopyRun(const HiddenFolders& found, const std::vector<RescueRoot>& roots, std::string target,
                  bool staysOnVolume, TerminalOutput& output, const TerminalCaller& caller);

    void showPlan() const;

    bool copyAll(); // true when all is there and whole

    std::size_t total() const { return m_total; }

private:
    bool copy(RescueCopy& copying, const std::string& hiddenPath, const std::string& place);
    void tell(const Error& error) const;
    void tell(const Error& error, const std::string& hiddenPath) const; // why there is no copy of the item
    RescueCopyReport report() const;

    const HiddenFolders& m_found;
    const std::vector<RescueRoot>& m_roots;
    const std::string m_target;
    const bool m_staysOnVolume;
    TerminalOutput& m_output;
    const TerminalCaller& m_caller;
    std::size_t m_total = 0, m_copied = 0, m_inPart = 0, m_failed = 0;
};

} // namespace veilkeep
