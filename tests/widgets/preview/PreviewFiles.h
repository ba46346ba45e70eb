#pragma once

#include <QByteArray>
#include <QSize>

#include <string>

namespace veilkeep::test {

// Contents of files of many kinds.
namespace previewFiles {

std::string image(const char* format, QSize size, Qt::GlobalColor colour = Qt::red);
std::string pngOfSize(unsigned int width, unsigned int height); // a header that promises so much, and no data
std::string svg(const std::string& inside = {});
std::string pdf(); // two pages, 200 x 300 and 300 x 200

} // namespace previewFiles

} // namespace veilkeep::test
