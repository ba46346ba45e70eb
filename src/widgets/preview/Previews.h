#pragma once

#include "filelist/FileList.h"

#include <QIcon>
#include <QImage>
#include <QObject>
#include <QSize>

#include <memory>

namespace veilkeep {

// Images of what is listed, made on other threads: nothing here waits for a disk. Owned by the program's
// wiring; main thread.
class Previews : public QObject {
    Q_OBJECT

public:
    static constexpr QSize previewSize{150, 150}; // points

    explicit Previews(FileList& files); // not owned
    ~Previews() override;

    // Null as long as there is none. The first call for a record has it made; where none can be made that is
    // not tried again. What was kept goes when a broken record changes its state.
    QImage preview(const ListedFile& file);

    // For the kind of item: a general one until the kind is known.
    QIcon typeIcon(const ListedFile& file);

    // Its kind in words ("PNG image"); empty until it is known.
    QString typeText(const ListedFile& file);

signals:
    void changed(const veilkeep::ListedFile& file); // ask again

private:
    class Private;
    std::unique_ptr<Private> m_private;
};

} // namespace veilkeep
