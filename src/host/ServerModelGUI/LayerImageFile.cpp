// Pictures of layers on disk.
#include "host/ServerModelGUI/LayerImageFile.h"

#include "host/FileSystem/AtomicFile.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/Path.h"

#include <QtCore/QBuffer>
#include <QtGui/QImage>
#include <QtGui/QImageReader>
#include <QtGui/QImageWriter>

#include <string_view>
#include <utility>

namespace ServerConstructor {

namespace {

struct Format {
    const char *name; // as Qt has it
    std::string_view begin;
};

constexpr Format formats[] = {{"png", "\x89PNG\r\n\x1a\n"},
                              {"bmp", "BM"},
                              {"jpeg", "\xff\xd8\xff"},
                              {"gif", "GIF8"},
                              {"pbm", "P1"},
                              {"pbm", "P4"},
                              {"pgm", "P2"},
                              {"pgm", "P5"},
                              {"ppm", "P3"},
                              {"ppm", "P6"}};

// The format of a picture with this content; empty for one that is not taken.
QByteArray formatOf(std::string_view content) {
    for (const Format &format : formats) {
        if (content.substr(0, format.begin.size()) == format.begin) return format.name;
    }
    return {};
}

// The pixels are allocated by what the head of the file says, so that is asked first.
bool isLoadable(const QSize &size) {
    return size.isValid() && !size.isEmpty() &&
           std::int64_t{size.width()} * size.height() <= LayerImageFile::maxPixels;
}

} // namespace

// Files are read and written by the host's own services: Qt would spell names in the encoding of the locale.
QImage LayerImageFile::load(const std::string &path) {
    std::string content;
    std::string error;
    if (!FileSystem::File::readAll(path, content, error, maxFileSize)) return {};
    QByteArray bytes = QByteArray::fromRawData(content.data(), static_cast<int>(content.size()));
    QBuffer buffer(&bytes);
    const QByteArray format = formatOf(content);
    if (format.isEmpty() || !buffer.open(QIODevice::ReadOnly)) return {};
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false); // Else all plugins look at the content.
    return isLoadable(reader.size()) ? reader.read() : QImage();
}

bool LayerImageFile::save(const std::string &path, const QImage &image) {
    if (image.isNull()) return false;
    const std::string format = FileSystem::Path::getFormatExtension(path, true);
    QBuffer buffer;
    QImageWriter writer(&buffer, QByteArray(format.data(), static_cast<int>(format.size())));
    if (format.empty() || !buffer.open(QIODevice::WriteOnly) || !writer.write(image)) return false;
    FileSystem::AtomicFile file(path);
    file.stream().write(buffer.data().constData(), buffer.data().size());
    return file.commit();
}

bool LayerImageFile::mirror(const std::string &path) {
    QImage image = load(path);
    return save(path, std::move(image).mirrored(true, false));
}

} // namespace ServerConstructor
