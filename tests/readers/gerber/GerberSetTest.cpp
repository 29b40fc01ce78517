// Sets of Gerber and drill files.
#include "GerberTestSupport.h"
#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"
#include "support/CancelAfter.h"

using namespace TestSupport;

namespace {

const char *const twoDiscs = "%FSLAX24Y24*%\n%MOMM*%\n%ADD10C,1*%\nD10*\nX0Y0D03*\nX5000Y0D03*\nM02*\n";
const char *const oneHole = "M48\nMETRIC,TZ\nT1C0.5\n%\nT1\nX10000Y20000\nM30\n";

struct GerberSet {
    GerberSet() {
        files = QStringList{path("top.gbr", twoDiscs), path("bottom.gbr", twoDiscs), path("holes.drl", oneHole)};
    }
    QString path(const char *name, const char *text) { return QString::fromStdString(folder.write(name, text)); }
    void merge(const char *value) {
        reader.getOptions()->findAttribute(EntityModel::Merge_Conductors_t, false)->setFromString(value);
    }

    TempFolder folder;
    EDA::GerberReader reader;
    QStringList files;
};

} // namespace

TEST(GerberSet, FilesAreSortedIntoLayersAndDrills) {
    GerberSet set;
    set.reader.initialiseFiles(set.files);
    EXPECT_EQ(set.reader.getLayerFiles(), set.files.mid(0, 2));
    EXPECT_EQ(set.reader.getViaFiles(), set.files.mid(2));
}

TEST(GerberSet, LayersComeInTheOrderOfTheirFiles) {
    GerberSet set;
    set.reader.setLayerArrangement({set.files[1], set.files[0]}, {}, {}, {});
    EXPECT_TRUE(set.reader.readFiles(nullptr));
    ASSERT_EQ(set.reader.getBoard().numLayers(), 2U);
    EXPECT_EQ(set.reader.getBoard().beginLayers()->getName(), "bottom");
}

TEST(GerberSet, ViasHaveTheLayersOfTheirFileWithoutExtension) {
    GerberSet set;
    set.reader.setLayerArrangement(set.files.mid(0, 2), set.files.mid(2), {{0, "top.gbr"}}, {{0, "bottom.gbr"}});
    EXPECT_TRUE(set.reader.readFiles(nullptr));
    std::string start, end;
    ASSERT_EQ(set.reader.getBoard().numVias(0), 1U);
    set.reader.getBoard().beginVias()->getLayers(start, end);
    EXPECT_EQ(start, "top");
    EXPECT_EQ(end, "bottom");
}

TEST(GerberSet, ViasOfAFileWithoutLayersHaveNone) {
    GerberSet set;
    set.reader.setLayerArrangement(set.files.mid(0, 2), set.files.mid(2), {}, {});
    EXPECT_TRUE(set.reader.readFiles(nullptr));
    std::string start = "x", end = "x";
    set.reader.getBoard().beginVias()->getLayers(start, end);
    EXPECT_EQ(start + end, "");
}

TEST(GerberSet, TwoFilesOfOneNameMakeTwoLayersOfIt) {
    GerberSet set;
    std::filesystem::create_directory(set.folder.path("inner"));
    const QString other = QString::fromStdString(set.folder.write("inner/top.gbr", twoDiscs));
    set.reader.initialiseFiles({set.files[0], other});
    EXPECT_TRUE(set.reader.readFiles(nullptr));
    ASSERT_EQ(set.reader.getBoard().numLayers(), 2U);
    for (auto layer = set.reader.getBoard().beginLayers(); layer != set.reader.getBoard().endLayers(); ++layer)
        EXPECT_EQ(layer->getName(), "top");
}

TEST(GerberSet, AMissingLayerMakesTheResultFalseAndTheRestIsRead) {
    GerberSet set;
    set.reader.setLayerArrangement({set.files[0], "missing.gbr", set.files[1]}, {}, {}, {});
    EXPECT_FALSE(set.reader.readFiles(nullptr));
    EXPECT_EQ(set.reader.getBoard().numLayers(), 2U);
}

TEST(GerberSet, AMissingDrillFileGoesUnnoticed) {
    GerberSet set;
    set.reader.setLayerArrangement(set.files.mid(0, 2), {"missing.drl"}, {}, {});
    EXPECT_TRUE(set.reader.readFiles(nullptr));
}

TEST(GerberSet, OptionsArePresetOnceAReader) {
    GerberSet set;
    EntityModel::Entity *options = set.reader.getOptions();
    ASSERT_TRUE(options);
    const auto isOn = [&](const EntityModel::TypeRef &type) { return options->findAttribute(type, false)->getBool(); };
    EXPECT_TRUE(isOn(EntityModel::Filter_Options_t));
    EXPECT_TRUE(isOn(EntityModel::Keepout_Options_t));
    EXPECT_TRUE(isOn(EntityModel::Import_Detailed_Layers_t));
    EXPECT_FALSE(isOn(EntityModel::Merge_Conductors_t));
    EXPECT_TRUE(options->findAttribute(EntityModel::Import_Vias_t, false)->getFlag());
    EXPECT_TRUE(options->findAttribute(EntityModel::Import_Detailed_Layers_t, false)->getFlag());
    set.merge("true");
    set.reader.getOptions();
    EXPECT_TRUE(isOn(EntityModel::Merge_Conductors_t));
    EDA::GerberReader another;
    another.getOptions();
    EXPECT_FALSE(isOn(EntityModel::Merge_Conductors_t));
}

TEST(GerberSet, MergingIsWhatTheOptionsSay) {
    const char *const overlapping = "%FSLAX24Y24*%\n%ADD10C,1*%\nD10*\nX0Y0D03*\nX5000Y0D03*\nX100000Y0D03*\n";
    for (const auto &[value, expected] : {std::pair{"true", 2U}, {"false", 3U}}) {
        GerberSet set;
        set.reader.initialiseFiles({set.path("over.gbr", overlapping)});
        set.merge(value);
        EXPECT_TRUE(set.reader.readFiles(nullptr));
        EXPECT_EQ(set.reader.getBoard().beginLayers()->numTraces(), expected) << value;
    }
}

TEST(GerberSet, AnErrorOfAFileThatIsNotOfCopperReplacesWhatWasSaidBefore) {
    GerberSet set;
    set.reader.initialiseFiles({set.path("a.gbr", "QQQ*\n"), set.path("m.gbr", "%TF.FileFunction,Legend,Top*%\n"),
                                set.path("z.gbr", "RRR*\n")});
    EXPECT_FALSE(set.reader.readFiles(nullptr));
    EXPECT_EQ(set.reader.getError(), "This file does not represent a Copper layer; FileFunction = Legend.\n"
                                     "Unhandled statement: RRR\n");
    EXPECT_EQ(set.reader.getBoard().numLayers(), 2U);
}

TEST(GerberSet, ProgressNamesEachFile) {
    GerberSet set;
    set.reader.initialiseFiles(set.files);
    RecordingProgress progress;
    EXPECT_TRUE(set.reader.readFiles(&progress));
    ASSERT_GE(progress.texts.size(), 3U);
    EXPECT_EQ(progress.texts.front(), "Parsing file (top.gbr)...");
    EXPECT_EQ(progress.texts.back(), "Parsing file (holes.drl)...");
    EXPECT_EQ(progress.numRanges(), 0);
    EXPECT_TRUE(std::is_sorted(progress.values.begin(), progress.values.end()));
}

TEST(GerberSet, ACancelEndsTheSetAndKeepsWhatWasRead) {
    GerberSet set;
    set.reader.initialiseFiles(set.files);
    CancelAfter progress(3);
    EXPECT_FALSE(set.reader.readFiles(&progress));
    EXPECT_EQ(set.reader.getError(), "");
    EXPECT_EQ(set.reader.getBoard().numLayers(), 1U);
    EXPECT_EQ(set.reader.getBoard().numVias(0), 0U);
    EXPECT_EQ(progress.numRanges(), 0);
}

TEST(GerberSet, ACopyReadsOnByItself) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("D10*\nX0Y0D03*\n"));
    EDA::GerberReader copy(bench.reader);
    EXPECT_TRUE(copy.readFile(bench.folder.path("top.gbr")));
    EXPECT_EQ(copy.getBoard().numLayers(), 2U);
    EXPECT_EQ(bench.board().numLayers(), 1U);
}

TEST(GerberSet, AGerberFileAmongTheViaFilesGivesViasOfItsRoundFlashes) {
    GerberSet set;
    const QString drills = set.path(
        "drill.gbr", "%FSLAX24Y24*%\n%ADD10C,0.5*%\n%ADD11R,1X1*%\nD10*\nX0Y0D03*\nX50000Y0D03*\nD11*\nX90000Y0D03*\n");
    set.reader.setLayerArrangement({}, {drills}, {}, {});
    EXPECT_TRUE(set.reader.readFiles(nullptr));
    ASSERT_EQ(set.reader.getBoard().numVias(0), 1U);
    const EDA::EDAVia &via = *set.reader.getBoard().beginVias();
    EXPECT_NEAR(via.getDiameter(), 0.5, 1e-9);
    EXPECT_EQ(via.numInstances(), 1U);
    EXPECT_FALSE(via.isPlated());
    EXPECT_EQ(via.getHoleType(), "VIA");
}
