// Working folders for a while, absolute names, the environment and the folder of tools.
#include "host/FileSystem/WorkingFolder.h"
#include "host/FileSystem/OSPaths.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using FileSystem::OSPaths;
using FileSystem::WorkingFolder;
using TestSupport::TempFolder;

namespace {

bool isIn(const std::string &folder) {
    return std::filesystem::equivalent(OSPaths::getCurrentDirectory(), folder);
}

class ToolsFolder : public testing::Test {
protected:
    ~ToolsFolder() override {
#ifdef _WIN32
        _putenv_s("EDA_TOOLS_DIR", "");
#else
        unsetenv("EDA_TOOLS_DIR");
#endif
    }
};

} // namespace

TEST(WorkingFolder, IsAnotherOneWithinAScope) {
    const TempFolder folder;
    const std::string before = OSPaths::getCurrentDirectory();
    {
        const WorkingFolder there(folder.path());
        EXPECT_TRUE(isIn(folder.path()));
    }
    EXPECT_EQ(OSPaths::getCurrentDirectory(), before);
}

TEST(WorkingFolder, GoesBackOnceWhenAsked) {
    const TempFolder folder;
    const std::string before = OSPaths::getCurrentDirectory();
    {
        WorkingFolder there(folder.path());
        there.goBack();
        EXPECT_EQ(OSPaths::getCurrentDirectory(), before);
        ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path()));
        there.goBack();
    }
    EXPECT_TRUE(isIn(folder.path()));
    ASSERT_TRUE(OSPaths::setCurrentDirectory(before));
}

TEST(WorkingFolder, NoNameStaysInTheFolder) {
    const std::string before = OSPaths::getCurrentDirectory();
    const WorkingFolder there("");
    EXPECT_EQ(OSPaths::getCurrentDirectory(), before);
}

TEST(WorkingFolder, AFolderThatCannotBeEnteredChangesNothing) {
    const TempFolder folder;
    const std::string before = OSPaths::getCurrentDirectory();
    EXPECT_THROW(WorkingFolder(folder.path("none")), std::filesystem::filesystem_error);
    EXPECT_EQ(OSPaths::getCurrentDirectory(), before);
}

TEST(WorkingFolder, AFolderThatIsGoneIsToldOnlyWhenAskedToGoBack) {
    const TempFolder folder;
    const std::string before = OSPaths::getCurrentDirectory();
    for (const bool isAsked : {true, false}) {
        std::filesystem::create_directory(folder.path("gone"));
        ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path("gone")));
        {
            WorkingFolder there(folder.path());
            std::filesystem::remove(folder.path("gone"));
            if (isAsked) {
                EXPECT_THROW(there.goBack(), std::filesystem::filesystem_error);
            }
        }
        EXPECT_TRUE(isIn(folder.path()));
    }
    ASSERT_TRUE(OSPaths::setCurrentDirectory(before));
}

TEST(WorkingFolder, AFolderThatIsGoneCannotBeRemembered) {
    const TempFolder folder;
    const std::string before = OSPaths::getCurrentDirectory();
    std::filesystem::create_directory(folder.path("gone"));
    ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path("gone")));
    std::filesystem::remove(folder.path("gone"));
    EXPECT_THROW(WorkingFolder(folder.path()), std::filesystem::filesystem_error);
    ASSERT_TRUE(OSPaths::setCurrentDirectory(before));
}

TEST(AbsolutePath, StartsAtTheRoot) {
    const std::string here = OSPaths::getCurrentDirectory();
    EXPECT_EQ(OSPaths::getAbsolutePath("a/b.c"), here + "/a/b.c");
    EXPECT_EQ(OSPaths::getAbsolutePath("b.c"), here + "/b.c");
    EXPECT_EQ(OSPaths::getAbsolutePath("../b.c"), here + "/../b.c");
}

TEST(AbsolutePath, AbsoluteAndEmptyNamesAreGivenBackAsTheyAre) {
    const TempFolder folder;
    const std::string odd = folder.path() + "//a/./../b";
    EXPECT_EQ(OSPaths::getAbsolutePath(odd), odd);
    EXPECT_EQ(OSPaths::getAbsolutePath(""), "");
}

TEST(Environment, VariablesCanBeSetAndEmptied) {
    const char *const name = "EDA_TEST_VARIABLE";
    ASSERT_TRUE(OSPaths::setEnvironment(name, "first"));
    EXPECT_STREQ(std::getenv(name), "first");
    ASSERT_TRUE(OSPaths::setEnvironment(name, "se=cond \xC3\xA9"));
    EXPECT_STREQ(std::getenv(name), "se=cond \xC3\xA9");
    ASSERT_TRUE(OSPaths::setEnvironment(name, ""));
    const char *const value = std::getenv(name);
    EXPECT_TRUE(value == nullptr || *value == '\0');
}

TEST(Environment, NamesThatNoVariableHasAreRefused) {
    EXPECT_FALSE(OSPaths::setEnvironment("", "value"));
    EXPECT_FALSE(OSPaths::setEnvironment("EDA=TEST", "value"));
}

TEST_F(ToolsFolder, IsTheOneThatTheVariableNames) {
    ASSERT_TRUE(OSPaths::setEnvironment("EDA_TOOLS_DIR", "/chosen/here"));
    EXPECT_EQ(OSPaths::getToolsFolder(), "/chosen/here");
}

TEST_F(ToolsFolder, IsNoneWhereTheVariableIsEmpty) {
    ASSERT_TRUE(OSPaths::setEnvironment("EDA_TOOLS_DIR", ""));
    EXPECT_EQ(OSPaths::getToolsFolder(), "");
}

#ifndef _WIN32
TEST_F(ToolsFolder, IsTheNearestAboveTheProgramOtherwise) {
    namespace fs = std::filesystem;
    const fs::path above = fs::read_symlink("/proc/self/exe").parent_path().parent_path();
    const bool isMade = fs::create_directories(above / "libexec" / "eda-tools");
    EXPECT_EQ(OSPaths::getToolsFolder(), (above / "libexec" / "eda-tools").string());
    if (isMade) fs::remove_all(above / "libexec");
    EXPECT_NE(OSPaths::getToolsFolder(), (above / "libexec" / "eda-tools").string());
}
#endif
