#include "app/OwnUrls.h"

#include "core/log/Log.h"

#include <QStringList>
#include <QUrl>

namespace veilkeep {
namespace {

constexpr qsizetype longestShown = 2048;

QString shown(const QString& url) {
    return url.size() <= longestShown ? url : url.first(longestShown) + QStringLiteral("…");
}

} // namespace

void getUrl(const QString& text) {
    const QUrl url(text);
    if (text.isEmpty() || !url.isValid())
        return logLine("Empty custom URL. Just ignoring this.");
    logLine("Got url to handle: " + shown(text).toStdString());
    if (url.scheme() != QLatin1String("veilkeep"))
        return logLine("Unsupported URL scheme " + shown(url.scheme()).toStdString() +
                       ". Just ignoring this.");
    if (url.query().split(u'&', Qt::SkipEmptyParts).isEmpty())
        return logLine("Empty params in URL. Just ignoring this.");
}

} // namespace veilkeep
