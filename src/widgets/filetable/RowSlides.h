#pragma once

#include "filelist/FileList.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <unordered_map>

namespace veilkeep {

// Where the switches of painted rows stand: after a change of its state a switch slides from where it was
// painted last. The timer runs as long as one slides. Owned by FilesTableDelegate; main thread.
class RowSlides : public QObject {
    Q_OBJECT

public:
    explicit RowSlides(QObject* parent = nullptr);

    void setDuration(int milliseconds) { m_duration = milliseconds; } // 0: nothing slides
    double position(const ListedFile& file);                          // to be painted now: 0 off to 1 on

signals:
    void moved(); // the rows are to be painted again

private:
    struct Slide {
        std::int32_t state = 0;
        double from = 0;
        qint64 begin = -1; // -1: at rest
    };

    double at(Slide& slide) const;
    void nextFrame();
    void forgetSome();

    std::unordered_map<ListedFile, Slide> m_slides; // rows that were painted lately
    QElapsedTimer m_clock;
    QTimer m_frames;
    int m_duration = 0;
};

} // namespace veilkeep
