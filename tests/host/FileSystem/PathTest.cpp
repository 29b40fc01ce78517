// File names taken apart, stored names and file kinds.
#include "host/FileSystem/Path.h"
#include "host/FileSystem/FileFormats.h"
#include "host/FileSystem/PathConverterBase.h"

#include <gmock/gmock.h>

#include <random>

using FileSystem::FileFormats;
using FileSystem::Path;
using FileSystem::PathConverterBase;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Path, LastTokenStandsAfterTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(Path::getLastToken("a/b/c.emn"), "c.emn");
    EXPECT_EQ(Path::getLastToken("a\\b\\c.emn"), "c.emn");
    EXPECT_EQ(Path::getLastToken("a/b\\c/d"), "d");
    EXPECT_EQ(Path::getLastToken("c.emn"), "c.emn");
}

TEST(Path, LastTokenPassesOverSeparatorsAtTheEnd) {
    EXPECT_EQ(Path::getLastToken("a/b//"), "b");
    EXPECT_EQ(Path::getLastToken("/"), "");
    EXPECT_EQ(Path::getLastToken(""), "");
}

TEST(Path, StrippingTheLastTokenLeavesTheFolder) {
    EXPECT_EQ(Path::stripLastToken("a/b/c.emn"), "a/b");
    EXPECT_EQ(Path::stripLastToken("a//c.emn"), "a");
    EXPECT_EQ(Path::stripLastToken("a/b/"), "a");
    EXPECT_EQ(Path::stripLastToken("c.emn"), "");
    EXPECT_EQ(Path::stripLastToken(""), "");
}

TEST(Path, StrippingTheLastTokenKeepsTheRoot) {
    EXPECT_EQ(Path::stripLastToken("/c.emn"), "/");
    EXPECT_EQ(Path::stripLastToken("/"), "/");
    EXPECT_EQ(Path::stripLastToken("/a/b"), "/a");
    EXPECT_EQ(Path::stripLastToken("C:\\c.emn"), "C:\\");
    EXPECT_EQ(Path::stripLastToken("C:\\a\\c.emn"), "C:\\a");
}

TEST(Path, TokensLeaveEmptyOnesOut) {
    EXPECT_THAT(Path::getTokens("/a//b\\c/"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(Path::getTokens(""), IsEmpty());
    EXPECT_THAT(Path::getTokens("//"), IsEmpty());
}

TEST(Path, ExtensionComesWithOrWithoutItsDotAndInItsOwnCase) {
    EXPECT_EQ(Path::getExtension("a/b.Emn", true), ".Emn");
    EXPECT_EQ(Path::getExtension("a/b.Emn", false), "Emn");
    EXPECT_EQ(Path::getExtension("a.tar.gz", true), ".gz");
    EXPECT_EQ(Path::getExtension("a.", true), ".");
    EXPECT_EQ(Path::getExtension("a.", false), "");
}

TEST(Path, DotOfAFolderIsNoExtension) {
    EXPECT_EQ(Path::getExtension("a.b/c", true), "");
    EXPECT_EQ(Path::getExtension("a.b\\c", true), "");
    EXPECT_EQ(Path::getExtension("a.b/", true), "");
}

TEST(Path, HiddenNamesAndDotsHaveNoExtension) {
    for (const char *name : {".emn", "a/.emn", ".", "..", "a/..", ""})
        EXPECT_EQ(Path::getExtension(name, true), "") << name;
    EXPECT_EQ(Path::getExtension(".a.emn", true), ".emn");
}

TEST(Path, FormatExtensionIsLowerCaseIfAskedFor) {
    EXPECT_EQ(Path::getFormatExtension("x/BOARD.TGZ", true), "tgz");
    EXPECT_EQ(Path::getFormatExtension("x/BOARD.TGZ", false), "TGZ");
    EXPECT_EQ(Path::getFormatExtension("x/BOARD", true), "");
}

TEST(Path, StrippingTheExtensionTakesTheDotToo) {
    EXPECT_EQ(Path::stripExtension("a.b/c.emn"), "a.b/c");
    EXPECT_EQ(Path::stripExtension("a.b/c"), "a.b/c");
}

TEST(Path, NameIsItsPartsTogether) {
    constexpr unsigned seed = 11;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int i = 0; i < 20000; ++i) {
        std::string path;
        for (unsigned n = random() % 8; n > 0; --n)
            path += "a./\\:"[random() % 5];
        ASSERT_EQ(Path::stripExtension(path) + Path::getExtension(path, true), path);
        ASSERT_EQ(Path::getLastToken(path).find_first_of("/\\"), std::string::npos);
        ASSERT_LE(Path::stripLastToken(path).size(), path.size());
    }
}

TEST(PathConverter, StoredFormHasSlashesAndComesBack) {
    const std::string native = PathConverterBase::fromFFLPath("a/b c/\xC3\xA9");
    EXPECT_EQ(PathConverterBase::toFFLPath(native), "a/b c/\xC3\xA9");
#ifdef _WIN32
    EXPECT_EQ(native, "a\\b c\\\xC3\xA9");
#else
    EXPECT_EQ(native, "a/b c/\xC3\xA9");
    EXPECT_EQ(PathConverterBase::toFFLPath("a\\b"), "a\\b");
#endif
}

TEST(FileFormats, FilterTextListsPatternsInTheirOrder) {
    FileFormats formats;
    formats.addFormats("Brisko Files", {"*.brd", "*.mcm", "*.sip"});
    EXPECT_EQ(formats.getFormats(true, {}), "Brisko Files (*.brd *.mcm *.sip)");
    EXPECT_EQ(formats.getFormats(false, {}), "Brisko Files");
}

TEST(FileFormats, SeveralKindsAreJoinedAndEqualOnesMerged) {
    FileFormats formats;
    formats.addFormats("A", {"*.a"});
    formats.addFormats("B", {"*.b"});
    formats.addFormats("A", {"*.a", "*.c"});
    EXPECT_EQ(formats.getFormats(true, {}), "A (*.a *.c);;B (*.b)");
}

TEST(FileFormats, PatternsCanBeLeftOut) {
    FileFormats formats;
    formats.addFormats("A", {"*.a", "*.c"});
    formats.addFormats("B", {"*.b"});
    EXPECT_EQ(formats.getFormats(true, {"*.a", "*.b"}), "A (*.c)");
    EXPECT_EQ(FileFormats().getFormats(true, {}), "");
}

TEST(FileFormats, AllPatternsAreAddedToTheSet) {
    FileFormats formats;
    formats.addFormats("A", {"*.a", "*.c"});
    formats.addFormats("B", {"*.b"});
    std::set<std::string> patterns{"*.z"};
    formats.getAllFormats(patterns);
    EXPECT_THAT(patterns, ElementsAre("*.a", "*.b", "*.c", "*.z"));
}
