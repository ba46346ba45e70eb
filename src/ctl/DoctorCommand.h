#pragma once

#include "ctl/TerminalOutput.h"
#include "platform/Request.h"
#include "platform/linux/checkup/Finding.h"

#include <QByteArray>

#include <string>
#include <vector>

namespace veilkeep {

// "doctor": says what of this desktop will not work, and what can be done. Starts no service and changes
// nothing on the disk, so that it does not go the way of requests. Main thread.
class DoctorCommand {
public:
    DoctorCommand(bool json, TerminalOutput& output) : m_json(json), m_output(output) {} // not owned

    // AllWell where nothing fails; what is limited alone is no failure.
    RequestStatus run();

private:
    const bool m_json;
    TerminalOutput& m_output;
};

std::string findingsText(const std::vector<CheckupFinding>& findings);
QByteArray findingsJson(const std::vector<CheckupFinding>& findings);
RequestStatus statusOf(const std::vector<CheckupFinding>& findings);

} // namespace veilkeep
