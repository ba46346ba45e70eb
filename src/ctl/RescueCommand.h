#pragma once

#include "core/rescue/RescuePlan.h"
#include "core/rescue/RescueSearch.h"
#include "ctl/TerminalCaller.h"
#include "ctl/TerminalOutput.h"
#include "ctl/TerminalQuestions.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

struct RescueWishes {
    std::vector<std::string> paths; // as the user wrote them
    bool onlyShows = false;         // what would be done
    bool staysOnVolume = false;
    std::optional<std::string> copyTo; // instead of moving
};

// "rescue": brings back whatever is hidden below directories, by what lies there alone. Uses neither the list
// nor its lock nor the bus. Nothing of what it is given is owned. Main thread.
class RescueCommand {
public:
    RescueCommand(RescueWishes wishes, TerminalOutput& output, TerminalQuestions& questions,
                  TerminalCaller& caller);

    RequestStatus run();

private:
    bool isPasswordGiven();
    void findRoots();
    bool isWritable(const RescueRoot& root, const std::string& argument);
    bool isTargetUsable();
    void search();
    void tellTroubles();
    void tellHiddenAround();
    bool isNothingFound();

    RequestStatus moveAll();
    void showPlan();
    void showStep(const RescueStep& step);
    bool isWanted(const QString& title, const QString& message, const QString& button);
    void moveEach(const std::string& worker);
    RequestStatus copyAll();

    void message(const QString& text) { m_output.printMessage(text); }
    void itemFailed(const std::string& path, const QString& reason);

    const RescueWishes m_wishes;
    TerminalOutput& m_output;
    TerminalQuestions& m_questions;
    TerminalCaller& m_caller;
    std::string m_target; // of copying
    std::vector<RescueRoot> m_roots;
    RescueSearch m_search;
    RequestStatus m_status = RequestStatus::AllWell;
};

} // namespace veilkeep
