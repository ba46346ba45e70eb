#pragma once

#include <QString>

#include <functional>

namespace veilkeep {

// What the system knows of versions of this program.
struct UpdateOutcome {
    enum class Kind {
        UpToDate,
        Newer,
        NotPackaged, // this copy came from elsewhere
        NoService,
        Failed,
    };

    Kind kind = Kind::Failed;
    QString version;     // Newer: that one; NotPackaged: that of the package, null where there is none
    QString yourVersion; // UpToDate, Newer: of the package that is installed
    QString reason;      // Failed: in the service's words, which may be none
};

// Asks the system for a newer version of this program; nothing is installed. Main thread.
class SoftwareUpdates {
public:
    using WhenKnown = std::function<void(const UpdateOutcome&)>;

    virtual ~SoftwareUpdates() = default;

    // Comes back at once; one question at a time. It may take minutes until the answer is known.
    virtual void check(WhenKnown whenKnown) = 0;
    virtual void cancel() = 0; // nothing is told any more

protected:
    SoftwareUpdates() = default;
    SoftwareUpdates(const SoftwareUpdates&) = default;
    SoftwareUpdates& operator=(const SoftwareUpdates&) = default;
};

} // namespace veilkeep
