// Reading sets from files, folders and archives.
#include "fabrication/sets/FabricationReader.h"
#include "SetBench.h"
#include "support/CancelAfter.h"

#include <gmock/gmock.h>

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>

namespace {

using namespace EDA;
using namespace EDA::Fabrication;
using namespace TestSupport;
using testing::ElementsAre;
using testing::HasSubstr;

class FabricationReaderTest : public testing::Test {
protected:
    TempFolder folder;
    FabricationReader reader;

    std::string add(const std::string &name, const std::string &text) {
        std::filesystem::create_directories(std::filesystem::u8path(folder.path(name)).parent_path());
        return folder.write(name, text);
    }

    std::string pack(const std::string &name,
                     const std::vector<std::pair<std::string, std::string>> &entries) {
        archive *const packed = archive_write_new();
        archive_write_set_format_zip(packed);
        EXPECT_EQ(archive_write_open_filename(packed, folder.path(name).c_str()), ARCHIVE_OK);
        for (const auto &[file, content] : entries) {
            archive_entry *const header = archive_entry_new();
            archive_entry_set_pathname(header, file.c_str());
            archive_entry_set_filetype(header, AE_IFREG);
            archive_entry_set_perm(header, 0644);
            archive_entry_set_size(header, static_cast<la_int64_t>(content.size()));
            archive_write_header(packed, header);
            archive_write_data(packed, content.data(), content.size());
            archive_entry_free(header);
        }
        archive_write_free(packed);
        return folder.path(name);
    }

    std::vector<std::string> layers() {
        std::vector<std::string> names;
        for (std::size_t index = 0; index < reader.getBoard().numLayers(); ++index)
            names.push_back(reader.getBoard().getNthLayer(static_cast<int>(index)).getName());
        return names;
    }
};

TEST_F(FabricationReaderTest, ASetGivesLayersHolesAndTheEdge) {
    ASSERT_TRUE(reader.setFiles({add("bottom.gbr", copperText()), add("top.gbr", copperText()),
                                 add("x.drl", drillText()), add("edge.gko", edgeText())}))
        << reader.getError();
    ASSERT_TRUE(reader.readFiles(nullptr)) << reader.getError();
    EXPECT_THAT(layers(), ElementsAre("top", "bottom"));
    EXPECT_EQ(reader.getBoard().getUnits(), "mm");
    EXPECT_EQ(reader.getBoard().numVias(1), 3u);
    EXPECT_NEAR(reader.getBoard().getOutline().getBound().getXSize(), 22.0, 1e-6);
    EXPECT_THAT(reader.getReport().files[0].use, "copper layer 1");
    EXPECT_THAT(reader.getReport().files[2].use, HasSubstr("from top.gbr to bottom.gbr"));
    EXPECT_THAT(reader.getReport().files[3].use, "board outline");
}

TEST_F(FabricationReaderTest, AFolderIsLookedThroughWithThoseInIt) {
    add("fab/gerbers/board top.gbr", copperText());
    add("fab/drills/board.txt", drillText());
    add("fab/.hidden", "x");
    ASSERT_TRUE(reader.setFiles({folder.path("fab")})) << reader.getError();
    EXPECT_EQ(reader.getSet().copper.at(0).shown, "gerbers/board top.gbr");
    EXPECT_EQ(reader.getSet().drills.at(0).file.shown, "drills/board.txt");
    EXPECT_EQ(reader.getReport().files.size(), 2u);
}

TEST_F(FabricationReaderTest, AnArchiveIsUnpacked) {
    ASSERT_TRUE(reader.setFiles({pack("fab.zip", {{"g/top.gbr", copperText()},
                                                  {"__MACOSX/g/._top.gbr", "x"},
                                                  {"g/bottom.gbr", copperText()},
                                                  {"more.zip", "PK\x03\x04"}})}))
        << reader.getError();
    EXPECT_EQ(reader.getSet().copper.at(0).shown, "fab.zip/g/top.gbr");
    ASSERT_EQ(reader.getSet().leftOut.size(), 1u);
    EXPECT_THAT(reader.getSet().leftOut[0].reason, HasSubstr("archive in an archive"));
    EXPECT_TRUE(reader.readFiles(nullptr)) << reader.getError();
    EXPECT_THAT(layers(), ElementsAre("top", "bottom"));
}

TEST_F(FabricationReaderTest, AnArchiveThatLeadsOutIsRefused) {
    EXPECT_FALSE(reader.setFiles({pack("fab.zip", {{"../top.gbr", copperText()}})}));
    EXPECT_THAT(reader.getError(), HasSubstr("fab.zip"));
}

TEST_F(FabricationReaderTest, AFileThatIsNotThereIsAnError) {
    EXPECT_FALSE(reader.setFiles({folder.path("nothing.gbr")}));
    EXPECT_THAT(reader.getError(), HasSubstr("nothing.gbr"));
}

TEST_F(FabricationReaderTest, ASetWithoutLayersTellsWhatWasFound) {
    EXPECT_FALSE(reader.setFiles({add("readme.txt", "hello\n"), add("x.gts", copperText())}));
    EXPECT_THAT(reader.getError(), testing::AllOf(HasSubstr("readme.txt"), HasSubstr("solder mask")));
}

TEST_F(FabricationReaderTest, LayersThatDifferInTheExtensionAloneKeepIt) {
    ASSERT_TRUE(reader.setFiles({add("b.gtl", copperText()), add("b.gbl", copperText())}));
    ASSERT_TRUE(reader.readFiles(nullptr)) << reader.getError();
    EXPECT_THAT(layers(), ElementsAre("b.gtl", "b.gbl"));
    EXPECT_EQ(reader.getReport().files[1].layerName, "b.gbl");
}

TEST_F(FabricationReaderTest, ASingleLayerOfAnotherKindIsReadAsCopper) {
    EXPECT_TRUE(reader.readFile(add("x.gts", copperText()))) << reader.getError();
    EXPECT_THAT(layers(), ElementsAre("x"));
}

TEST_F(FabricationReaderTest, ASecondSetReplacesTheFirst) {
    const std::string file = add("x.gtl", copperText());
    ASSERT_TRUE(reader.readFile(file));
    ASSERT_TRUE(reader.readFile(file));
    EXPECT_EQ(reader.getBoard().numLayers(), 1u);
}

TEST_F(FabricationReaderTest, ACancelledReadKeepsWhatWasRead) {
    CancelAfter cancelled(0);
    ASSERT_TRUE(reader.setFiles({add("top.gbr", copperText()), add("bottom.gbr", copperText())}));
    EXPECT_FALSE(reader.readFiles(&cancelled));
    EXPECT_LT(reader.getBoard().numLayers(), 2u);
}

TEST_F(FabricationReaderTest, ProgressGoesForwardUpToItsMaximum) {
    RecordingProgress progress;
    ASSERT_TRUE(
        reader.setFiles({add("top.gbr", copperText()), add("x.drl", drillText()), add("e.gko", edgeText())}));
    ASSERT_TRUE(reader.readFiles(&progress)) << reader.getError();
    ASSERT_THAT(progress.maxima, ElementsAre(3000));
    ASSERT_FALSE(progress.values.empty());
    EXPECT_TRUE(std::is_sorted(progress.values.begin(), progress.values.end()));
    EXPECT_LE(progress.values.back(), 3000);
}

TEST_F(FabricationReaderTest, WithoutFilesThereIsNothingToRead) {
    EXPECT_FALSE(reader.readFiles(nullptr));
    EXPECT_NE(reader.getError(), "");
    EXPECT_FALSE(reader.setFiles({}));
}

TEST_F(FabricationReaderTest, FoldersBeyondTheDepthAreLeftOutAndTold) {
    std::string path = "deep";
    for (int depth = 0; depth < 20; ++depth)
        path += "/in";
    add(path + "/top.gbr", copperText());
    add("deep/bottom.gbr", copperText());
    ASSERT_TRUE(reader.setFiles({folder.path("deep")})) << reader.getError();
    EXPECT_EQ(reader.getSet().copper.size(), 1u);
    EXPECT_THAT(reader.getReport().warnings, testing::Contains(HasSubstr("deeper than 16 folders")));
}

TEST_F(FabricationReaderTest, AFolderThatALinkLeadsBackToIsLeftOutAndTold) {
    add("fab/top.gbr", copperText());
    std::error_code failed;
    std::filesystem::create_directory_symlink(std::filesystem::u8path(folder.path("fab")),
                                              std::filesystem::u8path(folder.path("fab/again")), failed);
    if (failed) GTEST_SKIP() << "no links here";
    ASSERT_TRUE(reader.setFiles({folder.path("fab")})) << reader.getError();
    EXPECT_EQ(reader.getSet().copper.size(), 1u);
    EXPECT_THAT(reader.getReport().warnings, testing::Contains(HasSubstr("\"again\" is left out")));
}

TEST_F(FabricationReaderTest, ASetWithoutAnEdgeIsTold) {
    const auto edgeless = testing::Contains(HasSubstr("the board has no edge"));
    const std::string top = add("fab/top.gbr", copperText());
    ASSERT_TRUE(reader.setFiles({folder.path("fab")})) << reader.getError();
    EXPECT_THAT(reader.getReport().warnings, edgeless);
    ASSERT_TRUE(reader.setFiles({pack("fab.zip", {{"top.gbr", copperText()}})})) << reader.getError();
    EXPECT_THAT(reader.getReport().warnings, edgeless);
    add("fab/edge.gko", edgeText());
    ASSERT_TRUE(reader.setFiles({folder.path("fab")})) << reader.getError();
    EXPECT_THAT(reader.getReport().warnings, testing::IsEmpty());
}

TEST_F(FabricationReaderTest, AFileNamedAloneNeedsNoEdge) {
    ASSERT_TRUE(reader.readFile(add("top.gbr", copperText()))) << reader.getError();
    EXPECT_THAT(reader.getReport().warnings, testing::IsEmpty());
}

TEST_F(FabricationReaderTest, MoreFilesThanTheLimitAreRefused) {
    for (int number = 0; number <= 10000; ++number)
        add("many/" + std::to_string(number), "");
    EXPECT_FALSE(reader.setFiles({folder.path("many")}));
    EXPECT_THAT(reader.getError(), HasSubstr("more than 10000 files"));
}

TEST_F(FabricationReaderTest, FilesOfOneNameInTwoFoldersAreBothRead) {
    const std::string top = copperText("%TF.FileFunction,Copper,L1,Top*%\n");
    const std::string bottom = copperText("%TF.FileFunction,Copper,L2,Bot*%\n");
    ASSERT_TRUE(reader.setFiles({add("a/layer.gbr", top), add("b/layer.gbr", bottom)}));
    ASSERT_TRUE(reader.readFiles(nullptr)) << reader.getError();
    EXPECT_THAT(layers(), ElementsAre("layer", "layer"));
}

TEST_F(FabricationReaderTest, WrongSettingsLeaveNothingToRead) {
    SetSettings settings;
    settings.layerOrder = {"nothing.gbr"};
    reader.setSettings(settings);
    EXPECT_FALSE(reader.setFiles({add("top.gbr", copperText())}));
    EXPECT_THAT(reader.getError(), HasSubstr("nothing.gbr"));
    EXPECT_FALSE(reader.readFiles(nullptr));
}

TEST_F(FabricationReaderTest, CanonicalFilesLieInAPrivateFolderUntilTheEnd) {
    std::string canonical;
    {
        FabricationReader other;
        ASSERT_TRUE(other.readFile(add("x.gtl", copperText())));
        canonical = other.getCanonicalFolder();
        EXPECT_TRUE(std::filesystem::exists(std::filesystem::u8path(canonical + "/x.gtl")));
    }
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(canonical)));
}

TEST_F(FabricationReaderTest, NetsOfTheFileBecomeNetsOfTheLayer) {
    ASSERT_TRUE(reader.readFile(
        add("x.gtl", std::string(layerHead) + "%TO.N,GND*%\nX0Y0D03*\n%TO.N,VCC*%\nX50000Y0D03*\nM02*\n")));
    EXPECT_EQ(reader.getBoard().getNthLayer(0).numNets(), 2u);
}

// Pads on both sides, on one side and on none.
std::vector<std::string> padSet(const TempFolder &folder, const std::string &header) {
    const std::string head = "%FSLAX24Y24*%%MOMM*%%ADD10C,2*%D10*";
    return {folder.write("top.gbr", head + "X50000Y50000D03*X100000Y50000D03*X150000Y50000D03*M02*"),
            folder.write("bottom.gbr", head + "X50000Y50000D03*X150000Y50000D03*M02*"),
            folder.write("x.drl", "M48\n" + header +
                                      "METRIC\nT1C1.0\nT2C1.1\nT3C1.2\n%\nT1\nX5.0Y5.0\nX15.0Y5.0\nT2\n"
                                      "X10.0Y5.0\nT3\nX12.0Y9.0\nM30\n")};
}

std::vector<bool> platingOf(const EDABoard &board) {
    std::vector<bool> plated;
    for (auto via = board.beginVias(); via != board.endVias(); ++via)
        plated.push_back(via->isPlated());
    return plated;
}

TEST_F(FabricationReaderTest, HolesWithCopperAroundThemOnBothSidesAreGuessedToBePlated) {
    ASSERT_TRUE(reader.setFiles(padSet(folder, "")));
    ASSERT_TRUE(reader.readFiles(nullptr));
    EXPECT_THAT(platingOf(reader.getBoard()), ElementsAre(true, false, false));
    std::vector<std::size_t> counts;
    for (const Note &note : reader.getReport().files[2].notes) {
        if (note.kind == NoteKind::Guessed && note.what.find("plated") != std::string::npos)
            counts.push_back(note.count);
    }
    EXPECT_THAT(counts, ElementsAre(2u, 2u));
}

TEST_F(FabricationReaderTest, PlatingThatTheFileTellsIsNotGuessed) {
    ASSERT_TRUE(reader.setFiles(padSet(folder, ";TYPE=NON_PLATED\n")));
    ASSERT_TRUE(reader.readFiles(nullptr));
    EXPECT_THAT(platingOf(reader.getBoard()), ElementsAre(false, false, false));
    for (const Note &note : reader.getReport().files[2].notes)
        EXPECT_THAT(note.what, testing::Not(HasSubstr("taken as")));
}

TEST_F(FabricationReaderTest, PadsThatAreDrawnWithTheirHoleCountAsCopper) {
    const std::string pad = "%FSLAX24Y24*%%MOMM*%%ADD10C,2X1*%D10*X50000Y50000D03*M02*";
    ASSERT_TRUE(reader.setFiles({folder.write("top.gbr", pad), folder.write("bottom.gbr", pad),
                                 folder.write("x.drl", "M48\nMETRIC\nT1C1.0\n%\nT1\nX5.0Y5.0\nM30\n")}));
    ASSERT_TRUE(reader.readFiles(nullptr));
    EXPECT_THAT(platingOf(reader.getBoard()), ElementsAre(true));
}

} // namespace
