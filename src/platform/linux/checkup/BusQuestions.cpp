#include "platform/linux/checkup/BusQuestions.h"

#include <utility>

namespace veilkeep {

void BusQuestions::start(std::function<void()> askFirst) {
    connect(&m_link, &BusLink::cameUp, this, [this, askFirst = std::move(askFirst)] {
        askFirst();
        letGo();
    });
    connect(&m_link, &BusLink::wentDown, this, [this] { m_open = 0, letGo(); });
    hold();
    m_link.start();
}

void BusQuestions::ask(QDBusMessage call, Answered answered) {
    call.setAutoStartService(false);
    hold();
    m_link.ask(call, *this, [this, answered = std::move(answered)](const QDBusMessage& answer) {
        answered(answer);
        letGo();
    });
}

void BusQuestions::askBus(const char* method, const QVariantList& arguments, Answered answered) {
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage call = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                                       QLatin1String(method));
    call.setArguments(arguments);
    ask(call, std::move(answered));
}

void BusQuestions::askForNames(const char* method, std::function<void(const QStringList& names)> take) {
    askBus(method, {}, [take = std::move(take)](const QDBusMessage& answer) {
        const QVariant names = answeredValue(answer, "as");
        if (names.isValid())
            take(names.toStringList());
    });
}

void BusQuestions::letGo() {
    if (--m_open > 0 || std::exchange(m_isOver, true))
        return;
    emit over();
}

QVariant answeredValue(const QDBusMessage& answer, const char* signature) {
    const bool fits = answer.type() == QDBusMessage::ReplyMessage &&
                      answer.signature() == QLatin1String(signature) && !answer.arguments().isEmpty();
    return fits ? answer.arguments().constFirst() : QVariant();
}

} // namespace veilkeep
