#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

namespace veilkeep {

class PasswordManager;

// How a prompt moves to say that an entry was wrong: points for its upper left corner to pass in turn, at an
// even pace, ending where it began.
struct Shake {
    std::vector<QPointF> path;
    double seconds = 0;
};
Shake shakeAnimation(const QRectF& rect); // of the prompt's frame

// Shows the question for the password. What is entered goes to PasswordManager::okClick() and cancelClick(),
// which decide what comes next. Main thread.
class PasswordPrompt {
public:
    static constexpr int compactHeight = 114,
                         heightWithWarning = 126; // points, at the same width and top edge

    virtual ~PasswordPrompt() = default;

    // Opens with an empty field, of the compact height and without a warning, and comes back after close().
    virtual void run(PasswordManager& manager, const QString& title, const QString& line) = 0;

    // Says that the entry was wrong, for the first time with the greater height: shakes, keeps what was
    // entered.
    virtual void showWrongEntries(int count) = 0;

    virtual void close() = 0; // run() returns soon

protected:
    PasswordPrompt() = default;
    PasswordPrompt(const PasswordPrompt&) = default;
    PasswordPrompt& operator=(const PasswordPrompt&) = default;
};

} // namespace veilkeep
