// Generated pictures of layers.
#pragma once

#include "support/TempFolder.h"

#include <QtGui/QImage>

#include <initializer_list>
#include <string>

namespace TestSupport {

constexpr QRgb copper = 0xffb87333;
constexpr QRgb resin = 0xff208020;

// A picture of these rows: '#' is copper, '.' is resin, ' ' is transparent copper.
inline QImage picture(std::initializer_list<std::string> rows) {
    const int width = static_cast<int>(rows.begin()->size());
    QImage image(width, static_cast<int>(rows.size()), QImage::Format_ARGB32);
    int y = 0;
    for (const std::string &row : rows) {
        for (int x = 0; x < width; ++x) {
            const char c = row[static_cast<std::size_t>(x)];
            image.setPixel(x, y, c == '#' ? copper : c == '.' ? resin : copper & 0xffffff);
        }
        ++y;
    }
    return image;
}

// The same way back, of what a file holds; "<missing>" for no picture.
inline std::string rowsOf(const std::string &file) {
    const QImage image(QString::fromStdString(file));
    if (image.isNull()) return "<missing>";
    std::string rows;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            rows += qAlpha(pixel) == 0 ? ' ' : pixel == copper ? '#' : pixel == resin ? '.' : '?';
        }
        rows += '\n';
    }
    return rows;
}

inline std::string save(const TempFolder &folder, const std::string &name, const QImage &image) {
    const std::string path = folder.path(name);
    if (!image.save(QString::fromStdString(path))) throw std::runtime_error("cannot save " + path);
    return path;
}

// Bytes of a number, the least first.
inline std::string littleEndian(unsigned value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i, value >>= 8)
        text += static_cast<char>(value & 255);
    return text;
}

// A drawing and an icon of 1 by 1: pictures, but of no format for layers.
inline std::string drawing() {
    return R"(<svg xmlns="http://www.w3.org/2000/svg" width="1" height="1"><rect width="1" height="1"/></svg>)";
}
inline std::string icon() {
    const auto number = littleEndian;
    const std::string bitmap = number(40, 4) + number(1, 4) + number(2, 4) + number(1, 2) + number(32, 2) +
                               std::string(24, '\0') + number(copper, 4) + number(0, 4);
    return number(0, 2) + number(1, 2) + number(1, 2) + number(1, 1) + number(1, 1) + number(0, 2) +
           number(1, 2) + number(32, 2) + number(static_cast<unsigned>(bitmap.size()), 4) + number(22, 4) +
           bitmap;
}

// A bitmap file that claims a size and has no pixels.
inline std::string emptyBitmap(unsigned width, unsigned height) {
    const auto number = littleEndian;
    return "BM" + number(54, 4) + number(0, 4) + number(54, 4) + number(40, 4) + number(width, 4) +
           number(height, 4) + number(1, 2) + number(24, 2) + std::string(24, '\0');
}

} // namespace TestSupport
