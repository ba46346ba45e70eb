#pragma once

#include "filelist/FileList.h"

#include <QIcon>
#include <QImage>
#include <QObject>
#include <QSize>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace veilkeep {

class PreviewMaker;

struct PreviewOptions {
    int threads = 2;
    std::size_t mostWaiting = 256;              // requests; beyond that the oldest is forgotten
    qsizetype cacheBytes = qsizetype{48} << 20; // of images that are kept
    std::chrono::milliseconds thumbnailerLimit = std::chrono::seconds(10);
    qreal devicePixelRatio = 0; // 0: the application's
};

// Images of what is listed, made on other threads: nothing here waits for a disk. What is wanted last is made
// first. Owned by the program's wiring; main thread.
class Previews : public QObject {
    Q_OBJECT

public:
    static constexpr QSize previewSize{150, 150}; // points
    static constexpr QSize pathImageSize{128, 128};

    explicit Previews(FileList& files, const PreviewOptions& options = {}); // not owned
    ~Previews() override;

    // Of at most previewSize, with its proportions. Null as long as there is none. The first call for a
    // record has it made; where none can be made that is not tried again, and typeIcon() stands for it.
    // Broken records are passed over. What was kept goes when a record that had been broken before changes
    // its state.
    QImage preview(const ListedFile& file);

    // For the kind of item: a general one until the kind is known.
    QIcon typeIcon(const ListedFile& file);

    // Its kind in words ("PNG image"); empty until it is known.
    QString typeText(const ListedFile& file);

    // The preview of what lies at the path, or its type's icon, of at most pathImageSize; null where nothing
    // lies there. Told later, once, and not at all where the context is gone or many were asked for since.
    void imageForPath(const std::string& path, QObject* context,
                      std::function<void(const QImage& image)> done);

    // For the one or two more that show items in other sizes, on threads of their own. Shared with them.
    std::shared_ptr<const PreviewMaker> maker() const;

signals:
    void changed(const veilkeep::ListedFile& file); // ask again

private:
    class Private;
    std::unique_ptr<Private> m_private;
};

} // namespace veilkeep
