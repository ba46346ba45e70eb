#include "widgets/controls/DragMime.h"

#include "core/base/FileUri.h"
#include "filelist/FilesViewController.h"
#include "groups/GroupDrag.h"

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

constexpr const char* uriListType = "text/uri-list";
constexpr quint32 pathsMark = 0x566b5031, rowsMark = 0x566b5231; // "VkP1", "VkR1"
constexpr qsizetype largestDrag = 64 * 1024 * 1024;
constexpr quint64 largestRow = std::numeric_limits<int>::max(); // as models count

// Mark and count of a list, of which each entry takes at least so many bytes.
std::optional<quint32> readHead(QDataStream& stream, quint32 mark, qsizetype size, qsizetype entrySize) {
    quint32 foundMark = 0, count = 0;
    stream >> foundMark >> count;
    if (stream.status() != QDataStream::Ok || foundMark != mark || count == 0 || size > largestDrag ||
        count > static_cast<quint64>(size) / static_cast<quint64>(entrySize))
        return std::nullopt;
    return count;
}

bool isReadToItsEnd(const QDataStream& stream) {
    return stream.status() == QDataStream::Ok && stream.atEnd();
}

std::optional<std::string> readPath(QDataStream& stream) {
    quint32 size = 0;
    stream >> size;
    if (stream.status() != QDataStream::Ok || size == 0 || size > stream.device()->bytesAvailable())
        return std::nullopt;
    std::string path(size, '\0');
    if (stream.readRawData(path.data(), static_cast<int>(size)) != static_cast<int>(size) ||
        path.find('\0') != std::string::npos)
        return std::nullopt;
    return path;
}

} // namespace

void dragMime::setPaths(QMimeData& data, const std::vector<std::string>& rowPaths) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << pathsMark << static_cast<quint32>(rowPaths.size());
    for (const std::string& path : rowPaths) {
        stream << static_cast<quint32>(path.size());
        stream.writeRawData(path.data(), static_cast<int>(path.size()));
    }
    data.setData(QString::fromLatin1(FilesViewController::filesPasteboardType), bytes);
}

std::optional<std::vector<std::string>> dragMime::paths(const QMimeData& data) {
    const QByteArray bytes = data.data(QString::fromLatin1(FilesViewController::filesPasteboardType));
    QDataStream stream(bytes);
    const auto count = readHead(stream, pathsMark, bytes.size(), sizeof(quint32) + 1);
    if (!count)
        return std::nullopt;
    std::vector<std::string> paths;
    paths.reserve(*count);
    for (quint32 number = 0; number < *count; ++number) {
        auto path = readPath(stream);
        if (!path)
            return std::nullopt;
        paths.push_back(std::move(*path));
    }
    return isReadToItsEnd(stream) ? std::optional(std::move(paths)) : std::nullopt;
}

// Whoever may fill a drag could say that listed items are to go to another group.
std::optional<std::vector<std::string>> dragMime::ownPaths(const QDropEvent& event) {
    return event.source() ? paths(*event.mimeData()) : std::nullopt;
}

void dragMime::setRows(QMimeData& data, const std::vector<std::size_t>& rows) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << rowsMark << static_cast<quint32>(rows.size());
    for (const std::size_t row : rows)
        stream << static_cast<quint64>(row);
    data.setData(QString::fromLatin1(GroupDrag::groupMovePasteboardType), bytes);
}

std::optional<std::vector<std::size_t>> dragMime::rows(const QMimeData& data) {
    const QByteArray bytes = data.data(QString::fromLatin1(GroupDrag::groupMovePasteboardType));
    QDataStream stream(bytes);
    const auto count = readHead(stream, rowsMark, bytes.size(), sizeof(quint64));
    if (!count)
        return std::nullopt;
    std::vector<std::size_t> rows(*count);
    for (std::size_t& row : rows) {
        quint64 number = 0;
        stream >> number;
        if (number > largestRow)
            return std::nullopt;
        row = static_cast<std::size_t>(number);
    }
    return isReadToItsEnd(stream) ? std::optional(std::move(rows)) : std::nullopt;
}

void dragMime::setFileNames(QMimeData& data, const std::vector<std::string>& paths) {
    QByteArray bytes;
    for (const std::string& path : paths)
        bytes += QByteArray::fromStdString(fileUri(path, UriSpelling::Qt)) + "\r\n";
    data.setData(QString::fromLatin1(uriListType), bytes);
}

std::optional<std::vector<std::string>> dragMime::fileNames(const QMimeData& data) {
    const QByteArray bytes = data.data(QString::fromLatin1(uriListType));
    if (bytes.size() > largestDrag)
        return std::nullopt;
    std::vector<std::string> paths;
    std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    while (!rest.empty()) {
        const std::size_t end = rest.find_first_of("\r\n");
        const std::string_view line = rest.substr(0, end);
        if (auto path = pathOfFileUri(line))
            paths.push_back(std::move(*path));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return paths.empty() ? std::nullopt : std::optional(std::move(paths));
}

} // namespace veilkeep
