#pragma once

#include <QString>
#include <QVariantMap>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// What another program (veilkeepctl above all) asks of whoever owns the list, and what it is told.
namespace veilkeep {

// The exit status of veilkeepctl as well.
enum class RequestStatus : std::int32_t {
    AllWell = 0,
    SomeFailed = 1,
    WrongUsage = 2,
    Refused = 3,
    OwnerSilent = 4, // another process owns the list and did not answer
};

struct Request {
    QString command;                // as veilkeepctl names it: "hide"
    std::vector<std::string> paths; // absolute, bytes
    QVariantMap options;            // what else the command takes, as src/requests says
};

// A question to the person who made the request.
struct Question {
    QString title;
    QString message;
    std::vector<QString> buttons; // the first is the default one, the last cancels
};

// Whoever made a request, while it is being worked on. Main thread.
class RequestCaller {
public:
    virtual ~RequestCaller() = default;

    virtual void itemDone(const std::string& path, const std::string& newPath) = 0;
    virtual void itemFailed(const std::string& path, const QString& reason) = 0;
    virtual void message(const QString& text) = 0;                 // about the request as a whole
    virtual void listed(const std::vector<QVariantMap>& rows) = 0; // of "list" and the like; may come often
    virtual void progress(const QString& stage, const QString& subStage, std::size_t done,
                          std::size_t total) = 0;

    // The number of the button; the last one's where the caller is gone. The event loop turns meanwhile.
    virtual std::size_t ask(const Question& question) = 0;

    // A password, not shown while it is entered; the line says which one. Asked again after wrong entries, of
    // which the caller tells the number. Nothing: cancelled, or there is nobody to ask. The event loop turns
    // meanwhile.
    virtual std::optional<QString> askPassword(const QString& line, int wrongEntries) = 0;

    // Answers the question that is open, if one is, with its last button, and the one for a password with
    // nothing: whoever owns the list must go on.
    virtual void cancelQuestion() = 0;

    // The caller asked to stop after the item in hand, or is gone.
    virtual bool isCancelled() const = 0;

protected:
    RequestCaller() = default;
    RequestCaller(const RequestCaller&) = default;
    RequestCaller& operator=(const RequestCaller&) = default;
};

// Whoever owns the list and works on requests, one after the other. Main thread.
class RequestHandler {
public:
    using Done = std::function<void(RequestStatus)>;

    virtual ~RequestHandler() = default;

    // Works on it now, or when its turn comes: what runs at the moment may lie below on the stack, and could
    // never end if this waited for it. The caller lives until done is called, once, which may be before this
    // returns.
    virtual void handle(const Request& request, RequestCaller& caller, Done done) = 0;

    // Whether the command is handed over at once, even while another request is in hand.
    virtual bool isUrgent(const QString& /*command*/) const { return false; }

protected:
    RequestHandler() = default;
    RequestHandler(const RequestHandler&) = default;
    RequestHandler& operator=(const RequestHandler&) = default;
};

} // namespace veilkeep
