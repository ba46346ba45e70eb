#include "widgets/images/ProgramImages.h"

#include "core/log/Log.h"
#include "widgets/images/DrawnImage.h"
#include "widgets/images/ProgramImageEngine.h"

namespace veilkeep {
namespace {

QIcon iconNamed(const QString& name, ProgramImageEngine::Colours colours) {
    if (programImage::exists(name))
        return QIcon(new ProgramImageEngine(name, colours));
    logLine("There is no image named \"" + name.toStdString() + "\"");
    return {};
}

} // namespace

QIcon programImage::named(const QString& name) {
    return iconNamed(name, ProgramImageEngine::Colours::Own);
}

QIcon programImage::symbol(const QString& name) {
    return iconNamed(name, ProgramImageEngine::Colours::OfText);
}

QPixmap programImage::symbolPixmap(const QString& name, QSize size, qreal devicePixelRatio,
                                   const QColor& colour) {
    return ProgramImageEngine::symbolPixmap(name, size, devicePixelRatio, colour);
}

bool programImage::exists(const QString& name) {
    return !drawnImage::resourceOf(name).isEmpty();
}

} // namespace veilkeep
