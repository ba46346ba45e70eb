#include "tests/app/process/Screen.h"

#include "tests/support/WaitUntil.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace veilkeep::test {
namespace {

// Windows go while they are looked at.
int ignore(Display*, XErrorEvent*) {
    return 0;
}

// The numbers in it, of 32 bits as the display counts.
std::vector<unsigned long> property(Display* display, Window window, const char* name) {
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, left = 0;
    unsigned char* data = nullptr;
    if (::XGetWindowProperty(display, window, ::XInternAtom(display, name, 0), 0, 1024, 0, AnyPropertyType,
                             &type, &format, &count, &left, &data) != Success ||
        !data)
        return {};
    std::vector<unsigned long> numbers(format == 32 ? count : 0);
    std::memcpy(numbers.data(), data, numbers.size() * sizeof(unsigned long));
    ::XFree(data);
    return numbers;
}

std::vector<Window> childrenOf(Display* display, Window window) {
    Window root = 0, parent = 0, *children = nullptr;
    unsigned int count = 0;
    if (!::XQueryTree(display, window, &root, &parent, &children, &count) || !children)
        return {};
    std::vector<Window> all(children, children + count);
    ::XFree(children);
    return all;
}

} // namespace

struct Screen::Connection {
    Display* display = ::XOpenDisplay(nullptr);
};

Screen::Screen() : m_connection(std::make_unique<Connection>()) {
    if (!m_connection->display)
        throw std::runtime_error("there is no display");
    ::XSetErrorHandler(ignore);
}

Screen::~Screen() {
    ::XCloseDisplay(m_connection->display);
}

std::vector<Screen::Window> Screen::windows() const {
    Display* const display = m_connection->display;
    std::vector<Window> seen;
    for (const ::Window id : childrenOf(display, DefaultRootWindow(display))) {
        XWindowAttributes attributes = {};
        if (!::XGetWindowAttributes(display, id, &attributes) || attributes.map_state != IsViewable)
            continue;
        const auto process = property(display, id, "_NET_WM_PID");
        const auto hasAtom = [&](const char* name, const char* value) {
            const auto all = property(display, id, name);
            return std::ranges::find(all, ::XInternAtom(display, value, 0)) != all.end();
        };
        seen.push_back({id, process.empty() ? 0 : static_cast<pid_t>(process.front()),
                        hasAtom("_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DIALOG"),
                        hasAtom("_NET_WM_STATE", "_NET_WM_STATE_ABOVE")});
    }
    return seen;
}

std::vector<Screen::Window> Screen::windowsOf(pid_t process) const {
    std::vector<Window> own = windows();
    std::erase_if(own, [&](const Window& window) { return window.process != process; });
    return own;
}

std::optional<Screen::Window> Screen::waitForWindow() const {
    return waitFor(false);
}

std::optional<Screen::Window> Screen::waitForDialog() const {
    return waitFor(true);
}

std::optional<Screen::Window> Screen::waitFor(bool isDialog) const {
    std::optional<Window> found;
    (void)waitUntil([&] {
        for (const Window& each : windows())
            if (each.process != 0 && each.isDialog == isDialog && hasKeyboard(each))
                found = each;
        return found.has_value();
    });
    return found;
}

bool Screen::waitForNothing() const {
    return waitUntil([this] {
        return std::ranges::none_of(windows(), [](const Window& each) { return each.process != 0; });
    });
}

// Or one within it, of which Qt has one for the keyboard.
bool Screen::hasKeyboard(const Window& window) const {
    ::Window focused = 0;
    int revert = 0;
    ::XGetInputFocus(m_connection->display, &focused, &revert);
    if (focused == window.id)
        return true;
    const auto inside = childrenOf(m_connection->display, window.id);
    return std::ranges::find(inside, focused) != inside.end();
}

void Screen::cover() {
    Display* const display = m_connection->display;
    const ::Window cover =
        ::XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1400, 1000, 0, 0, 0);
    ::XMapRaised(display, cover);
    ::XSync(display, 0);
}

void Screen::close(const Window& window) {
    Display* const display = m_connection->display;
    XEvent message{};
    message.xclient.type = ClientMessage;
    message.xclient.window = window.id;
    message.xclient.message_type = ::XInternAtom(display, "WM_PROTOCOLS", 0);
    message.xclient.format = 32;
    message.xclient.data.l[0] = static_cast<long>(::XInternAtom(display, "WM_DELETE_WINDOW", 0));
    ::XSendEvent(display, window.id, 0, NoEventMask, &message);
    ::XFlush(display);
}

void Screen::key(const std::string& names) {
    Display* const display = m_connection->display;
    std::vector<KeyCode> codes;
    for (std::size_t start = 0; start <= names.size();) {
        const std::size_t end = std::min(names.find('+', start), names.size());
        codes.push_back(
            ::XKeysymToKeycode(display, ::XStringToKeysym(names.substr(start, end - start).c_str())));
        if (codes.back() == 0)
            throw std::logic_error("the keyboard has no key of " + names);
        start = end + 1;
    }
    for (const KeyCode code : codes)
        ::XTestFakeKeyEvent(display, code, 1, 0);
    for (auto code = codes.rbegin(); code != codes.rend(); ++code)
        ::XTestFakeKeyEvent(display, *code, 0, 0);
    ::XFlush(display);
}

void Screen::type(const std::string& letters) {
    for (const char letter : letters)
        key(std::string(1, letter));
}

} // namespace veilkeep::test
