#pragma once

#include "platform/Request.h"

#include <QByteArrayList>
#include <QDBusContext>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <deque>
#include <functional>
#include <utility>

namespace veilkeep {

// What the program that works on a request calls on the one that made it: hands everything to a RequestCaller
// and takes calls from that one connection only. Owned by RequestClient::run; the thread of its event loop.
class CallerObject : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.ostrel.Veilkeep.Caller1")

public:
    CallerObject(RequestCaller& caller, QString owner) : m_caller(caller), m_owner(std::move(owner)) {}

    bool isAccepted() const { return m_isAccepted; }

public slots:
    Q_SCRIPTABLE void Accepted();
    Q_SCRIPTABLE bool Begin();
    Q_SCRIPTABLE void ItemsDone(const QByteArrayList& paths, const QByteArrayList& newPaths);
    Q_SCRIPTABLE void ItemFailed(const QByteArray& path, const QString& reason);
    Q_SCRIPTABLE void Message(const QString& text);
    Q_SCRIPTABLE void Listed(const QList<QVariantMap>& rows);
    Q_SCRIPTABLE void Progress(const QString& stage, const QString& subStage, qulonglong done,
                               qulonglong total);
    Q_SCRIPTABLE uint Ask(const QString& title, const QString& message, const QStringList& buttons);
    Q_SCRIPTABLE bool AskPassword(const QString& line, uint wrongEntries, QString& password);
    Q_SCRIPTABLE void CancelQuestion();

private:
    using Asking = std::function<QVariantList()>; // answers with what the call is answered with

    bool isFromOwner(); // refuses other callers
    void answerInTurn(Asking asking);

    RequestCaller& m_caller;
    QString m_owner;
    bool m_isAccepted = false;
    bool m_isAsking = false;
    std::deque<std::pair<QDBusMessage, Asking>> m_questions; // behind the open one
};

} // namespace veilkeep
