// Pictures of layers on disk.
#include "host/ServerModelGUI/LayerImageFile.h"

#include "support/LayerPictures.h"

#include <gmock/gmock.h>
#include <QtGui/QImageReader>
#include <QtGui/QImageWriter>

using namespace TestSupport;
using ServerConstructor::LayerImageFile;

namespace {

const std::string umlaut = "\xc3\xa4.png";

} // namespace

TEST(LayerImageFile, APictureComesBackAsItWasSaved) {
    const TempFolder folder;
    const QImage image = picture({"#..", ".. "});
    for (const char *name : {"a.png", "a.PNG", "a.b.bmp"}) {
        ASSERT_TRUE(LayerImageFile::save(folder.path(name), image)) << name;
        const QImage loaded = LayerImageFile::load(folder.path(name));
        EXPECT_EQ(loaded.size(), image.size()) << name;
        EXPECT_EQ(loaded.pixel(0, 0), copper) << name;
        EXPECT_EQ(loaded.pixel(1, 1), resin) << name;
    }
}

TEST(LayerImageFile, NamesAreUtf8InAnyLocale) {
    const TempFolder folder;
    ASSERT_TRUE(LayerImageFile::save(folder.path(umlaut), picture({"#."})));
    EXPECT_NE(folder.read(umlaut), "<missing>");
    EXPECT_EQ(LayerImageFile::load(folder.path(umlaut)).width(), 2);
}

TEST(LayerImageFile, TheContentTellsTheFormat) {
    const TempFolder folder;
    save(folder, "a.png", picture({"#."}));
    folder.write("b.bmp", folder.read("a.png"));
    EXPECT_EQ(LayerImageFile::load(folder.path("b.bmp")).width(), 2);
}

TEST(LayerImageFile, TheUsualFormatsOfPicturesAreTaken) {
    const TempFolder folder;
    for (const char *format : {"png", "bmp", "jpg", "ppm", "pgm", "pbm"}) {
        if (!QImageWriter::supportedImageFormats().contains(format)) continue;
        const std::string file = save(folder, std::string("a.") + format, picture({"#..", "##."}));
        EXPECT_EQ(LayerImageFile::load(file).width(), 3) << format;
    }
    for (const std::string text : {"P1 1 1 0", "P2 1 1 255 7", "P3 1 1 255 7 7 7"})
        EXPECT_EQ(LayerImageFile::load(folder.write("a", text)).width(), 1) << text;
    if (!QImageReader::supportedImageFormats().contains("gif")) return;
    const std::string gif("GIF89a\1\0\1\0\x80\0\0\xff\xff\xff\0\0\0,\0\0\0\0\1\0\1\0\0\2\2\x44\1\0;", 35);
    EXPECT_EQ(LayerImageFile::load(folder.write("a", gif)).width(), 1);
}

TEST(LayerImageFile, OtherFormatsAreNotWhateverTheFileIsCalled) {
    const TempFolder folder;
    save(folder, "a.xpm", picture({"#."}));
    const std::string bytes[] = {drawing(), icon(), folder.read("a.xpm"),
                                 "<?xml version=\"1.0\"?>" + drawing()};
    for (const char *name : {"a.png", "a.svg", "a.ico", "a"}) {
        for (const std::string &content : bytes)
            EXPECT_TRUE(LayerImageFile::load(folder.write(name, content)).isNull()) << name;
    }
}

TEST(LayerImageFile, TheOtherFormatsOfTheTestsArePicturesToQt) {
    const std::string bytes = icon();
    if (!QImageReader::supportedImageFormats().contains("ico"))
        GTEST_SKIP() << "there is no decoder of icons";
    EXPECT_EQ(QImage::fromData(QByteArray(bytes.data(), static_cast<int>(bytes.size()))).width(), 1);
}

TEST(LayerImageFile, WhatIsNoPictureIsANullImage) {
    const TempFolder folder;
    EXPECT_TRUE(LayerImageFile::load(folder.path("missing.png")).isNull());
    EXPECT_TRUE(LayerImageFile::load(folder.path()).isNull());
    EXPECT_TRUE(LayerImageFile::load("").isNull());
    for (const std::string &bytes : {std::string(), std::string("P"), std::string("not a picture"),
                                     std::string(5000, '\0'), emptyBitmap(0, 0)})
        EXPECT_TRUE(LayerImageFile::load(folder.write("a.png", bytes)).isNull()) << bytes.size();
}

TEST(LayerImageFile, EveryPrefixOfAPictureEndsInAnImageOrNone) {
    const TempFolder folder;
    save(folder, "whole.png", picture({"#..#", ".##.", "#  #"}));
    const std::string whole = folder.read("whole.png");
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const QImage image = LayerImageFile::load(folder.write("cut.png", whole.substr(0, size)));
        EXPECT_TRUE(image.isNull() || image.width() == 4) << size;
    }
}

TEST(LayerImageFile, APictureThatClaimsAMonstrousSizeIsNotLoaded) {
    const TempFolder folder;
    for (const auto &[width, height] : {std::pair(8193u, 8192u), std::pair(60000u, 60000u),
                                        std::pair(0x7fffffffu, 0x7fffffffu), std::pair(0x7fffffffu, 1u)})
        EXPECT_TRUE(LayerImageFile::load(folder.write("a.bmp", emptyBitmap(width, height))).isNull())
            << width;
}

TEST(LayerImageFile, AnExtensionThatCannotBeWrittenLeavesTheFile) {
    const TempFolder folder;
    for (const char *name : {"a", "a.", "a.gerber", "a.png/b"})
        EXPECT_FALSE(LayerImageFile::save(folder.path(name), picture({"#"}))) << name;
    EXPECT_EQ(folder.numEntries(), 0u);
    EXPECT_FALSE(LayerImageFile::save(folder.path("none.png"), QImage()));
    EXPECT_EQ(folder.numEntries(), 0u);
}

TEST(LayerImageFile, MirroringTurnsLeftAndRight) {
    const TempFolder folder;
    const std::string file = save(folder, "a.png", picture({"#..", "##."}));
    ASSERT_TRUE(LayerImageFile::mirror(file));
    EXPECT_EQ(rowsOf(file), "..#\n.##\n");
}

TEST(LayerImageFile, AFileThatCannotBeMirroredStaysAsItWas) {
    const TempFolder folder;
    EXPECT_FALSE(LayerImageFile::mirror(folder.write("a.png", "no picture")));
    EXPECT_EQ(folder.read("a.png"), "no picture");
    EXPECT_FALSE(LayerImageFile::mirror(folder.path("missing.png")));
    EXPECT_EQ(folder.numEntries(), 1u);
}
