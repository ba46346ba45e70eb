#pragma once

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace veilkeep {

// What somebody asks this program to open: items by their absolute paths, and URIs of other kinds as they
// were written. Neither has been looked at; nothing at all asks for the window.
struct OpenRequest {
    std::vector<std::string> paths;
    QStringList links;
    bool shows = false; // listed items are selected rather than added

    bool isEmpty() const { return paths.empty() && links.isEmpty(); }
    QStringList uris() const;

    static OpenRequest fromUris(const QStringList& uris);

    bool operator==(const OpenRequest&) const = default;
};

} // namespace veilkeep
