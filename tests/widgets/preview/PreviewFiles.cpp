#include "tests/widgets/preview/PreviewFiles.h"

#include <QBuffer>
#include <QImage>

#include <cstdint>
#include <vector>

namespace veilkeep::test {
namespace {

// As PNG has it (CRC-32 of ISO 3309).
std::uint32_t checksum(const std::string& bytes) {
    std::uint32_t sum = 0xffffffffU;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1U) ^ ((sum & 1U) != 0 ? 0xedb88320U : 0U);
    }
    return ~sum;
}

std::string bigEndian(std::uint32_t number) {
    std::string bytes;
    for (const unsigned int shift : {24U, 16U, 8U, 0U})
        bytes += static_cast<char>(number >> shift & 0xffU);
    return bytes;
}

std::string chunk(const std::string& typeAndData) {
    return bigEndian(static_cast<std::uint32_t>(typeAndData.size() - 4)) + typeAndData +
           bigEndian(checksum(typeAndData));
}

} // namespace

std::string previewFiles::image(const char* format, QSize size, Qt::GlobalColor colour) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, format) ? bytes.toStdString() : std::string();
}

std::string previewFiles::pngOfSize(unsigned int width, unsigned int height) {
    const std::string rgb("\x08\x02\0\0\0", 5);
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR" + bigEndian(width) + bigEndian(height) + rgb) +
           chunk("IDAT" + std::string("\x78\x9c\x03\0\0\0\0\x01", 8)) + chunk("IEND");
}

std::string previewFiles::svg(const std::string& inside) {
    return R"(<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" )"
           R"(width="40" height="20"><rect width="40" height="20" fill="#00ff00"/>)" +
           inside + "</svg>";
}

std::string previewFiles::pdf() {
    const std::string drawing = "1 0 0 rg 20 20 100 100 re f";
    const std::vector<std::string> objects{
        "<</Type/Catalog/Pages 2 0 R>>",
        "<</Type/Pages/Kids[3 0 R 5 0 R]/Count 2>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 300]/Contents 4 0 R>>",
        "<</Length " + std::to_string(drawing.size()) + ">>stream\n" + drawing + "\nendstream",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 300 200]/Contents 4 0 R>>",
    };
    std::string file = "%PDF-1.4\n";
    std::string table = "xref\n0 6\n0000000000 65535 f \n";
    for (std::size_t number = 1; number <= objects.size(); ++number) {
        const std::string offset = std::to_string(file.size());
        table += std::string(10 - offset.size(), '0') + offset + " 00000 n \n";
        file += std::to_string(number) + " 0 obj" + objects[number - 1] + "endobj\n";
    }
    return file + table + "trailer<</Size 6/Root 1 0 R>>\nstartxref\n" + std::to_string(file.size()) +
           "\n%%EOF\n";
}

} // namespace veilkeep::test
