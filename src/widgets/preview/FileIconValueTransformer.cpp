#include "widgets/preview/FileIconValueTransformer.h"

#include "core/environment/XdgDirectories.h"
#include "core/log/Log.h"
#include "widgets/images/ProgramImages.h"

#include <string>
#include <utility>

#include <QGuiApplication>

namespace veilkeep {
namespace {

bool isText(const QVariant& value) {
    return value.typeId() == QMetaType::QByteArray || value.typeId() == QMetaType::QString;
}

std::string withoutTilde(std::string path) {
    if (path == "~" || path.starts_with("~/"))
        path.replace(0, 1, homeDirectory());
    return path;
}

QImage imageOfSeveral() {
    return programImage::named(QStringLiteral("MultipleSelection"))
        .pixmap(Previews::pathImageSize, qGuiApp->devicePixelRatio())
        .toImage();
}

std::string described(const QVariant& value) {
    const QString text = value.toString();
    return (text.isEmpty() ? QString::fromLatin1(value.typeName()) : text).toStdString();
}

} // namespace

void FileIconValueTransformer::transformedValue(const QVariant& value, QObject* context,
                                                std::function<void(const QImage& image)> done) {
    if (!isText(value)) {
        logLine("Should be NSString but we have " + described(value));
        return done({});
    }
    const std::string path = withoutTilde(value.toByteArray().toStdString());
    if (path.empty())
        return done(imageOfSeveral());
    m_previews.imageForPath(path, context, [done = std::move(done)](const QImage& image) {
        done(image.isNull() ? imageOfSeveral() : image);
    });
}

} // namespace veilkeep
