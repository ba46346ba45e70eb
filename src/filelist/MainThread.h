#pragma once

#include <functional>

class QObject;

namespace veilkeep {

// Runs functions on the thread of the application's event loop. Any thread.
class MainThread {
public:
    static bool isCurrent();

    // Not run any more once the context, an object of the main thread, is gone.
    static void post(QObject* context, std::function<void()> call);

    // Returns once it has run; on the main thread itself that is at once.
    static void runAndWait(const std::function<void()>& call);

    // On the main thread: runs what comes until the condition holds. Input to windows waits.
    static void runUntil(const std::function<bool()>& condition);
};

} // namespace veilkeep
