#pragma once

#include "requests/RequestWork.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace veilkeep {

// Tells whoever made a request what became of the items of its batches. From its making to finish() messages
// are held back, so that nothing is told twice. Lives for one request; main thread.
class BatchReport {
public:
    enum class Move { Hide, Unhide };
    using Names = std::unordered_map<const File*, std::string>;

    // Names: the items that the request names itself, as it names them. Of these it is told where there was
    // nothing to do. The others are named by their visible paths.
    BatchReport(RequestWork& work, Move move, Names names = {});

    // Of the last batch of the list's HideOperations.
    void tellLastBatch();
    void tellLastBatch(const FilesViewController::Files& wanted); // and what an exception kept from it

    void finish();

private:
    std::string nameOf(const ListedFile& file) const;
    void fail(const ListedFile& file, const QString& reason);
    void tellOutcome(const MovedItem& item);

    RequestWork& m_work;
    const Move m_move;
    const Names m_names;
    std::vector<QString> m_reasonsTold;
    std::size_t m_leftAlone = 0; // once the caller asked to stop
};

// What single messages said, once each, without those that are among what was told.
void tellHeldMessages(RequestWork& work, const std::vector<QString>& told);

} // namespace veilkeep
