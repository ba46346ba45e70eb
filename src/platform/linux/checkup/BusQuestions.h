#pragma once

#include "platform/linux/BusLink.h"

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <functional>

namespace veilkeep {

// A round of questions to one bus and those on it, all under way at once, of which none starts a service.
// Main thread.
class BusQuestions : public QObject {
    Q_OBJECT

public:
    explicit BusQuestions(BusLink::Bus bus) : m_link(bus) {}

    // The bus has to be one that answers. Whatever is to be asked at first is asked by the function.
    void start(std::function<void()> askFirst);

    // Whoever gives no answer keeps the round open.
    using Answered = std::function<void(const QDBusMessage& answer)>;
    void ask(QDBusMessage call, Answered answered);
    void askBus(const char* method, const QVariantList& arguments, Answered answered);

    // Names are taken only where the bus tells them.
    void askForNames(const char* method, std::function<void(const QStringList& names)> take);

    // Something else than an answer is waited for, and came.
    void hold() { ++m_open; }
    void letGo();

    BusLink& link() { return m_link; }
    bool isOver() const { return m_isOver; }

signals:
    void over();

private:
    BusLink m_link;
    int m_open = 0;
    bool m_isOver = false;
};

// The first value of an answer where it is of that D-Bus signature, else an invalid one.
QVariant answeredValue(const QDBusMessage& answer, const char* signature);

} // namespace veilkeep
