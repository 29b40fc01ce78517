// Pictures of layers on disk.
#pragma once

#include <cstdint>
#include <string>

class QImage;

namespace ServerConstructor {

// Reading takes PNG, BMP, JPEG, GIF, PBM, PGM and PPM, told by the content, whatever else Qt and its plugins
// could read: pictures come with designs, and each decoder more is one more that those may break. Writing
// takes the format of the file's extension. Names are UTF-8 in any locale. What Qt finds odd in a picture
// goes to Qt's own message handler, and what its decoders find broken, to the standard error; neither can be
// turned off from here.
struct LayerImageFile {
    // A larger picture is not loaded: with four to eight bytes a pixel it would need half a gigabyte and
    // more.
    static constexpr std::int64_t maxPixels = std::int64_t{1} << 26;
    static constexpr std::uint64_t maxFileSize = std::uint64_t{1} << 28;

    // The picture, or a null image when the file is missing, is no picture of one of the formats, doesn't
    // tell its size ahead of its pixels, or is too large.
    static QImage load(const std::string &path);

    // Writes the picture; the file appears whole or not at all. False for a null image, an extension that Qt
    // cannot write, and whatever the disk refuses.
    static bool save(const std::string &path, const QImage &image);

    // Mirrors a picture in its file, left to right. False, and the file as it was, when it can't be loaded or
    // saved.
    static bool mirror(const std::string &path);
};

} // namespace ServerConstructor
