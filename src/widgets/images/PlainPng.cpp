#include "widgets/images/PlainPng.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace veilkeep {
namespace {

using namespace std::string_view_literals;

std::string bigEndian(std::uint32_t number) {
    std::string bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes += static_cast<char>(number >> shift & 0xFF);
    return bytes;
}

// The sum of ISO 3309, which ends each chunk.
std::uint32_t sumOf(std::string_view bytes) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

std::string chunk(std::string_view name, std::string_view content) {
    std::string named(name);
    named += content;
    return bigEndian(static_cast<std::uint32_t>(content.size())) + named + bigEndian(sumOf(named));
}

// Each row behind the number of its filter, none.
std::string rowsOf(const QImage& image) {
    std::string rows;
    const auto width = static_cast<std::size_t>(image.width()) * 4;
    for (int y = 0; y < image.height(); ++y) {
        rows += '\0';
        rows.append(reinterpret_cast<const char*>(image.constScanLine(y)), width);
    }
    return rows;
}

} // namespace

std::string plainPng(const QImage& image) {
    const std::string rows = rowsOf(image.convertToFormat(QImage::Format_RGBA8888));
    const QByteArray packed =
        qCompress(QByteArray::fromRawData(rows.data(), static_cast<qsizetype>(rows.size())), 9);
    constexpr int sizeInFront = 4; // Qt's, before what zlib made
    const auto packedSize = static_cast<std::size_t>(packed.size() - sizeInFront);
    const std::string size = bigEndian(static_cast<std::uint32_t>(image.width())) +
                             bigEndian(static_cast<std::uint32_t>(image.height()));
    constexpr auto eightBitsRgba = "\x08\x06\0\0\0"sv;
    return std::string("\x89PNG\r\n\x1A\n") + chunk("IHDR", size + std::string(eightBitsRgba)) +
           chunk("IDAT", {packed.constData() + sizeInFront, packedSize}) + chunk("IEND", {});
}

} // namespace veilkeep
