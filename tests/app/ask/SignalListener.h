#pragma once

#include <QDBusMessage>
#include <QObject>

#include <vector>

namespace veilkeep::test {

class SignalListener : public QObject {
    Q_OBJECT

public:
    std::vector<QDBusMessage> heard;

public slots:
    void received(const QDBusMessage& signal) { heard.push_back(signal); }
};

} // namespace veilkeep::test
