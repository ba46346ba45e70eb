#include "tests/support/gui/VirtualDisplay.h"

#include "tests/support/BackgroundProgram.h"

#include <unistd.h>

#include <cstdlib>

namespace veilkeep::test {

VirtualDisplay::VirtualDisplay(const std::string& size) {
    constexpr const char* server = "/usr/bin/Xvfb";
    for (const char* other : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "SESSION_MANAGER"})
        ::unsetenv(other);
    if (::access(server, X_OK) != 0) {
        m_trouble = std::string("there is no ") + server;
        return;
    }
    m_server = std::make_unique<BackgroundProgram>(std::vector<std::string>{
        server, "-displayfd", "1", "-screen", "0", size, "-nolisten", "tcp", "-noreset"});
    const std::string number = m_server->readLine();
    if (number.empty())
        m_trouble = "Xvfb did not start";
    else
        ::setenv("DISPLAY", (":" + number).c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
}

VirtualDisplay::~VirtualDisplay() = default;

} // namespace veilkeep::test
