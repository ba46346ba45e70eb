#pragma once

#include "core/storage/UserDefaults.h"
#include "prefs/PasswordPrompt.h"

#include <QString>

#include <optional>

namespace veilkeep {

// The application's password: keeps its digest, compares what is entered with it, and asks for it through a
// prompt. It protects this program's own operations and enciphers nothing. Main thread.
class PasswordManager {
public:
    static constexpr const char* enabledKey = "UPW";
    static constexpr const char* digestKey = "Password";

    explicit PasswordManager(UserDefaults& defaults); // not owned

    static PasswordManager* passwordManager(); // the one that was made last; null for none

    static QString cypher(const QString& password);
    void setPassword(const QString& password);
    std::optional<QString> storedPassword() const;
    bool isPasswordEnabled();
    bool checkPassword(const QString& password);

    // Where the password is asked for. Without one every question is refused. Not owned.
    void setPrompt(PasswordPrompt* prompt) { m_prompt = prompt; }
    bool isPromptVisible() const { return m_isPromptVisible; }

    // 1 accepted, 0 refused; returns when the prompt has gone. The event loop turns meanwhile.
    int showModalWindow();
    void okClick(const QString& entered);
    void cancelClick();

private:
    void end(int returnCode);

    UserDefaults& m_defaults;
    PasswordPrompt* m_prompt = nullptr;
    bool m_isPromptVisible = false;
    int m_returnCode = 0;
    int m_tryCount = 0;
};

} // namespace veilkeep
