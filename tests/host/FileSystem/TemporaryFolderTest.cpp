// Folders for a while: new, their user's own, and gone at the end.
#include "host/FileSystem/TemporaryFolder.h"

#include "host/FileSystem/Directory.h"
#include "host/FileSystem/NativePath.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

namespace {

using FileSystem::TemporaryFolder;
namespace fs = std::filesystem;

TEST(TemporaryFolder, IsNewAndEmpty) {
    const TemporaryFolder first;
    const TemporaryFolder second;
    EXPECT_EQ(first.error(), "");
    EXPECT_NE(first.path(), second.path());
    EXPECT_TRUE(fs::is_empty(FileSystem::toNative(first.path())));
}

#ifndef _WIN32
TEST(TemporaryFolder, IsForItsUserAlone) {
    const TemporaryFolder folder;
    EXPECT_EQ(fs::status(FileSystem::toNative(folder.path())).permissions(), fs::perms::owner_all);
}
#endif

TEST(TemporaryFolder, IsRemovedWithAllThatIsInItButNotThroughLinks) {
    const TestSupport::TempFolder elsewhere;
    elsewhere.write("precious", "keep me");
    std::string path;
    {
        const TemporaryFolder folder;
        path = folder.path();
        fs::create_directories(FileSystem::toNative(path) / "a" / "b");
        std::error_code error; // where there are no links, nothing is to be shown
        fs::create_directory_symlink(fs::u8path(elsewhere.path()), FileSystem::toNative(path) / "link",
                                     error);
    }
    EXPECT_FALSE(FileSystem::Directory::exists(path));
    EXPECT_EQ(elsewhere.read("precious"), "keep me");
}

} // namespace
