#include "platform/OpenRequest.h"

#include "core/base/FileUri.h"

namespace veilkeep {

QStringList OpenRequest::uris() const {
    QStringList written;
    for (const std::string& path : paths)
        written.append(QString::fromStdString(fileUri(path, UriSpelling::GLib)));
    return written + links;
}

OpenRequest OpenRequest::fromUris(const QStringList& uris) {
    OpenRequest request;
    for (const QString& uri : uris) {
        if (auto path = pathOfFileUri(uri.toStdString()))
            request.paths.push_back(std::move(*path));
        else
            request.links.append(uri);
    }
    return request;
}

} // namespace veilkeep
