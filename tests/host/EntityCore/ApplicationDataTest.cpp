// Where the application and its models keep files.
#include "host/EntityCore/ApplicationData.h"
#include "host/EntityCore/QuorvityApplicationData.h"
#include "host/EntityCore/ReferencedFilesManager.h"

#include "host/FileSystem/Directory.h"
#include "host/FileSystem/OSPaths.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using EntityGUI::ApplicationData;
using EntityGUI::InstallationSettings;
using TestSupport::TempFolder;

namespace {

std::string folderOf(const std::string &label) {
    return EntityGUI::ReferencedFilesManager::getAttributeFolder(label);
}

std::string applicationFolder(const std::string &dataFolder) {
    return ApplicationData::getApplicationFolder(false, true, false, InstallationSettings(dataFolder));
}

} // namespace

TEST(ApplicationData, TheFolderIsMadeWithThoseAboveIt) {
    const TempFolder folder;
    EXPECT_EQ(applicationFolder(folder.path("a/b")), folder.path("a/b"));
    EXPECT_TRUE(FileSystem::Directory::exists(folder.path("a/b")));
    EXPECT_EQ(applicationFolder(folder.path("a/b")), folder.path("a/b"));
}

TEST(ApplicationData, AFolderThatCannotBeMadeIsNone) {
    const TempFolder folder;
    folder.write("file", "");
    EXPECT_EQ(applicationFolder(folder.path("file")), "");
    EXPECT_EQ(applicationFolder(folder.path("file/below")), "");
    EXPECT_EQ(applicationFolder(""), "");
}

TEST(InstallationSettings, TheCurrentOnesAreThoseOfTheSystem) {
    EXPECT_EQ(InstallationSettings::current().getDataFolder(), FileSystem::OSPaths::getDataFolder());
}

TEST(QuorvityApplicationData, TheToolsFolderEndsInOneSlash) {
    FileSystem::OSPaths::setEnvironment("EDA_TOOLS_DIR", "/opt/tools");
    EXPECT_EQ(EntityGUI::QuorvityApplicationData("").getEDAToolsFolder(), "/opt/tools/");
    FileSystem::OSPaths::setEnvironment("EDA_TOOLS_DIR", "/opt/tools/");
    EXPECT_EQ(EntityGUI::QuorvityApplicationData("").getEDAToolsFolder(), "/opt/tools/");
}

TEST(QuorvityApplicationData, AnEmptyToolsFolderCanBeConfigured) {
    FileSystem::OSPaths::setEnvironment("EDA_TOOLS_DIR", "");
    EXPECT_EQ(EntityGUI::QuorvityApplicationData("").getEDAToolsFolder(), "");
}

TEST(QuorvityApplicationData, AllApplicationsShareOneConfiguration) {
    FileSystem::OSPaths::setEnvironment("EDA_TOOLS_DIR", "/opt/tools");
    EXPECT_EQ(EntityGUI::QuorvityApplicationData("other").getEDAToolsFolder(), "/opt/tools/");
}

TEST(ReferencedFilesManager, TheFolderOfALabelIsTheLabel) {
    EXPECT_EQ(folderOf("Imported Image"), "Imported Image");
    EXPECT_EQ(folderOf("Top Texture File"), "Top Texture File");
    EXPECT_EQ(folderOf("a-b_9"), "a-b_9");
}

TEST(ReferencedFilesManager, AnyLabelIsOneFolderNameThatLeadsNowhereElse) {
    EXPECT_EQ(folderOf(""), "%");
    EXPECT_EQ(folderOf(".."), "%2E%2E");
    EXPECT_EQ(folderOf("../a\\b:c"), "%2E%2E%2Fa%5Cb%3Ac");
    EXPECT_EQ(folderOf(" a b "), "%20a b%20");
    EXPECT_EQ(folderOf(" "), "%20");
    EXPECT_EQ(folderOf(std::string("\0\n", 2)), "%00%0A");
    EXPECT_EQ(folderOf("\xc3\xa4"), "%C3%A4");
}

TEST(ReferencedFilesManager, LabelsThatDifferHaveFoldersThatDiffer) {
    EXPECT_NE(folderOf("a/b"), folderOf("a%2Fb"));
    EXPECT_NE(folderOf("%"), folderOf(""));
}
