// Listing and unpacking archives, good and hostile.
#include "host/FileSystem/ZipArchive.h"

#include "host/FileSystem/Directory.h"
#include "host/FileSystem/File.h"
#include "support/TempFolder.h"
#include "support/ZipFile.h"

#include <gmock/gmock.h>

#include <archive.h>
#include <archive_entry.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

using FileSystem::ZipArchive;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TestSupport::TempFolder;

namespace {

struct Entry {
    std::string name;
    std::string content;
    int type = AE_IFREG;
    std::string link = {};
};

// Packs entries into an archive file of one kind.
class Packer {
public:
    Packer(const std::string &path, const std::string &kind) : archive_(archive_write_new()) {
        if (kind == "zip") archive_write_set_format_zip(archive_);
        if (kind == "7z") archive_write_set_format_7zip(archive_);
        if (kind == "tar" || kind == "tgz" || kind == "z") archive_write_set_format_pax_restricted(archive_);
        if (kind == "tgz") archive_write_add_filter_gzip(archive_);
        if (kind == "z") archive_write_add_filter_compress(archive_);
        EXPECT_EQ(archive_write_open_filename(archive_, path.c_str()), ARCHIVE_OK);
    }

    ~Packer() { archive_write_free(archive_); }
    Packer(const Packer &) = delete;
    Packer &operator=(const Packer &) = delete;

    void add(const Entry &entry) {
        archive_entry *header = archive_entry_new();
        archive_entry_set_pathname(header, entry.name.c_str());
        archive_entry_set_filetype(header, static_cast<unsigned>(entry.type));
        archive_entry_set_perm(header, 0644);
        archive_entry_set_size(header, static_cast<la_int64_t>(entry.content.size()));
        if (entry.type == AE_IFLNK)
            archive_entry_set_symlink(header, entry.link.c_str());
        else if (!entry.link.empty())
            archive_entry_set_hardlink(header, entry.link.c_str());
        EXPECT_GE(archive_write_header(archive_, header), ARCHIVE_WARN) << archive_error_string(archive_);
        if (!entry.content.empty()) archive_write_data(archive_, entry.content.data(), entry.content.size());
        archive_entry_free(header);
    }

private:
    archive *archive_;
};

std::string pack(const TempFolder &folder, const std::string &kind, const std::vector<Entry> &entries) {
    const std::string path = folder.path("archive." + kind);
    Packer packer(path, kind);
    for (const Entry &entry : entries)
        packer.add(entry);
    return path;
}

const std::vector<Entry> design = {{"job/", "", AE_IFDIR},
                                   {"job/steps/", "", AE_IFDIR},
                                   {"job/steps/pcb/profile", "points"},
                                   {"job/matrix/matrix", std::string(100000, 'm')},
                                   {"job/empty", ""}};

class ArchiveKind : public testing::TestWithParam<const char *> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(All, ArchiveKind, testing::Values("zip", "tar", "tgz", "z", "7z"),
                         [](const auto &kind) { return "Kind_" + std::string(kind.param); });

TEST_P(ArchiveKind, FilesAreListed) {
    const TempFolder folder;
    const ZipArchive archive(pack(folder, GetParam(), design), 2);
    auto names = archive.allEntries(false, true);
    EXPECT_EQ(archive.getError(), "");
    EXPECT_THAT(names,
                testing::UnorderedElementsAre("job/steps/pcb/profile", "job/matrix/matrix", "job/empty"));
}

TEST_P(ArchiveKind, FoldersAreListedIfAskedFor) {
    const TempFolder folder;
    const ZipArchive archive(pack(folder, GetParam(), design));
    EXPECT_THAT(archive.allEntries(true, true), testing::IsSupersetOf({"job", "job/steps", "job/empty"}));
    EXPECT_THAT(archive.allEntries(false, false),
                testing::UnorderedElementsAre("profile", "matrix", "empty"));
}

TEST_P(ArchiveKind, ContentOfOneEntryIsRead) {
    const TempFolder folder;
    const ZipArchive archive(pack(folder, GetParam(), design));
    std::string content;
    EXPECT_TRUE(archive.readEntry("job/matrix/matrix", content)) << archive.getError();
    EXPECT_EQ(content, std::string(100000, 'm'));
    EXPECT_TRUE(archive.readEntry("job/empty", content));
    EXPECT_EQ(content, "");
}

TEST_P(ArchiveKind, AllIsExtractedBelowTheFolder) {
    const TempFolder folder;
    const ZipArchive archive(pack(folder, GetParam(), design));
    ASSERT_TRUE(archive.extractTo(folder.path("out"))) << archive.getError();
    EXPECT_EQ(folder.read("out/job/steps/pcb/profile"), "points");
    EXPECT_EQ(folder.read("out/job/matrix/matrix").size(), 100000u);
    EXPECT_EQ(folder.read("out/job/empty"), "");
    EXPECT_EQ(folder.numEntries(), 2u);
}

TEST_P(ArchiveKind, CutOffAnywhereEndsInAResultOrAMessage) {
    const TempFolder folder;
    pack(folder, GetParam(), design);
    const std::string whole = folder.read("archive." + std::string(GetParam()));
    const std::size_t step = std::max<std::size_t>(1, whole.size() / 60);
    int failures = 0;
    for (std::size_t size = 0; size < whole.size(); size += step) {
        const ZipArchive archive(folder.write("cut", std::string_view(whole).substr(0, size)));
        const auto names = archive.allEntries(false, true);
        if (!archive.getError().empty()) {
            ++failures;
            EXPECT_THAT(names, IsEmpty());
        }
    }
    EXPECT_GT(failures, 0);
}

TEST_P(ArchiveKind, DamagedBytesEndInAResultOrAMessage) {
    constexpr unsigned seed = 99;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const TempFolder folder;
    pack(folder, GetParam(), design);
    const std::string whole = folder.read("archive." + std::string(GetParam()));
    for (int i = 0; i < 200; ++i) {
        std::string bytes = whole;
        for (int n = 0; n < 5; ++n)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        const ZipArchive archive(folder.write("damaged", bytes));
        archive.allEntries(true, true);
        std::string content;
        const bool read = archive.readEntry("job/steps/pcb/profile", content);
        EXPECT_EQ(read, archive.getError().empty());
    }
}

TEST(ZipArchive, NamesThatLeadOutRefuseTheArchive) {
    for (const std::string name :
         {"../evil", "a/../../evil", "/etc/evil", "a/..", "..\\evil", "C:\\evil", "\\evil"}) {
        const TempFolder folder;
        const ZipArchive archive(pack(folder, "zip", {{"good", "x"}, {name, "evil"}}));
        EXPECT_THAT(archive.allEntries(false, true), IsEmpty()) << name;
        EXPECT_THAT(archive.getError(), HasSubstr("leads out of its folder")) << name;
        EXPECT_FALSE(archive.extractTo(folder.path("out"))) << name;
        EXPECT_EQ(folder.numEntries(), 2u) << name;
        EXPECT_FALSE(FileSystem::File::exists(folder.path("evil")));
    }
}

TEST(ZipArchive, DotTokensAndBackslashesAreRewritten) {
    const TempFolder folder;
    const ZipArchive archive(pack(folder, "tar", {{"./a/./b", "x"}, {"c\\d", "y"}, {"..e", "z"}}));
    EXPECT_THAT(archive.allEntries(false, true), ElementsAre("a/b", "c/d", "..e"));
    std::string content;
    EXPECT_TRUE(archive.readEntry("c/d", content));
    EXPECT_EQ(content, "y");
}

TEST(ZipArchive, NamesAreUtf8) {
    const TempFolder folder;
    const ZipArchive utf8(pack(folder, "tar", {{"pl\xC3\xA4n", "x"}}));
    EXPECT_THAT(utf8.allEntries(false, true), ElementsAre("pl\xC3\xA4n"));
    const ZipArchive latin1(pack(folder, "tar", {{"pl\xE4n", "x"}}));
    EXPECT_THAT(latin1.allEntries(false, true), ElementsAre("pl\xC3\xA4n"));
}

TEST(ZipArchive, LinksArePassedOver) {
    const TempFolder folder;
    const ZipArchive archive(pack(folder, "tar",
                                  {{"out", "", AE_IFLNK, "/"},
                                   {"hard", "", AE_IFREG, "/etc/hostname"},
                                   {"pipe", "", AE_IFIFO},
                                   {"real", "x"}}));
    EXPECT_THAT(archive.allEntries(true, true), ElementsAre("real"));
    ASSERT_TRUE(archive.extractTo(folder.path("out"))) << archive.getError();
    EXPECT_TRUE(FileSystem::File::exists(folder.path("out/real")));
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(folder.path("out/out"))));
}

TEST(ZipArchive, FileBelowALinkIsStillInTheFolder) {
    const TempFolder folder;
    FileSystem::Directory::create(folder.path("target"));
    const ZipArchive archive(
        pack(folder, "tar", {{"d", "", AE_IFLNK, folder.path("target")}, {"d/evil", "x"}}));
    EXPECT_TRUE(archive.extractTo(folder.path("out"))) << archive.getError();
    EXPECT_EQ(folder.read("target/evil"), "<missing>");
    EXPECT_EQ(folder.read("out/d/evil"), "x");
}

#ifndef _WIN32
TEST(ZipArchive, LinkAlreadyInTheFolderIsNotFollowed) {
    const TempFolder folder;
    FileSystem::Directory::create(folder.path("target"));
    FileSystem::Directory::create(folder.path("out"));
    folder.write("victim", "old");
    std::filesystem::create_symlink(folder.path("target"), folder.path("out/d"));
    std::filesystem::create_symlink(folder.path("victim"), folder.path("out/f"));
    const ZipArchive below(pack(folder, "tar", {{"d/e/evil", "x"}}));
    EXPECT_FALSE(below.extractTo(folder.path("out")));
    EXPECT_THAT(below.getError(), HasSubstr("d/e/evil leads out of the folder"));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("target")));
    const ZipArchive over(pack(folder, "tar", {{"f", "x"}}));
    EXPECT_FALSE(over.extractTo(folder.path("out")));
    EXPECT_EQ(folder.read("victim"), "old");
}
#endif

TEST(ZipArchive, BombIsStoppedWhenListedAndWhenRead) {
    for (const char *kind : {"tgz", "7z", "zip"}) {
        const TempFolder folder;
        const std::string path = folder.path("bomb");
        {
            Packer packer(path, kind);
            packer.add({"zeros", std::string(std::size_t{40} << 20, '\0')});
            packer.add({"last", "x"});
        }
        const ZipArchive archive(path);
        std::string content;
        EXPECT_FALSE(archive.readEntry("zeros", content)) << kind;
        EXPECT_THAT(archive.getError(), HasSubstr("unpacks to more than is allowed"));
        EXPECT_EQ(content, "");
        EXPECT_FALSE(archive.extractTo(folder.path("out"))) << kind;
        const bool unpacksToList = std::string(kind) != "zip";
        EXPECT_EQ(archive.allEntries(false, true).empty(), unpacksToList) << kind;
    }
}

TEST(ZipArchive, HighRatioOfLittleContentIsAllowed) {
    const TempFolder folder;
    const ZipArchive archive(pack(folder, "tgz", {{"zeros", std::string(std::size_t{9} << 20, '\0')}}));
    std::string content;
    EXPECT_TRUE(archive.readEntry("zeros", content)) << archive.getError();
    EXPECT_EQ(content.size(), std::size_t{9} << 20);
}

TEST(ZipArchive, EntryBeyondTheLimitOfTheReaderIsAFailure) {
    const TempFolder folder;
    const ZipArchive archive(pack(folder, "zip", {{"a", "12345"}}));
    std::string content;
    EXPECT_TRUE(archive.readEntry("a", content, 5));
    EXPECT_FALSE(archive.readEntry("a", content, 4));
    EXPECT_EQ(content, "");
    EXPECT_NE(archive.getError(), "");
}

TEST(ZipArchive, TooManyEntriesAreRefused) {
    const TempFolder folder;
    const std::string path = folder.path("many");
    {
        Packer packer(path, "tgz");
        for (std::size_t i = 0; i <= FileSystem::maxArchiveEntries; ++i)
            packer.add({"e" + std::to_string(i), ""});
    }
    const ZipArchive archive(path);
    EXPECT_THAT(archive.allEntries(false, true), IsEmpty());
    EXPECT_EQ(archive.getError(), path + ": has too many entries");
}

TEST(ZipArchive, ArchiveInAnArchiveIsAFile) {
    const TempFolder folder;
    pack(folder, "zip", design);
    const std::string inner = folder.read("archive.zip");
    const ZipArchive archive(pack(folder, "tar", {{"inner.zip", inner}}));
    EXPECT_THAT(archive.allEntries(false, true), ElementsAre("inner.zip"));
    std::string content;
    EXPECT_TRUE(archive.readEntry("inner.zip", content));
    EXPECT_EQ(content, inner);
}

TEST(ZipArchive, NamesInUtf8AreReadWhateverTheLocale) {
    constexpr int namesAreUtf8 = 0x800;
    const TestSupport::TempFolder folder;
    const FileSystem::ZipArchive archive(
        folder.write("a.zip", TestSupport::zipOf({"Leiterpl\xc3\xa4tte/\xe5\xb1\x82.gbr"}, namesAreUtf8)));
    EXPECT_EQ(archive.allEntries(false, true),
              std::vector<std::string>{"Leiterpl\xc3\xa4tte/\xe5\xb1\x82.gbr"})
        << archive.getError();
}

TEST(ZipArchive, FilesThatAreNoArchiveAreNamed) {
    const TempFolder folder;
    for (const std::string &path : {folder.write("text", "no archive at all, just text"), folder.path("none"),
                                    folder.path(), folder.write("byte", "P")}) {
        const ZipArchive archive(path);
        EXPECT_THAT(archive.allEntries(false, true), IsEmpty());
        EXPECT_THAT(archive.getError(), testing::StartsWith(path + ": ")) << path;
    }
}

TEST(ZipArchive, MissingEntryIsNamed) {
    const TempFolder folder;
    const std::string path = pack(folder, "zip", design);
    const ZipArchive archive(path);
    std::string content = "old";
    EXPECT_FALSE(archive.readEntry("job/none", content));
    EXPECT_EQ(archive.getError(), path + ": has no entry job/none");
    EXPECT_EQ(content, "");
    EXPECT_FALSE(archive.readEntry("job/steps", content)) << "a folder has no content";
}

TEST(ZipArchive, OnlyTheReadModeIsKnown) {
    const TempFolder folder;
    const ZipArchive archive(pack(folder, "zip", design), 1);
    std::string content;
    EXPECT_THAT(archive.allEntries(true, true), IsEmpty());
    EXPECT_FALSE(archive.readEntry("job/empty", content));
    EXPECT_FALSE(archive.extractTo(folder.path("out")));
    EXPECT_THAT(archive.getError(), HasSubstr("can only be read"));
}
