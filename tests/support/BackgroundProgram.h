#pragma once

#include "core/base/UniqueFd.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace veilkeep::test {

// A program in the background, ended and waited for at the end.
class BackgroundProgram {
public:
    explicit BackgroundProgram(const std::vector<std::string>& arguments);
    ~BackgroundProgram();
    BackgroundProgram(const BackgroundProgram&) = delete;
    BackgroundProgram& operator=(const BackgroundProgram&) = delete;

    pid_t process() const { return m_process; }
    int end(int signal);    // waits; the exit status, -1 where a signal ended it
    std::string readLine(); // from its standard output; empty where it ended before

private:
    pid_t m_process = -1;
    UniqueFd m_output;
};

} // namespace veilkeep::test
