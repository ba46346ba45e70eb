#pragma once

#include <QImage>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <functional>

namespace veilkeep::drawnImage {

// Where the image of that name lies among the resources; empty where there is none. Names hold no slashes.
QString resourceOf(const QString& name);

// The image in exactly this many pixels, centred where they are no square. Null for a name that there is none
// of.
QImage drawn(const QString& name, QSize pixels);

// What `make` gives, kept in the application's cache of pixmaps under the key and the number of pixels, of
// which there are size times devicePixelRatio.
QPixmap cached(const QString& key, QSize size, qreal devicePixelRatio,
               const std::function<QImage(QSize pixels)>& make);

} // namespace veilkeep::drawnImage
