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
    static constexpr int mostRetries = 3; // the wrong entry after these ends the prompt

    explicit PasswordManager(UserDefaults& defaults); // not owned
    ~PasswordManager();
    PasswordManager(const PasswordManager&) = delete;
    PasswordManager& operator=(const PasswordManager&) = delete;

    static PasswordManager* passwordManager(); // the one that was made last; null for none

    // The MD5 digest of the password's ASCII bytes; of no bytes at all when a character is outside of ASCII,
    // as digests that were stored before have it.
    static QString cypher(const QString& password);
    static bool isAscii(const QString& password);

    // Stores the digest, and whatever else is pending in the defaults.
    Result<void> setPassword(const QString& password);
    std::optional<QString> storedPassword() const;
    bool isPasswordEnabled();
    bool checkPassword(const QString& password); // true for every text while no password is asked for

    // Where the password is asked for. Without one every question is refused. Not owned; not changed for a
    // prompt that is open.
    void setPrompt(PasswordPrompt* prompt) { m_prompt = prompt; }
    PasswordPrompt* prompt() const { return m_prompt; }
    bool isPromptVisible() const { return m_openPrompt != nullptr; }

    // 1 accepted, 0 refused; returns when the prompt has gone, which one that does not open or goes by itself
    // does as well. The event loop turns meanwhile. Refused at once while a prompt is open.
    int showModalWindow();
    void okClick(const QString& entered);
    void cancelClick(); // from outside as well, at any time; without an open prompt nothing happens

private:
    void end(int returnCode);

    UserDefaults& m_defaults;
    PasswordPrompt* m_prompt = nullptr;
    PasswordPrompt* m_openPrompt = nullptr;
    bool m_hasEnded = false; // of the open one
    int m_returnCode = 0;
    int m_tryCount = 0;
};

} // namespace veilkeep
