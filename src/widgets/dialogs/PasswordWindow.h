#pragma once

#include "prefs/PasswordPrompt.h"

#include <memory>

namespace veilkeep {

class PasswordPanel;

// The prompt for the password as a window of its own, before the whole application. What was entered goes
// with the window. Main thread.
class PasswordWindow : public PasswordPrompt {
public:
    PasswordWindow();
    ~PasswordWindow() override;
    PasswordWindow(const PasswordWindow&) = delete;
    PasswordWindow& operator=(const PasswordWindow&) = delete;

    void run(PasswordManager& manager, const QString& title, const QString& line) override;
    void showWrongEntries(int count) override;
    void close() override;

private:
    std::unique_ptr<PasswordPanel> m_panel; // while it is open
};

} // namespace veilkeep
