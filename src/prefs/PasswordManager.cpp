#include "prefs/PasswordManager.h"

#include "core/log/Log.h"
#include "core/storage/DefaultsKeys.h"
#include "filelist/Texts.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QScopedValueRollback>

#include <algorithm>

namespace veilkeep {
namespace {

PasswordManager* lastMade = nullptr;

} // namespace

PasswordManager::PasswordManager(UserDefaults& defaults) : m_defaults(defaults) {
    lastMade = this;
}

PasswordManager::~PasswordManager() {
    if (lastMade == this)
        lastMade = nullptr;
}

PasswordManager* PasswordManager::passwordManager() {
    return lastMade;
}

bool PasswordManager::isAscii(const QString& password) {
    return std::ranges::all_of(password, [](QChar character) { return character.unicode() < 0x80; });
}

QString PasswordManager::cypher(const QString& password) {
    const QByteArray bytes = isAscii(password) ? password.toLatin1() : QByteArray();
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex());
}

Result<void> PasswordManager::setPassword(const QString& password) {
    m_defaults.set(defaultsKey::passwordDigest, cypher(password).toStdString());
    return m_defaults.synchronize();
}

std::optional<QString> PasswordManager::storedPassword() const {
    const auto digest = m_defaults.string(defaultsKey::passwordDigest);
    return digest ? std::optional(QString::fromStdString(*digest)) : std::nullopt;
}

bool PasswordManager::isPasswordEnabled() {
    if (!m_defaults.contains(defaultsKey::passwordEnabled))
        if (const auto stored = m_defaults.storeIfAbsent(defaultsKey::passwordEnabled, false); !stored)
            logError("The setting that no password is asked for could not be stored", stored.error());
    return m_defaults.boolean(defaultsKey::passwordEnabled).value_or(false);
}

bool PasswordManager::checkPassword(const QString& password) {
    if (!isPasswordEnabled())
        return true;
    const auto digest = storedPassword();
    return digest && digest->contains(cypher(password));
}

int PasswordManager::showModalWindow() {
    if (!m_prompt || m_openPrompt)
        return 0;
    const QScopedValueRollback open(m_openPrompt, m_prompt);
    m_hasEnded = false;
    m_returnCode = 0;
    m_tryCount = 0;
    m_openPrompt->run(
        *this, applicationName(),
        QCoreApplication::translate("PasswordManager", "Enter your %1 password:").arg(applicationName()));
    return m_returnCode;
}

void PasswordManager::okClick(const QString& entered) {
    if (!m_openPrompt || m_hasEnded)
        return;
    if (checkPassword(entered))
        return end(1);
    if (m_tryCount >= mostRetries)
        return end(0);
    m_openPrompt->showWrongEntries(++m_tryCount);
}

// One that was accepted but is still about to go is refused as well: the user has left meanwhile.
void PasswordManager::cancelClick() {
    if (m_openPrompt)
        end(0);
}

void PasswordManager::end(int returnCode) {
    m_returnCode = returnCode;
    if (m_hasEnded)
        return;
    m_hasEnded = true;
    m_openPrompt->close();
}

} // namespace veilkeep
