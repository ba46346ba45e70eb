#include "platform/linux/ColorScheme.h"

#include <QDBusVariant>

#include <utility>

namespace veilkeep {
namespace {

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

constexpr unsigned int dark = 1; // 0: no wish, 2: light

} // namespace

ColorScheme::ColorScheme(BusLink& sessionBus) : m_bus(sessionBus), m_portal(sessionBus, {portalName}) {
    connect(&m_portal, &BusOwners::changed, this,
            [this](const QString&, const QString& owner) { talkTo(owner); });
}

// What was told holds while nobody tells anything.
void ColorScheme::talkTo(const QString& portal) {
    m_owner = portal;
    if (portal.isEmpty())
        return;
    m_bus.hook(portal, portalPath, settings, "SettingChanged", this, SLOT(settingChanged(QDBusMessage)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(portal, portalPath, settings, QStringLiteral("Read"));
    question << appearance << colorScheme;
    m_bus.ask(question, *this, [this, portal](const QDBusMessage& answer) {
        if (portal == m_owner && answer.type() == QDBusMessage::ReplyMessage)
            take(answer.arguments().value(0));
    });
}

void ColorScheme::settingChanged(const QDBusMessage& signal) {
    const QVariantList told = signal.arguments();
    if (signal.service() == m_owner && told.size() == 3 && told[0] == appearance && told[1] == colorScheme)
        take(told[2]);
}

// A number within one variant, or two of them.
void ColorScheme::take(QVariant value) {
    for (int depth = 0; depth < 2 && value.canConvert<QDBusVariant>(); ++depth)
        value = value.value<QDBusVariant>().variant();
    const bool isDark = value.toUInt() == dark;
    if (std::exchange(m_isDark, isDark) != isDark)
        emit darkChanged(isDark);
}

} // namespace veilkeep
