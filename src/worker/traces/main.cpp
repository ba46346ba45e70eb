// cloakTraces: removes what other programs remember of items that were hidden.

#include "core/environment/SessionBus.h"
#include "core/environment/TracePlaces.h"
#include "core/log/Log.h"
#include "core/process/Arguments.h"
#include "worker/traces/ActivityStatistics.h"
#include "worker/traces/RecentDocuments.h"
#include "worker/traces/RecentlyUsedFile.h"
#include "worker/traces/Thumbnails.h"
#include "worker/traces/TracedItems.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace veilkeep;

enum ExitStatus { allClean = 0, someLeft = 1, wrongUsage = 2 };

class Cleaning {
public:
    explicit Cleaning(const std::vector<std::string>& paths) : m_items(paths) {}

    bool run() {
        // The activity manager reads the file of recent documents again whenever it changes.
        const bool wasRecent = cleanRecentlyUsed();
        note("recent documents", removeRecentDocuments(m_places.recentDocuments, m_items));
        note("thumbnails", removeThumbnails(m_places.thumbnails, m_items));
        if (const auto done = removeActivityStatistics(sessionBusAddress(), m_items); !done)
            note("activities", done.error());
        if (wasRecent) {
            // A program that was about to add something wrote its whole copy back.
            std::this_thread::sleep_for(std::chrono::seconds(1));
            cleanRecentlyUsed();
        }
        return m_allClean;
    }

private:
    bool cleanRecentlyUsed() {
        return note("recently used files", removeFromRecentlyUsed(m_places.recentlyUsed, m_items));
    }

    bool note(const std::string& what, const Result<bool>& outcome) {
        if (outcome)
            return *outcome;
        logError("Traces were left among " + what, outcome.error());
        m_allClean = false;
        return false;
    }

    TracePlaces m_places = TracePlaces::current();
    TracedItems m_items;
    bool m_allClean = true;
};

} // namespace

int main(int argc, char** argv) {
    const std::span<char* const> all(argv, static_cast<std::size_t>(argc));
    const auto arguments = all.subspan(all.empty() ? 0 : 1);
    const std::vector<std::string> paths(arguments.begin(), arguments.end());
    wipeArguments(arguments);
    bool areAbsolute = !paths.empty();
    for (const std::string& path : paths)
        areAbsolute = areAbsolute && path.starts_with('/');
    if (!areAbsolute) {
        std::fputs("usage: cloakTraces PATH…, absolute paths that items had before they were hidden\n",
                   stderr);
        return wrongUsage;
    }
    if (std::getenv("PKEXEC_UID"))
        return someLeft; // the traces are another user's
    return Cleaning(paths).run() ? allClean : someLeft;
}
