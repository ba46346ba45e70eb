#pragma once

#include "alerts/Alert.h"
#include "core/protocol/WorkerAnswer.h"
#include "filelist/BrokenFiles.h"
#include "filelist/FileList.h"
#include "filelist/FilesViewControllerParts.h"
#include "filelist/ItemMover.h"
#include "filelist/ListSaver.h"
#include "filelist/MovedItem.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace veilkeep {

// Hides listed items and brings them back, one or a batch of them. What goes wrong is told at once, in an
// alert for each item, or collected in the list of errors. Owned by FilesViewController; main thread.
class HideOperations : public QObject {
    Q_OBJECT
public:
    using Files = std::vector<ListedFile>;

    HideOperations(const FilesViewControllerParts& parts, FileList& files, BrokenFiles& missing,
                   ListSaver& saver);

    // True when the item is moved or was not in the state to be moved.
    bool hideFile(const ListedFile& file, bool privilidged, bool collectErrors);
    bool unhideFile(const ListedFile& file, bool privilidged, bool collectErrors);

    // True when that holds for all. The list is saved before and after; where it cannot be saved nothing is
    // hidden.
    bool hideFiles(const Files& files, bool collectErrors);
    bool unhideFiles(const Files& files, bool collectErrors);
    const std::vector<MovedItem>& lastBatch() const { return m_lastBatch; } // in the order of its items
    const std::vector<Error>& lastBatchTroubles() const { return m_batchTroubles; } // what may not last

    void addError(const QString& error, const File& forFile);
    void clearErrorList();
    const std::vector<ErrorEntry>& errors() const { return m_errors; }
    // Drops those after the first so many that equal one of the first: a batch that is done again and again
    // while nobody looks tells the same each time.
    void dropRepeatedErrors(std::size_t first);
    int showErrorsMessage(const QString& title, const QString& withInfoText, const QStringList& andButtons);

signals:
    void batchRunningChanged(bool isRunning); // the on/off switch stands apart from the selection meanwhile
    void errorsChanged();

private:
    std::int32_t move(WorkerOperation operation, const ListedFile& file, bool privilidged);
    bool unhideParent(const ListedFile& file, bool collectErrors);
    MovedItem outcomeBefore(const ListedFile& file) const;
    bool mayAuthenticate() const;
    bool mayMovePrivilidgedUnasked();
    bool askToAuthenticate(const QString& title, const QString& message);
    void tell(const QString& title, const QString& message);
    void tellOrCollect(const ListedFile& file, std::int32_t code, bool collectErrors);
    bool runBatch(WorkerOperation operation, const Files& files, bool collectErrors);
    bool moveEach(WorkerOperation operation, const Files& batch, bool collectErrors);
    bool refuseToHide(const Files& batch, bool collectErrors);

    const FilesViewControllerParts m_parts;
    FileList& m_files;
    BrokenFiles& m_missing;
    ListSaver& m_saver;
    ItemMover m_mover;
    std::vector<ErrorEntry> m_errors;
    std::optional<bool> m_rightsAreHeld; // in this batch
    MovedItem m_outcome;                 // of the item in hand
    std::vector<MovedItem> m_lastBatch;
    std::vector<Error> m_batchTroubles;
};

} // namespace veilkeep
