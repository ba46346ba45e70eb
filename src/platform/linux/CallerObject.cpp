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

uint CallerObject::Ask(const QString& title, const QString& message, const QStringList& buttons) {
    if (isFromOwner())
        answerInTurn(
            [this, question = Question{title, message, {buttons.begin(), buttons.end()}}]() -> QVariantList {
                return {static_cast<uint>(m_caller.ask(question))};
            });
    return 0;
}

bool CallerObject::AskPassword(const QString& line, uint wrongEntries, QString&) {
    if (isFromOwner())
        answerInTurn([this, line, wrongEntries]() -> QVariantList {
            const auto password = m_caller.askPassword(line, static_cast<int>(wrongEntries));
            return {password.has_value(), password.value_or(QString())};
        });
    return false;
}

// Called again while the event loop turns below an open question that was taken back: the later one waits.
void CallerObject::answerInTurn(Asking asking) {
    setDelayedReply(true);
    const QDBusConnection bus = connection();
    m_questions.push_back({message(), std::move(asking)});
    if (m_isAsking)
        return;
    m_isAsking = true;
    while (!m_questions.empty()) {
        const auto [call, ask] = m_questions.front();
        m_questions.pop_front();
        wakeEventLoop();
        bus.send(call.createReply(ask()));
    }
    m_isAsking = false;
}

void CallerObject::CancelQuestion() {
    if (!isFromOwner())
        return;
    m_questions.clear();
    if (m_isAsking)
        m_caller.cancelQuestion();
}

} // namespace veilkeep
