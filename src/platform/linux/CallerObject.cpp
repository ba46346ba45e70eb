#include "platform/linux/CallerObject.h"

#include "platform/EventLoop.h"
#include "platform/linux/BusRequest.h"

#include <QDBusConnection>

#include <algorithm>

namespace veilkeep {

bool CallerObject::isFromOwner() {
    if (message().service() == m_owner)
        return true;
    sendErrorReply(accessDenied, QStringLiteral("Only who works on the request may call this."));
    return false;
}

void CallerObject::Accepted() {
    if (isFromOwner())
        m_isAccepted = true;
}

bool CallerObject::Begin() {
    return isFromOwner() && !m_caller.isCancelled();
}

void CallerObject::ItemsDone(const QByteArrayList& paths, const QByteArrayList& newPaths) {
    if (!isFromOwner())
        return;
    for (qsizetype item = 0; item < std::min(paths.size(), newPaths.size()); ++item)
        m_caller.itemDone(paths[item].toStdString(), newPaths[item].toStdString());
}

void CallerObject::ItemFailed(const QByteArray& path, const QString& reason) {
    if (isFromOwner())
        m_caller.itemFailed(path.toStdString(), reason);
}

void CallerObject::Message(const QString& text) {
    if (isFromOwner())
        m_caller.message(text);
}

void CallerObject::Listed(const QList<QVariantMap>& rows) {
    if (!isFromOwner())
        return;
    std::vector<QVariantMap> told;
    for (const QVariantMap& row : rows)
        told.push_back(readValues(row).values);
    m_caller.listed(told);
}

void CallerObject::Progress(const QString& stage, const QString& subStage, qulonglong done,
                            qulonglong total) {
    if (isFromOwner())
        m_caller.progress(stage, subStage, done, total);
}

// Called again while the event loop turns below an open question that was taken back: the later one waits.
uint CallerObject::Ask(const QString& title, const QString& message, const QStringList& buttons) {
    if (!isFromOwner())
        return 0;
    setDelayedReply(true);
    const QDBusConnection bus = connection();
    m_questions.push_back({this->message(), {title, message, {buttons.begin(), buttons.end()}}});
    if (m_isAsking)
        return 0;
    m_isAsking = true;
    while (!m_questions.empty()) {
        const auto [call, question] = m_questions.front();
        m_questions.pop_front();
        wakeEventLoop();
        bus.send(call.createReply(static_cast<uint>(m_caller.ask(question))));
    }
    m_isAsking = false;
    return 0;
}

void CallerObject::CancelQuestion() {
    if (!isFromOwner())
        return;
    m_questions.clear();
    if (m_isAsking)
        m_caller.cancelQuestion();
}

} // namespace veilkeep
