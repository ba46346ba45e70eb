#include "platform/linux/RemoteCaller.h"

#include "platform/EventLoop.h"
#include "platform/linux/BusRequest.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr std::chrono::milliseconds collectingTime(100);
constexpr qsizetype mostItems = 1'000;  // in one message
constexpr std::size_t mostRows = 1'000; // in one message
constexpr int beginLimit = 10'000;      // milliseconds; a caller that does not answer holds up the next

} // namespace

RemoteCaller::RemoteCaller(QDBusConnection connection, QDBusMessage run, QString object, Request request,
                           std::function<void()> lookAtBus)
    : m_connection(std::move(connection)),
      m_run(std::move(run)),
      m_object(std::move(object)),
      m_request(std::move(request)),
      m_lookAtBus(std::move(lookAtBus)) {}

QDBusMessage RemoteCaller::callTo(const char* method, const QVariantList& arguments) const {
    QDBusMessage call =
        QDBusMessage::createMethodCall(sender(), m_object, callerInterface, QLatin1String(method));
    call.setArguments(arguments);
    return call;
}

// What was collected comes first, so that the caller is told in the order of events.
void RemoteCaller::send(const char* method, const QVariantList& arguments) {
    sendItems();
    m_connection.send(callTo(method, arguments));
}

void RemoteCaller::sendItems() {
    m_itemsSent = Clock::now();
    if (m_donePaths.isEmpty())
        return;
    m_connection.send(
        callTo("ItemsDone", {QVariant::fromValue(m_donePaths), QVariant::fromValue(m_newPaths)}));
    m_donePaths.clear();
    m_newPaths.clear();
}

void RemoteCaller::tellAccepted() const {
    m_connection.send(callTo("Accepted", {}));
}

QDBusPendingCall RemoteCaller::askWhetherToBegin() const {
    return m_connection.asyncCall(callTo("Begin", {}), beginLimit);
}

void RemoteCaller::finish(RequestStatus status) {
    sendItems();
    m_connection.send(m_run.createReply(static_cast<int>(status)));
}

void RemoteCaller::cancel() {
    m_isCancelled = true;
    cancelQuestion();
}

void RemoteCaller::itemDone(const std::string& path, const std::string& newPath) {
    m_donePaths.append(QByteArray::fromStdString(path));
    m_newPaths.append(QByteArray::fromStdString(newPath));
    if (m_donePaths.size() >= mostItems || Clock::now() - m_itemsSent >= collectingTime)
        sendItems();
}

void RemoteCaller::itemFailed(const std::string& path, const QString& reason) {
    send("ItemFailed", {QByteArray::fromStdString(path), reason});
}

void RemoteCaller::message(const QString& text) {
    send("Message", {text});
}

void RemoteCaller::listed(const std::vector<QVariantMap>& rows) {
    for (std::size_t first = 0; first < rows.size(); first += mostRows) {
        QList<QVariantMap> sent;
        for (std::size_t row = first; row < std::min(rows.size(), first + mostRows); ++row)
            sent.append(busValues(rows[row]));
        send("Listed", {QVariant::fromValue(sent)});
    }
}

void RemoteCaller::progress(const QString& stage, const QString& subStage, std::size_t done,
                            std::size_t total) {
    const bool isNews = stage != m_stage || subStage != m_subStage || done == total;
    if (!isNews && Clock::now() - m_progressSent < collectingTime)
        return;
    m_stage = stage;
    m_subStage = subStage;
    m_progressSent = Clock::now();
    send("Progress", {stage, subStage, static_cast<qulonglong>(done), static_cast<qulonglong>(total)});
}

std::size_t RemoteCaller::ask(const Question& question) {
    const std::size_t count = question.buttons.size();
    const std::size_t last = count == 0 ? 0 : count - 1;
    if (isCancelled())
        return last;
    sendItems();
    const QStringList buttons(question.buttons.begin(), question.buttons.end());
    const QDBusPendingReply<uint> reply =
        m_connection.asyncCall(callTo("Ask", {question.title, question.message, buttons}), withoutLimit);
    return !waitFor(reply) || reply.isError() ? last : std::min<std::size_t>(reply.value(), last);
}

std::optional<QString> RemoteCaller::askPassword(const QString& line, int wrongEntries) {
    if (isCancelled())
        return std::nullopt;
    sendItems();
    const QDBusPendingReply<bool, QString> reply =
        m_connection.asyncCall(callTo("AskPassword", {line, static_cast<uint>(wrongEntries)}), withoutLimit);
    const bool isGiven = waitFor(reply) && !reply.isError() && reply.argumentAt<0>();
    return isGiven ? std::optional(reply.argumentAt<1>()) : std::nullopt;
}

bool RemoteCaller::waitFor(const QDBusPendingCall& question) {
    const QDBusPendingCallWatcher answer(question);
    QEventLoop loop;
    QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    m_questions.push_back(&loop);
    wakeEventLoop();
    if (!answer.isFinished())
        loop.exec();
    std::erase(m_questions, &loop);
    return !m_isCancelled && answer.isFinished();
}

void RemoteCaller::cancelQuestion() {
    if (m_questions.empty())
        return;
    for (QEventLoop* const question : m_questions)
        question->quit();
    send("CancelQuestion", {});
}

bool RemoteCaller::isCancelled() const {
    m_lookAtBus();
    return m_isCancelled;
}

} // namespace veilkeep
