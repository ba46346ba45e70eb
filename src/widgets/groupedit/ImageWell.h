#pragma once

#include "core/records/Group.h"

#include <QByteArray>
#include <QWidget>

#include <string>

class QMimeData;

namespace veilkeep {

// Shows the icon of a group, and takes an image file or an image that is dropped on it. Main thread.
class ImageWell : public QWidget {
    Q_OBJECT

public:
    static constexpr QSize mostOfImage{42, 42};

    explicit ImageWell(QWidget* parent = nullptr);

    void setIconOf(const Group& lookingLike);

signals:
    // Once the other program is through with its drag.
    void fileDropped(const std::string& path);
    void imageDropped(const QByteArray& bytes);

protected:
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void setHovered(bool isHovered);

    Group m_lookingLike;
    bool m_isHovered = false; // by what may be dropped
};

} // namespace veilkeep
