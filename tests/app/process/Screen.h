#pragma once

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep::test {

// The test's display as a person sees and uses it: other processes' windows, a mouse and a keyboard.
class Screen {
public:
    struct Window {
        unsigned long id = 0;
        pid_t process = 0; // whose it is, 0 where it does not say
        bool isDialog = false;
        bool isOnTop = false; // wants to be above others
    };

    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    std::vector<Window> windows() const; // those to be seen, from the lowest to the uppermost
    std::vector<Window> windowsOf(pid_t process) const;
    std::optional<Window> waitForWindow() const; // an application's, and until it has the keyboard
    std::optional<Window> waitForDialog() const;
    bool waitForNothing() const; // no window of an application
    bool hasKeyboard(const Window& window) const;

    void cover();                     // with a window of the test's own, above all others
    void close(const Window& window); // as a window manager asks for it

    // Names of keys as X has them, "Control_L+a" for several at once.
    void key(const std::string& names);
    void type(const std::string& letters);

private:
    std::optional<Window> waitFor(bool isDialog) const;

    struct Connection;
    std::unique_ptr<Connection> m_connection;
};

} // namespace veilkeep::test
