#pragma once

#include "core/base/UniqueFd.h"

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace veilkeep::test {

// A program in the background, ended and waited for at the end.
class BackgroundProgram {
public:
    // What is to be done in the child right before the program may be given.
    explicit BackgroundProgram(const std::vector<std::string>& arguments,
                               const std::function<void()>& inChild = {});
    ~BackgroundProgram();
    BackgroundProgram(const BackgroundProgram&) = delete;
    BackgroundProgram& operator=(const BackgroundProgram&) = delete;

    pid_t process() const { return m_process; }
    int end(int signal);    // 0 for none; waits; the exit status, -1 where a signal ended it
    std::string readLine(); // from its standard output; empty where it ended before
    std::string readSome(); // what it writes at once
    void stopReading() { m_output.reset(); }

private:
    pid_t m_process = -1;
    UniqueFd m_output;
};

} // namespace veilkeep::test
