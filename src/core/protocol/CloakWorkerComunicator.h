#pragma once

#include "core/process/ChildProcess.h"
#include "core/process/Tick.h"
#include "core/protocol/CloakWorkerDelegate.h"
#include "core/protocol/CloakWorkerResult.h"
#include "core/protocol/InProgressFolder.h"
#include "core/protocol/RestoreSummary.h"
#include "core/protocol/SecurityController.h"
#include "core/protocol/WorkerAnswer.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// What workers are told of other programs' traces of the items that they hide.
struct TraceWishes {
    std::optional<bool> cleanRecentItems; // the user's answer; nothing as long as there is none
    bool nobodyThere = false;             // nothing is asked, and without an answer nothing cleaned

    // A user who was asked before is not asked again: without an answer that was kept nothing is cleaned.
    static TraceWishes from(const UserDefaults& defaults, bool nobodyThere = false);
};

// Has items moved by cloakWorker, one process for each, and picks up what workers left behind. Owned by
// whoever keeps the list. Every call blocks; all but restoreFiles belong to one thread, on which the tick is
// called; restoreFiles may run on any number of others at the same time.
class CloakWorkerComunicator {
public:
    // rights is not owned; without it whatever needs administrator rights is refused.
    CloakWorkerComunicator(std::string workerPath, std::string inProgressFolder, Tick tick = {},
                           SecurityController* rights = nullptr);

    void setDelegate(CloakWorkerDelegate* delegate) { m_delegate = delegate; } // not owned, may be null
    void setTraceWishes(const TraceWishes& wishes);

    // Whether workers may ask the person at the screen in windows of their own; at first they may not. What
    // they ask ends unanswered while shouldEnd answers true, and nothing more is asked then. An answer about
    // recent items holds for all further hides until wishes bring one.
    void setMayAsk(bool mayAsk, std::function<bool()> shouldEnd = {});

    // The path is handed on unchanged.
    CloakWorkerResult hideFileWithPath(const std::string& path);
    CloakWorkerResult unhideFileWithPath(const std::string& path);

    // The same with administrator rights, for which the SecurityController must have been authorised.
    CloakWorkerResult privilidgedHideFileWithPath(const std::string& path);
    CloakWorkerResult privilidgedUnhideFileWithPath(const std::string& path);

    CloakWorkerResult hideFileWithPath(const std::string& path, bool andPrivilidges);
    CloakWorkerResult unhideFileWithPath(const std::string& path, bool andPrivilidges);

    // Which item the call after the next is likely to move: its worker gets started while the next call's
    // works, and does nothing until that call comes. Without an item what was started so is given up.
    void expect(WorkerOperation operation, const std::string& path);
    void expectNothing();

    // Hands the records in the in-progress folder to the delegate, the oldest first, and deletes them once
    // the delegate has kept what they said. They stay without one, and where they cannot be read or parsed.
    // What killed workers left half written goes after a day.
    void checkTempFiles();

    // Looks for hidden items below the directory; they arrive as records in the in-progress folder. Unknown,
    // with a line in the log, when the worker did not run to an end of its own. The function is asked now and
    // then whether to end the search early; what is found by then counts. Never ticks.
    RestoreSummary restoreFiles(const std::string& directory, const std::function<bool()>& shouldEnd = {});

private:
    using Arguments = std::vector<std::string>;

    struct WaitingWorker {
        Arguments arguments; // that it would have been started with at its turn
        bool mayAsk = false;
        std::unique_ptr<ChildProcess> process;
    };

    CloakWorkerResult run(WorkerOperation operation, const Arguments& arguments);
    void takeIn(RecentsAnswer answer);
    bool mayAskNow() const;
    std::vector<std::string> variablesForMove(bool mayAsk) const;
    ChildProcessOptions optionsForMove(bool mayAsk);
    std::unique_ptr<ChildProcess> workerFor(const Arguments& arguments);
    void startExpected();
    CloakWorkerResult runPrivilidged(const Arguments& arguments);

    std::string m_workerPath;
    InProgressFolder m_inProgressFolder;
    Tick m_tick;
    SecurityController* m_rights;
    TraceWishes m_wishes;
    std::optional<bool> m_answered; // by the person at the screen, as long as the wishes hold no answer
    bool m_isUnanswered = false;    // the question was put and nobody answered, since the last wishes
    bool m_mayAsk = false;
    std::function<bool()> m_shouldEndQuestions;
    CloakWorkerDelegate* m_delegate = nullptr;
    Arguments m_expected;    // empty for nothing
    WaitingWorker m_waiting; // without a process for none
};

} // namespace veilkeep
