#pragma once

#include "tests/support/BackgroundProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/bus/PrivateBus.h"
#include "tests/support/gui/VirtualDisplay.h"

#include <string>

namespace veilkeep::benchmark {

// A display, a home and message buses of the benchmark's own.
class OwnDesktop {
public:
    OwnDesktop();

    const test::ScratchTree& tree() const { return m_tree; }
    std::string whyMissing() const; // empty where all are there
    std::string dataFile() const;   // of the list; its directory is there

private:
    test::ScratchTree m_tree;
    test::PrivateBus m_systemBus{m_tree, test::PrivateBus::Place::System};
    test::PrivateBus m_sessionBus{m_tree, test::PrivateBus::Place::Session};
    test::VirtualDisplay m_display;
};

// A program with a window in the middle of the screen, seen from outside: started, painted, ended.
class WindowedProgram {
public:
    explicit WindowedProgram(const std::string& path) : m_program({path}) {}
    ~WindowedProgram();
    WindowedProgram(const WindowedProgram&) = delete;
    WindowedProgram& operator=(const WindowedProgram&) = delete;

    void waitUntilPainted() const;
    void waitUntilIdle() const; // has used no processor time for half a second

    long proportionalMemory() const; // in KiB

    static std::string emptyWindow(); // paths
    static std::string veilkeep();

private:
    double processorTime() const; // in seconds

    test::BackgroundProgram m_program;
};

} // namespace veilkeep::benchmark
