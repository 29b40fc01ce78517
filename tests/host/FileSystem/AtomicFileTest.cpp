// Output files that appear whole or not at all.
#include "host/FileSystem/AtomicFile.h"
#include "host/FileSystem/FFofstream.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

using FileSystem::AtomicFile;
using FileSystem::FFofstream;
using TestSupport::TempFolder;
namespace fs = std::filesystem;

TEST(AtomicFile, TargetAppearsWithCommit) {
    const TempFolder folder;
    AtomicFile file(folder.path("a \xC3\xA4"));
    ASSERT_TRUE(file.isOpen()) << file.error();
    file.stream() << "line\n" << 1.5;
    EXPECT_EQ(folder.read("a \xC3\xA4"), "<missing>");
    EXPECT_TRUE(file.commit()) << file.error();
    EXPECT_EQ(folder.read("a \xC3\xA4"), "line\n1.5");
    EXPECT_EQ(folder.numEntries(), 1u);
    EXPECT_FALSE(file.isOpen());
}

TEST(AtomicFile, OldContentStaysUntilCommit) {
    const TempFolder folder;
    folder.write("a", "old");
    {
        AtomicFile file(folder.path("a"));
        file.stream() << "new";
        file.stream().flush();
        EXPECT_EQ(folder.read("a"), "old");
    }
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST(AtomicFile, DiscardRemovesWhatWasWritten) {
    const TempFolder folder;
    AtomicFile file(folder.path("a"));
    file.stream() << "new";
    file.discard();
    EXPECT_EQ(folder.numEntries(), 0u);
    EXPECT_FALSE(file.commit());
    file.stream() << "into nothing";
    EXPECT_EQ(folder.numEntries(), 0u);
}

TEST(AtomicFile, SecondCommitIsFalse) {
    const TempFolder folder;
    AtomicFile file(folder.path("a"));
    EXPECT_TRUE(file.commit());
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(folder.read("a"), "");
}

TEST(AtomicFile, ContentOfAnySizeAndPieceIsWhole) {
    const TempFolder folder;
    AtomicFile file(folder.path("a"));
    std::string expected;
    for (const std::size_t size : {1u, 65535u, 65536u, 65537u, 7u, 200000u}) {
        const std::string piece(size, static_cast<char>('a' + size % 26));
        file.stream() << piece;
        expected += piece;
    }
    for (int i = 0; i < 70000; ++i)
        file.stream().put('z');
    expected.append(70000, 'z');
    ASSERT_TRUE(file.commit());
    EXPECT_TRUE(folder.read("a") == expected);
}

TEST(AtomicFile, MissingFolderIsNamed) {
    const TempFolder folder;
    AtomicFile file(folder.path("none/a"));
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(file.error(), folder.path("none/a") + ": " +
                                std::make_error_code(std::errc::no_such_file_or_directory).message());
    file.stream() << "x";
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(folder.numEntries(), 0u);
}

TEST(AtomicFile, EmptyNameIsAFailure) {
    AtomicFile file("");
    file.stream() << "x";
    EXPECT_FALSE(file.commit());
    EXPECT_NE(file.error(), "");
}

TEST(AtomicFile, FolderIsNoTarget) {
    const TempFolder folder;
    AtomicFile file(folder.path());
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(file.error(), folder.path() + ": is a folder");
}

TEST(AtomicFile, ReadOnlyTargetIsNotReplaced) {
    const TempFolder folder;
    const std::string name = folder.write("a", "old");
    fs::permissions(fs::u8path(name), fs::perms::owner_read);
    AtomicFile file(name);
    EXPECT_EQ(file.error(), name + ": is read-only");
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(folder.read("a"), "old");
    fs::permissions(fs::u8path(name), fs::perms::owner_all);
}

#ifndef _WIN32
TEST(AtomicFile, DeviceIsNotReplaced) {
    AtomicFile file("/dev/null");
    EXPECT_EQ(file.error(), "/dev/null: is not a regular file");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(AtomicFile, FullDiskIsReported) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
    AtomicFile file("/dev/full");
    EXPECT_FALSE(file.commit());
}

TEST(AtomicFile, PermissionsOfTheTargetStay) {
    const TempFolder folder;
    const fs::path name = fs::u8path(folder.write("a", "old"));
    const fs::perms wanted = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
    fs::permissions(name, wanted);
    AtomicFile file(name.u8string());
    ASSERT_TRUE(file.commit());
    EXPECT_EQ(fs::status(name).permissions(), wanted);
}

TEST(AtomicFile, LinkStaysAndItsFileIsReplaced) {
    const TempFolder folder;
    const std::string name = folder.write("real", "old");
    fs::create_symlink(name, folder.path("link"));
    AtomicFile file(folder.path("link"));
    file.stream() << "new";
    ASSERT_TRUE(file.commit()) << file.error();
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
    EXPECT_EQ(folder.read("real"), "new");
}

TEST(AtomicFile, LongestNameCanBeWritten) {
    const TempFolder folder;
    const std::string name(255, 'n');
    AtomicFile file(folder.path(name));
    EXPECT_TRUE(file.commit()) << file.error();
    AtomicFile tooLong(folder.path(name + "n"));
    EXPECT_FALSE(tooLong.isOpen() && tooLong.commit());
    EXPECT_EQ(folder.numEntries(), 1u);
}
#endif

TEST(AtomicFile, TargetThatBecomesAFolderIsAFailure) {
    const TempFolder folder;
    AtomicFile file(folder.path("a"));
    fs::create_directory(fs::u8path(folder.path("a")));
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(file.error().rfind(folder.path("a") + ": ", 0), 0u) << file.error();
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST(FFofstream, ClosingPutsTheFileInPlace) {
    const TempFolder folder;
    FFofstream stream(folder.path("\xC3\xA4"));
    stream << "R," << 2.5 << "\n";
    stream.getStream() << 1000000;
    EXPECT_EQ(folder.read("\xC3\xA4"), "<missing>");
    EXPECT_TRUE(stream.close());
    EXPECT_EQ(folder.read("\xC3\xA4"), "R,2.5\n1000000");
    EXPECT_FALSE(stream.close());
}

TEST(FFofstream, DestructorClosesToo) {
    const TempFolder folder;
    { FFofstream(folder.path("a")) << "text"; }
    EXPECT_EQ(folder.read("a"), "text");
}

TEST(FFofstream, ExceptionLeavesTheTargetAsItWas) {
    const TempFolder folder;
    folder.write("a", "old");
    try {
        FFofstream stream(folder.path("a"));
        stream << "half";
        throw std::runtime_error("x");
    } catch (const std::runtime_error &) {
    }
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST(FFofstream, StreamThatFailedLeavesTheTargetAsItWas) {
    const TempFolder folder;
    folder.write("a", "old");
    FFofstream stream(folder.path("a"));
    stream << "half";
    stream.setstate(std::ios::badbit);
    EXPECT_FALSE(stream.close());
    EXPECT_EQ(folder.read("a"), "old");
}

TEST(FFofstream, StreamThatCannotOpenDropsWhatItIsGiven) {
    const TempFolder folder;
    FFofstream stream(folder.path("none/a"));
    EXPECT_FALSE(stream.isOpen());
    EXPECT_TRUE(stream.fail());
    stream << "x";
    EXPECT_FALSE(stream.close());
    EXPECT_NE(stream.error().find("none/a: "), std::string::npos);
}

TEST(AtomicFilePair, BothAppearTogether) {
    const TempFolder folder;
    folder.write("a", "old");
    AtomicFile a(folder.path("a")), b(folder.path("b"));
    a.stream() << "new a";
    b.stream() << "new b";
    EXPECT_TRUE(AtomicFile::commitBoth(a, b)) << a.error() << b.error();
    EXPECT_EQ(folder.read("a"), "new a");
    EXPECT_EQ(folder.read("b"), "new b");
    EXPECT_EQ(folder.numEntries(), 2u);
    EXPECT_FALSE(a.isOpen() || b.isOpen());
}

TEST(AtomicFilePair, NeitherAppearsWhenOneCannotBeMade) {
    const TempFolder folder;
    folder.write("a", "old");
    AtomicFile a(folder.path("a")), b(folder.path("no/such/b"));
    a.stream() << "new a";
    EXPECT_FALSE(AtomicFile::commitBoth(a, b));
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.numEntries(), 1u);
    EXPECT_EQ(a.error(), "");
    EXPECT_NE(b.error(), "");
    EXPECT_FALSE(a.isOpen());
}

// The second target turns into something that cannot be replaced while the files are written.
TEST(AtomicFilePair, TheFirstComesBackWhenTheSecondCannotBeRenamed) {
    const TempFolder folder;
    folder.write("a", "old");
    for (const char *first : {"a", "c"}) {
        AtomicFile a(folder.path(first)), b(folder.path("b"));
        a.stream() << "new a";
        fs::create_directories(folder.path("b/inside"));
        EXPECT_FALSE(AtomicFile::commitBoth(a, b));
        EXPECT_NE(b.error(), "");
        fs::remove_all(folder.path("b"));
    }
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.read("c"), "<missing>");
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST(FFofstreamPair, NeitherAppearsWhenAWriteFailed) {
    const TempFolder folder;
    FFofstream a(folder.path("a")), b(folder.path("b"));
    a << "a";
    b.setstate(std::ios::badbit);
    EXPECT_FALSE(FFofstream::closeBoth(a, b));
    EXPECT_TRUE(a.fail() && b.fail());
    EXPECT_EQ(folder.numEntries(), 0u);
}

TEST(FFofstreamPair, BothAppearTogether) {
    const TempFolder folder;
    FFofstream a(folder.path("a")), b(folder.path("b"));
    a << "a";
    EXPECT_TRUE(FFofstream::closeBoth(a, b));
    EXPECT_EQ(folder.read("a"), "a");
    EXPECT_EQ(folder.read("b"), "");
    EXPECT_FALSE(FFofstream::closeBoth(a, b));
}
