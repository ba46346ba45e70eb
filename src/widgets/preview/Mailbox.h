#pragma once

#include <QMetaObject>
#include <QObject>

#include <functional>
#include <mutex>
#include <utility>

namespace veilkeep {

// Takes calls of other threads to an object of the main thread, as long as that is there.
class Mailbox {
public:
    explicit Mailbox(QObject& receiver) : m_receiver(&receiver) {}

    void close() { // on the main thread, before the receiver goes
        const std::lock_guard lock(m_mutex);
        m_receiver = nullptr;
    }

    void post(std::function<void()> call) { // any thread
        const std::lock_guard lock(m_mutex);
        if (m_receiver)
            QMetaObject::invokeMethod(m_receiver, std::move(call), Qt::QueuedConnection);
    }

private:
    std::mutex m_mutex;
    QObject* m_receiver;
};

} // namespace veilkeep
