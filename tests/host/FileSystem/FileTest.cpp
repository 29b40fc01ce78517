// Files, folders and folders of the system.
#include "host/FileSystem/File.h"
#include "host/FileSystem/Directory.h"
#include "host/FileSystem/DirectoryListing.h"
#include "host/FileSystem/OSPaths.h"

#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <vector>

using FileSystem::Directory;
using FileSystem::DirectoryListing;
using FileSystem::File;
using FileSystem::OSPaths;
using testing::ElementsAre;
using testing::HasSubstr;
using TestSupport::TempFolder;

namespace {

const std::string umlaut = "pl\xC3\xA4n \xE2\x82\xAC.txt";

// Changes environment variables for one test.
class Environment {
public:
    ~Environment() {
        for (auto change = before_.rbegin(); change != before_.rend(); ++change)
            put(change->first, change->second);
    }
    void set(const std::string &name, const char *value) {
        const char *old = std::getenv(name.c_str());
        before_.emplace_back(name, old != nullptr ? old : "");
        put(name, value);
    }

private:
    static void put(const std::string &name, const std::string &value) {
#ifdef _WIN32
        _putenv_s(name.c_str(), value.c_str());
#else
        if (value.empty())
            unsetenv(name.c_str());
        else
            setenv(name.c_str(), value.c_str(), 1);
#endif
    }
    std::vector<std::pair<std::string, std::string>> before_;
};

} // namespace

TEST(File, TheSizeIsThatOfARegularFile) {
    const TempFolder folder;
    EXPECT_EQ(File::size(folder.write("a", "1234567")), 7u);
    EXPECT_EQ(File::size(folder.write(umlaut, "")), 0u);
    EXPECT_EQ(File::size(folder.path("missing")), 0u);
    EXPECT_EQ(File::size(folder.path()), 0u);
}

TEST(File, OneFileIsTheSameByAllItsNames) {
    const TempFolder folder;
    const std::string file = folder.write("a", "1");
    EXPECT_TRUE(File::isSame(file, file));
    EXPECT_TRUE(File::isSame(file, folder.path("./a")));
    EXPECT_FALSE(File::isSame(file, folder.write("b", "1")));
    EXPECT_FALSE(File::isSame(file, folder.path("missing")));
    EXPECT_FALSE(File::isSame(folder.path("missing"), folder.path("missing")));
    EXPECT_FALSE(File::isSame("", ""));
}

TEST(File, ExistsForFilesAndNotForFolders) {
    const TempFolder folder;
    EXPECT_TRUE(File::exists(folder.write(umlaut, "x")));
    EXPECT_FALSE(File::exists(folder.path("none")));
    EXPECT_FALSE(File::exists(folder.path()));
    EXPECT_FALSE(File::exists(""));
}

TEST(File, RemoveTakesFilesOnly) {
    const TempFolder folder;
    const std::string name = folder.write("a", "x");
    EXPECT_TRUE(File::remove(name));
    EXPECT_FALSE(File::exists(name));
    EXPECT_FALSE(File::remove(name));
    ASSERT_TRUE(Directory::create(folder.path("d")));
    EXPECT_FALSE(File::remove(folder.path("d")));
    EXPECT_TRUE(Directory::exists(folder.path("d")));
}

TEST(File, CopyReplacesTheTarget) {
    const TempFolder folder;
    const std::string content(200000, 'x');
    const std::string source = folder.write("a", content);
    folder.write(umlaut, "old");
    EXPECT_TRUE(File::copyFile(source, folder.path(umlaut), false, false, nullptr));
    EXPECT_EQ(folder.read(umlaut), content);
    EXPECT_EQ(folder.read("a"), content);
    EXPECT_EQ(folder.numEntries(), 2u);
}

TEST(File, CopyLeavesAnExistingTargetAloneIfAskedTo) {
    const TempFolder folder;
    folder.write("b", "old");
    EXPECT_FALSE(File::copyFile(folder.write("a", "new"), folder.path("b"), true));
    EXPECT_EQ(folder.read("b"), "old");
    EXPECT_TRUE(File::copyFile(folder.path("a"), folder.path("c"), true));
    EXPECT_EQ(folder.read("c"), "new");
}

TEST(File, CopyOntoItselfKeepsTheContent) {
    const TempFolder folder;
    const std::string name = folder.write("a", "content");
    EXPECT_TRUE(File::copyFile(name, name));
    EXPECT_EQ(folder.read("a"), "content");
}

TEST(File, CopyOfAnEmptyFileIsEmpty) {
    const TempFolder folder;
    double last = -1;
    EXPECT_TRUE(File::copyFile(folder.write("a", ""), folder.path("b"), false, false, [&](double share) {
        last = share;
        return true;
    }));
    EXPECT_EQ(folder.read("b"), "");
    EXPECT_EQ(last, 1.0);
}

TEST(File, CancelledCopyLeavesNothing) {
    const TempFolder folder;
    const std::string source = folder.write("a", std::string(300000, 'x'));
    int calls = 0;
    const auto callback = [&](double share) {
        EXPECT_GT(share, 0.0);
        return ++calls < 2;
    };
    EXPECT_FALSE(File::copyFile(source, folder.path("b"), false, false, callback));
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST(File, CopyFailsForAMissingSourceOrFolder) {
    const TempFolder folder;
    EXPECT_FALSE(File::copyFile(folder.path("none"), folder.path("b")));
    EXPECT_FALSE(File::copyFile(folder.path(), folder.path("b")));
    EXPECT_FALSE(File::copyFile(folder.write("a", "x"), folder.path("none/b")));
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST(File, CopyKeepsTheTimeIfAskedTo) {
    namespace fs = std::filesystem;
    const TempFolder folder;
    const fs::path source = fs::u8path(folder.write("a", "x"));
    fs::last_write_time(source, fs::last_write_time(source) - std::chrono::hours(1000));
    ASSERT_TRUE(File::copyFile(source.u8string(), folder.path("b"), false, true));
    EXPECT_EQ(fs::last_write_time(fs::u8path(folder.path("b"))), fs::last_write_time(source));
}

TEST(File, ReadAllGivesTheBytes) {
    const TempFolder folder;
    const std::string bytes("a\0\r\n\xFF\x1A", 6);
    std::string content, error;
    EXPECT_TRUE(File::readAll(folder.write(umlaut, bytes), content, error));
    EXPECT_EQ(content, bytes);
    EXPECT_EQ(error, "");
    EXPECT_TRUE(File::readAll(folder.write("empty", ""), content, error));
    EXPECT_EQ(content, "");
}

TEST(File, ReadAllNamesFileAndReason) {
    const TempFolder folder;
    std::string content = "old", error;
    EXPECT_FALSE(File::readAll(folder.path("none"), content, error));
    EXPECT_EQ(error, folder.path("none") + ": file does not exist");
    EXPECT_EQ(content, "");
    EXPECT_FALSE(File::readAll(folder.path(), content, error));
    EXPECT_EQ(error, folder.path() + ": is a folder");
    EXPECT_FALSE(File::readAll("", content, error));
    EXPECT_NE(error, "");
}

TEST(File, ReadAllRefusesMoreThanTheLimit) {
    const TempFolder folder;
    std::string content, error;
    const std::string name = folder.write("a", "12345");
    EXPECT_TRUE(File::readAll(name, content, error, 5));
    EXPECT_FALSE(File::readAll(name, content, error, 4));
    EXPECT_EQ(error, name + ": larger than the limit of 4 bytes");
    EXPECT_EQ(content, "");
}

TEST(File, ReadAllRefusesAGiganticFileBeforeReadingIt) {
    const TempFolder folder;
    const std::string name = folder.write("a", "");
    std::error_code code;
    std::filesystem::resize_file(std::filesystem::u8path(name), FileSystem::maxFileSize + 1, code);
    if (code) GTEST_SKIP() << "no room for a sparse file: " << code.message();
    std::string content, error;
    EXPECT_FALSE(File::readAll(name, content, error));
    EXPECT_THAT(error, HasSubstr("larger than the limit"));
}

#ifndef _WIN32
TEST(File, ReadAllRefusesDevices) {
    std::string content, error;
    EXPECT_FALSE(File::readAll("/dev/zero", content, error));
    EXPECT_EQ(error, "/dev/zero: is not a regular file");
}

TEST(File, ReadAllTakesFilesWhoseSizeIsNotKnown) {
    std::string content, error;
    if (!File::exists("/proc/self/status")) GTEST_SKIP() << "no such file on this machine";
    EXPECT_TRUE(File::readAll("/proc/self/status", content, error));
    EXPECT_THAT(content, HasSubstr("Pid:"));
}
#endif

TEST(Directory, CreateMakesAllAbove) {
    const TempFolder folder;
    EXPECT_TRUE(Directory::create(folder.path("a/b/c")));
    EXPECT_TRUE(Directory::exists(folder.path("a/b/c")));
    EXPECT_TRUE(Directory::create(folder.path("a/b/c"))) << "it exists afterwards";
    folder.write("f", "");
    EXPECT_FALSE(Directory::create(folder.path("f")));
    EXPECT_FALSE(Directory::create(folder.path("f/g")));
    EXPECT_FALSE(Directory::exists(folder.path("f")));
}

TEST(Directory, RemoveTakesContentOnlyIfAskedTo) {
    const TempFolder folder;
    ASSERT_TRUE(Directory::create(folder.path("a/b")));
    EXPECT_FALSE(Directory::remove(folder.path("a")));
    EXPECT_TRUE(Directory::exists(folder.path("a/b")));
    EXPECT_TRUE(Directory::remove(folder.path("a"), true));
    EXPECT_FALSE(Directory::exists(folder.path("a")));
    EXPECT_FALSE(Directory::remove(folder.path("a"), true));
    ASSERT_TRUE(Directory::create(folder.path("e")));
    EXPECT_TRUE(Directory::remove(folder.path("e")));
    EXPECT_FALSE(Directory::remove(folder.write("f", ""), true));
    EXPECT_TRUE(File::exists(folder.path("f")));
}

TEST(DirectoryListing, NamesAreSortedByTheirBytes) {
    const TempFolder folder;
    for (const std::string &name : {std::string("b"), std::string("a"), std::string("B"), umlaut})
        folder.write(name, "");
    ASSERT_TRUE(Directory::create(folder.path("c/d")));
    const DirectoryListing listing(folder.path());
    EXPECT_TRUE(listing.isValid());
    EXPECT_THAT(std::vector<std::string>(listing.begin(), listing.end()),
                ElementsAre("B", "a", "b", "c", umlaut));
}

TEST(DirectoryListing, FolderThatCannotBeReadIsEmptyAndInvalid) {
    const TempFolder folder;
    const DirectoryListing none(folder.path("none"));
    EXPECT_FALSE(none.isValid());
    EXPECT_TRUE(none.begin() == none.end());
    EXPECT_FALSE(DirectoryListing(folder.write("f", "")).isValid());
    ASSERT_TRUE(Directory::create(folder.path("empty")));
    EXPECT_TRUE(DirectoryListing(folder.path("empty")).isValid());
}

TEST(OSPaths, CurrentDirectoryCanBeChanged) {
    const TempFolder folder;
    const std::string before = OSPaths::getCurrentDirectory();
    ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path()));
    folder.write("here", "");
    EXPECT_TRUE(File::exists("here"));
    EXPECT_FALSE(OSPaths::setCurrentDirectory(folder.path("none")));
    ASSERT_TRUE(OSPaths::setCurrentDirectory(before));
    EXPECT_EQ(OSPaths::getCurrentDirectory(), before);
}

TEST(OSPaths, LongNameOfAMissingFileIsItsName) {
    EXPECT_EQ(OSPaths::getLongPathName("no/such/file"), "no/such/file");
}

TEST(OSPaths, ConfigurationFolderIsTheOneChosenByTheUser) {
    Environment environment;
    environment.set("EDA_CONFIG_DIR", "/chosen/here");
    EXPECT_EQ(OSPaths::getConfigurationFolder(), "/chosen/here");
}

#ifndef _WIN32
TEST(OSPaths, ConfigurationFolderFollowsTheUsualVariables) {
    Environment environment;
    environment.set("EDA_CONFIG_DIR", "");
    environment.set("XDG_CONFIG_HOME", "/settings");
    environment.set("HOME", "/home/user");
    EXPECT_EQ(OSPaths::getConfigurationFolder(), "/settings/eda");
    environment.set("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(OSPaths::getConfigurationFolder(), "/home/user/.config/eda");
    environment.set("XDG_CONFIG_HOME", "");
    EXPECT_EQ(OSPaths::getConfigurationFolder(), "/home/user/.config/eda");
    environment.set("HOME", "");
    EXPECT_EQ(OSPaths::getConfigurationFolder(), "");
}

TEST(OSPaths, DataFolderFollowsTheUsualVariables) {
    Environment environment;
    environment.set("EDA_DATA_DIR", "/chosen/here");
    EXPECT_EQ(OSPaths::getDataFolder(), "/chosen/here");
    environment.set("EDA_DATA_DIR", "");
    environment.set("XDG_DATA_HOME", "/data");
    environment.set("HOME", "/home/user");
    EXPECT_EQ(OSPaths::getDataFolder(), "/data/eda");
    environment.set("XDG_DATA_HOME", "relative");
    EXPECT_EQ(OSPaths::getDataFolder(), "/home/user/.local/share/eda");
    environment.set("HOME", "");
    EXPECT_EQ(OSPaths::getDataFolder(), "");
}
#endif
