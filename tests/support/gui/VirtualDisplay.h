#pragma once

#include <memory>
#include <string>

namespace veilkeep::test {

class BackgroundProgram;

// An X display of the test's own, with DISPLAY set to it and the variables of other displays taken away. Made
// before the QApplication and gone after it.
class VirtualDisplay {
public:
    explicit VirtualDisplay(const std::string& size = "1400x1000x24");
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    // Why there is none; empty where there is one.
    const std::string& trouble() const { return m_trouble; }

private:
    std::unique_ptr<BackgroundProgram> m_server;
    std::string m_trouble;
};

} // namespace veilkeep::test
