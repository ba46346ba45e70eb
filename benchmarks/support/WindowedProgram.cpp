#include "benchmarks/support/WindowedProgram.h"

#include "benchmarks/support/SampleTree.h"
#include "core/environment/XdgDirectories.h"
#include "tests/support/RunProgram.h"
#include "tests/support/WaitUntil.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace veilkeep::benchmark {
namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void stop(const std::string& why) {
    std::fprintf(stderr, "%s\n", why.c_str());
    std::exit(2);
}

// Black where no window is.
bool isScreenMiddlePainted() {
    static Display* const display = ::XOpenDisplay(nullptr);
    if (!display)
        stop("the display cannot be opened");
    const int screen = DefaultScreen(display);
    XImage* const image = ::XGetImage(display, RootWindow(display, screen), DisplayWidth(display, screen) / 2,
                                      DisplayHeight(display, screen) / 2, 1, 1, AllPlanes, ZPixmap);
    const bool isPainted = image && (XGetPixel(image, 0, 0) & 0xffffff) != 0;
    if (image)
        XDestroyImage(image);
    return isPainted;
}

} // namespace

OwnDesktop::OwnDesktop() {
    std::filesystem::create_directories(OwnPlaces::current().dataDirectory);
}

std::string OwnDesktop::whyMissing() const {
    std::string reason = m_display.trouble();
    for (const test::PrivateBus* bus : {&m_systemBus, &m_sessionBus})
        if (reason.empty())
            reason = bus->whyMissing();
    return reason;
}

std::string OwnDesktop::dataFile() const {
    return OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep";
}

WindowedProgram::~WindowedProgram() {
    m_program.end(SIGTERM);
    test::waitUntil([] { return !isScreenMiddlePainted(); });
}

void WindowedProgram::waitUntilPainted() const {
    if (!test::waitUntil(isScreenMiddlePainted))
        stop("no window came");
}

void WindowedProgram::waitUntilIdle() const {
    double used = processorTime();
    Clock::time_point since = Clock::now();
    const bool isIdle = test::waitUntil([&] {
        if (const double now = processorTime(); now != used) {
            used = now;
            since = Clock::now();
        }
        return Clock::now() - since > std::chrono::milliseconds(500);
    });
    if (!isIdle)
        stop("the program does not come to rest");
}

double WindowedProgram::processorTime() const {
    std::ifstream file("/proc/" + std::to_string(m_program.process()) + "/stat");
    std::string text;
    std::getline(file, text);
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    std::string ignored;
    for (int field = 3; field < 14; ++field)
        fields >> ignored;
    double user = 0, system = 0;
    fields >> user >> system;
    return (user + system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

long WindowedProgram::proportionalMemory() const {
    std::ifstream file("/proc/" + std::to_string(m_program.process()) + "/smaps_rollup");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("Pss:"))
            return std::stol(line.substr(4));
    stop("the program is gone");
}

std::string WindowedProgram::emptyWindow() {
    return VEILKEEP_EMPTY_WINDOW;
}

std::string WindowedProgram::veilkeep() {
    return test::bundledProgram("Veilkeep");
}

} // namespace veilkeep::benchmark
