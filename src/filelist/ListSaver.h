#pragma once

#include <QString>

namespace veilkeep {

// Keeps the list on the disk, for those who change it. Main thread.
class ListSaver {
public:
    virtual ~ListSaver() = default;

    // Nothing is written where nothing changed. False: the list on the disk is not, or not surely, as it is
    // here.
    virtual bool saveDataToDisk() = 0;

    // The same for a turn that nobody waits for: with 100,000 items a save takes tenths of a second, for
    // which the window is not to stand still. Input to windows waits, and so do the other turns, so that the
    // list stays as it is.
    virtual bool saveWhileEventsRun() = 0;

    // After a false: a sentence, with the path.
    virtual QString whyItCannotBeSaved() const = 0;

protected:
    ListSaver() = default;
    ListSaver(const ListSaver&) = default;
    ListSaver& operator=(const ListSaver&) = default;
};

} // namespace veilkeep
