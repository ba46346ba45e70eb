#include "widgets/images/BoundedImage.h"

#include "core/filesystem/ReadWholeFile.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>

#include <algorithm>
#include <array>
#include <cctype>

namespace veilkeep {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t maximumFileSize = std::size_t{64} << 20;
constexpr qint64 maximumPixels = 64'000'000;
constexpr int oversampling = 4; // readers scale roughly; the last step is done well

struct Signature {
    std::string_view bytes;
    const char* format;
};

constexpr std::array<Signature, 8> signatures{{
    {"\x89PNG\r\n\x1A\n"sv, "png"},
    {"\xFF\xD8\xFF"sv, "jpg"},
    {"GIF87a"sv, "gif"},
    {"GIF89a"sv, "gif"},
    {"BM"sv, "bmp"},
    {"II*\0"sv, "tif"},
    {"MM\0*"sv, "tif"},
    {"\0\0\0\x0CjP  \r\n\x87\n"sv, "jp2"},
}};

// None for any other content.
const char* formatOf(std::string_view bytes) {
    const auto* const found = std::find_if(signatures.begin(), signatures.end(), [&](const Signature& each) {
        return bytes.starts_with(each.bytes);
    });
    return found == signatures.end() ? nullptr : found->format;
}

// Qt's readers lose the colours of these when they scale.
bool hasColourTable(QImage::Format format) {
    return format == QImage::Format_Mono || format == QImage::Format_MonoLSB ||
           format == QImage::Format_Indexed8;
}

} // namespace

bool boundedImage::isNamedAsImage(const std::string& name) {
    constexpr std::array extensions{"tif"sv, "tiff"sv, "bmp"sv, "gif"sv, "jpg"sv, "jpeg"sv, "png"sv, "jp2"sv};
    std::string extension = name.substr(std::min(name.rfind('.'), name.size() - 1) + 1);
    for (char& each : extension)
        each = static_cast<char>(std::tolower(static_cast<unsigned char>(each)));
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

QImage boundedImage::decoded(std::string_view bytes, QSize neededSize) {
    const char* const format = formatOf(bytes);
    if (!format || bytes.size() > maximumFileSize)
        return {};
    QByteArray content = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&content);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    const QSize whole = reader.size();
    if (whole.isEmpty() || qint64{whole.width()} * whole.height() > maximumPixels)
        return {};
    const QSize enough = whole.scaled(neededSize * oversampling, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (enough.width() < whole.width() && !hasColourTable(reader.imageFormat()))
        reader.setScaledSize(enough);
    return reader.read();
}

Result<QImage> boundedImage::atPath(const std::string& path, QSize neededSize) {
    if (!isNamedAsImage(path))
        return Error{ErrorCode::NotAFile, "read image", path, 0};
    const Result<std::string> bytes = readWholeFile(path, maximumFileSize);
    if (!bytes)
        return bytes.error();
    const QImage image = decoded(*bytes, neededSize);
    if (image.isNull())
        return Error{ErrorCode::Damaged, "read image", path, 0};
    return image;
}

} // namespace veilkeep
