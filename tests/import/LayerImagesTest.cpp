// Layers that are modelled from an image: copies, mirrored texture, colours, share of conductor.
#include "LayerSupport.h"
#include "support/LayerPictures.h"

#include "host/EntityCore/EntityManager.h"
#include "host/FileSystem/File.h"
#include "host/ServerModelGUI/LayerImageFile.h"

#include <cstdlib>
#include <gmock/gmock.h>

using namespace TestSupport;
using FileSystem::File;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// The open model is "model.json" in a folder of the test, and the reader's image lies beside it.
struct ImageBench : LayerBench {
    explicit ImageBench(const std::string &importType = "PCB") : LayerBench(importType) {
        currentFile = folder.path("model.json");
        layer.setImageConductorColour(qRed(copper), qGreen(copper), qBlue(copper));
    }
    ~ImageBench() { currentFile.clear(); }

    void image(const std::string &path) {
        source = path;
        layer.setImageFilename(path);
    }
    std::string idOf(Entity *entity) const { return entity->getID().toString(); }
    std::vector<int> mapOf(Entity *entity) const {
        return static_cast<const IntListAttribute *>(entity->readAttribute(AttributePath(MaterialMap_t)))
            ->values();
    }
    double percentageOf(Entity *entity) const {
        return getStandardDoubleValue(entity, Conductor_Percentage_From_Image_t, -1.0);
    }
    std::string whole(int attribute, const std::string &name) const {
        const char *folders[] = {"Imported Image", "Top Texture File", "Bottom Texture File"};
        return folder.path("model") + "/" + folders[attribute] + "/" + name;
    }

    std::string &currentFile = EntityGUI::EntityManager::s_CurrentFilename;
    TempFolder folder;
    std::string source;
};

class LayerImagesOf : public testing::TestWithParam<const char *> {};
INSTANTIATE_TEST_SUITE_P(BothFamilies, LayerImagesOf, testing::Values("PCB", "Component"), familyName);

void expectBadImage(ImageBench &bench) {
    Entity *layer = bench.importOne();
    ASSERT_TRUE(layer);
    EXPECT_EQ(text(layer, Modelling_Level_t), "Simplified");
    EXPECT_EQ(text(layer, ImageWidth_t), "0");
    EXPECT_EQ(text(layer, ImageHeight_t), "0");
    EXPECT_EQ(bench.percentageOf(layer), 0.0);
    EXPECT_THAT(bench.mapOf(layer), IsEmpty());
    EXPECT_EQ(text(layer, MaterialIsConductor_t), "Yes");
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

// Sets a variable for one test.
class Variable {
public:
    Variable(const char *name, const std::string &value) : name_(name) { qputenv(name, value.c_str()); }
    ~Variable() { qunsetenv(name_); }

private:
    const char *name_;
};

} // namespace

TEST_P(LayerImagesOf, AnImageGivesSizeColoursShareAndMap) {
    ImageBench bench(GetParam());
    bench.image(save(bench.folder, "top.png", picture({"#..", "..#", "...", "##."})));
    bench.layer.setTopOffset(0.6);
    Entity *layer = bench.importOne();
    ASSERT_TRUE(layer);
    EXPECT_EQ(text(layer, Modelling_Level_t), "Simplified");
    EXPECT_EQ(text(layer, Map_Image_To_Grid_t), "Yes");
    EXPECT_EQ(text(layer, ImageWidth_t), "3");
    EXPECT_EQ(text(layer, ImageHeight_t), "4");
    EXPECT_EQ(text(layer, MaterialRed_t), "184");
    EXPECT_EQ(text(layer, MaterialGreen_t), "115");
    EXPECT_EQ(text(layer, MaterialBlue_t), "51");
    EXPECT_EQ(text(layer, MaterialIsConductor_t), "Yes");
    EXPECT_EQ(text(layer, BackgroundIsIgnored_t), "Yes");
    EXPECT_EQ(text(layer, Render_Style_t), "Textured");
    EXPECT_DOUBLE_EQ(bench.percentageOf(layer), 100.0 / 3);
    EXPECT_THAT(bench.mapOf(layer), ElementsAre(1, 0, 0, 0, 0, 1, 0, 0, 0, 1, 1, 0));
    EXPECT_DOUBLE_EQ(mm(layer, Y_Location_t), 1.0);
}

TEST(LayerImages, TheCopiesBearTheIdOfTheEntityAndTheBottomOneIsMirrored) {
    ImageBench bench;
    bench.image(save(bench.folder, "top.png", picture({"#..", "##."})));
    Entity *layer = bench.importOne();
    const std::string id = bench.idOf(layer);
    EXPECT_EQ(text(layer, Imported_Image_t), bench.whole(0, "top_" + id + ".png"));
    EXPECT_EQ(text(layer, Top_Texture_File_t), bench.whole(1, "top_" + id + ".png"));
    EXPECT_EQ(text(layer, Bottom_Texture_File_t), bench.whole(2, "top_" + id + "_flipped.png"));
    EXPECT_EQ(rowsOf(text(layer, Imported_Image_t)), "#..\n##.\n");
    EXPECT_EQ(rowsOf(text(layer, Top_Texture_File_t)), "#..\n##.\n");
    EXPECT_EQ(rowsOf(text(layer, Bottom_Texture_File_t)), "..#\n.##\n");
    EXPECT_FALSE(File::exists(bench.source));
}

TEST(LayerImages, WithoutIdsTheCopiesKeepTheNameOfTheImage) {
    ImageBench bench;
    bench.importer.setInsertEntityIdInImageFile(false);
    bench.image(save(bench.folder, "inner.1.png", picture({"#."})));
    Entity *layer = bench.importOne();
    EXPECT_EQ(text(layer, Imported_Image_t), bench.whole(0, "inner.1.png"));
    EXPECT_EQ(text(layer, Top_Texture_File_t), bench.whole(1, "inner.1.png"));
    EXPECT_EQ(text(layer, Bottom_Texture_File_t), bench.whole(2, "inner.1_flipped.png"));
    EXPECT_EQ(rowsOf(text(layer, Bottom_Texture_File_t)), ".#\n");
}

TEST(LayerImages, TwoLayersWithImagesOfOneNameKeepTheirOwnByTheirIds) {
    ImageBench bench;
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    bench.board().addLayer(bench.layer);
    std::filesystem::create_directory(bench.folder.path("other"));
    bench.image(save(bench.folder, "other/a.png", picture({"##"})));
    bench.importOne();
    const auto layers = bench.layers();
    ASSERT_EQ(layers.size(), 2u);
    EXPECT_EQ(bench.percentageOf(layers[0]), 50.0);
    EXPECT_EQ(bench.percentageOf(layers[1]), 100.0);
    EXPECT_EQ(rowsOf(text(layers[0], Imported_Image_t)), "#.\n");
    EXPECT_EQ(rowsOf(text(layers[1], Imported_Image_t)), "##\n");
}

TEST(LayerImages, TheSecondLayerOfOneImageFindsItGone) {
    ImageBench bench;
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    bench.board().addLayer(bench.layer);
    bench.importOne();
    const auto layers = bench.layers();
    ASSERT_EQ(layers.size(), 2u);
    EXPECT_EQ(bench.percentageOf(layers[0]), 50.0);
    EXPECT_EQ(bench.percentageOf(layers[1]), 0.0);
    EXPECT_EQ(text(layers[1], ImageWidth_t), "0");
}

TEST(LayerImages, AFailedCopyDoesNotTurnAnOlderTextureBack) {
    ImageBench bench;
    bench.importer.setInsertEntityIdInImageFile(false);
    bench.image(save(bench.folder, "a.png", picture({"#.."})));
    bench.board().addLayer(bench.layer);
    bench.importOne();
    EXPECT_EQ(rowsOf(bench.whole(2, "a_flipped.png")), "..#\n");
}

TEST(LayerImages, AFailedCopyDoesNotShowAnOlderFileOfItsName) {
    ImageBench bench;
    bench.importer.setInsertEntityIdInImageFile(false);
    bench.image(save(bench.folder, "a.png", picture({"#.."})));
    bench.board().addLayer(bench.layer);
    bench.importOne();
    Entity *second = bench.layers().at(1);
    EXPECT_EQ(text(second, Imported_Image_t), bench.whole(0, "a.png"));
    EXPECT_EQ(text(second, ImageWidth_t), "0");
    EXPECT_EQ(bench.percentageOf(second), 0.0);
    EXPECT_THAT(bench.mapOf(second), IsEmpty());
}

TEST(LayerImages, AnImageThatIsItsOwnCopyStays) {
    for (const char *attribute : {"Imported Image", "Top Texture File"}) {
        SCOPED_TRACE(attribute);
        ImageBench bench;
        bench.importer.setInsertEntityIdInImageFile(false);
        const std::string folder = std::string("model/") + attribute;
        std::filesystem::create_directories(bench.folder.path(folder));
        bench.image(save(bench.folder, folder + "/a.png", picture({"#."})));
        Entity *layer = bench.importOne();
        EXPECT_EQ(rowsOf(bench.source), "#.\n");
        EXPECT_EQ(rowsOf(text(layer, Imported_Image_t)), "#.\n");
        EXPECT_EQ(rowsOf(text(layer, Top_Texture_File_t)), "#.\n");
        EXPECT_EQ(rowsOf(text(layer, Bottom_Texture_File_t)), ".#\n");
        EXPECT_EQ(bench.percentageOf(layer), 50.0);
    }
}

TEST(LayerImages, ANameWithANulIsThatOfNoFile) {
    ImageBench bench;
    const std::string file = save(bench.folder, "a.png", picture({"#."}));
    bench.image(file + std::string(1, '\0') + ".png");
    expectBadImage(bench);
    EXPECT_EQ(text(bench.layers().at(0), Imported_Image_t), "");
    EXPECT_EQ(rowsOf(file), "#.\n");
    EXPECT_EQ(bench.folder.numEntries(), 1u);
}

TEST(LayerImages, AFileAboveTheLimitIsNotCopied) {
    ImageBench bench;
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    std::filesystem::resize_file(std::filesystem::u8path(bench.source),
                                 ServerConstructor::LayerImageFile::maxFileSize + 1);
    expectBadImage(bench);
    Entity *layer = bench.layers().at(0);
    for (const TypeRef &attribute : {Imported_Image_t, Top_Texture_File_t, Bottom_Texture_File_t}) {
        EXPECT_NE(text(layer, attribute), "");
        EXPECT_FALSE(File::exists(text(layer, attribute)));
    }
    EXPECT_FALSE(File::exists(bench.source));
}

TEST(LayerImages, AModelThatWasNeverSavedKeepsItsImagesWithTheApplication) {
    ImageBench bench;
    const Variable variable("EDA_DATA_DIR", bench.folder.path("data"));
    bench.currentFile.clear();
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    Entity *layer = bench.importOne();
    EXPECT_EQ(text(layer, Imported_Image_t),
              bench.folder.path("data") + "/Imported Image/a_" + bench.idOf(layer) + ".png");
    EXPECT_EQ(rowsOf(text(layer, Imported_Image_t)), "#.\n");
    EXPECT_EQ(bench.percentageOf(layer), 50.0);
}

TEST(LayerImages, WithoutAnyFolderNothingIsCopied) {
    ImageBench bench;
    const Variable variable("EDA_DATA_DIR", bench.folder.write("no folder", ""));
    bench.currentFile.clear();
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    Entity *layer = bench.importOne();
    EXPECT_EQ(text(layer, Imported_Image_t), "");
    EXPECT_EQ(text(layer, Bottom_Texture_File_t), "");
    EXPECT_EQ(bench.percentageOf(layer), 0.0);
    EXPECT_FALSE(File::exists(bench.source));
}

TEST(LayerImages, TheImageIsDeletedEvenWhenTheCopiesFailed) {
    ImageBench bench;
    bench.folder.write("model", "a file in the place of the folder");
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    expectBadImage(bench);
    EXPECT_FALSE(File::exists(bench.source));
    EXPECT_EQ(bench.folder.read("model"), "a file in the place of the folder");
}

TEST(LayerImages, AMissingImageShowsAsSizeAndShareZero) {
    ImageBench bench;
    bench.image(bench.folder.path("missing.png"));
    expectBadImage(bench);
}

TEST(LayerImages, AnImageThatIsAFolderIsLeftAlone) {
    ImageBench bench;
    std::filesystem::create_directory(bench.folder.path("pictures"));
    bench.image(bench.folder.path("pictures"));
    expectBadImage(bench);
    EXPECT_TRUE(std::filesystem::is_directory(bench.folder.path("pictures")));
}

TEST(LayerImages, AFileThatIsNoPictureIsCopiedAllTheSame) {
    ImageBench bench;
    bench.image(bench.folder.write("top.png", "no picture"));
    expectBadImage(bench);
    Entity *layer = bench.layers()[0];
    EXPECT_TRUE(File::exists(text(layer, Imported_Image_t)));
    EXPECT_TRUE(File::exists(text(layer, Bottom_Texture_File_t)));
    EXPECT_FALSE(File::exists(bench.source));
}

TEST(LayerImages, APictureOfAFormatThatIsNotTakenIsABadImage) {
    for (const auto &[name, bytes] : {std::pair("a.svg", drawing()), std::pair("a.ico", icon())}) {
        ImageBench bench;
        bench.image(bench.folder.write(name, bytes));
        expectBadImage(bench);
    }
}

TEST(LayerImages, AnImageOfMonstrousSizeIsABadImage) {
    ImageBench bench;
    bench.image(bench.folder.write("top.bmp", emptyBitmap(60000, 60000)));
    expectBadImage(bench);
}

TEST(LayerImages, NamesThatLeadUpwardsStayInTheFolderOfTheAttribute) {
    ImageBench bench;
    bench.importer.setInsertEntityIdInImageFile(false);
    for (const char *name : {"..", ".", "x/.."}) {
        bench.image(bench.folder.path(name));
        bench.board().addLayer(bench.layer);
    }
    bench.boardEntity = bench.import();
    EXPECT_EQ(bench.layers().size(), 3u);
    EXPECT_EQ(bench.folder.numEntries(), 1u); // The folder of the model, without files.
}

TEST(LayerImages, ADetailedLayerIgnoresItsImageAndKeepsTheFile) {
    ImageBench bench;
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    bench.layer.addTrace(LayerBench::square(20));
    Entity *layer = bench.importOne();
    EXPECT_EQ(text(layer, Modelling_Level_t), "Detailed");
    EXPECT_EQ(text(layer, Imported_Image_t), "");
    EXPECT_EQ(text(layer, Render_Style_t), "Shaded");
    EXPECT_TRUE(File::exists(bench.source));
    EXPECT_EQ(bench.folder.numEntries(), 1u);
}

TEST(LayerImages, WithoutDetailALayerWithConductorsTakesItsImage) {
    ImageBench bench;
    bench.set(Import_Detailed_Layers_t, "No");
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    bench.layer.addTrace(LayerBench::square(20));
    Entity *layer = bench.importOne();
    EXPECT_EQ(text(layer, Modelling_Level_t), "Simplified");
    EXPECT_EQ(bench.percentageOf(layer), 50.0);
    EXPECT_THAT(bench.conductors(layer), IsEmpty());
}

TEST(LayerImages, AnImageGoesBeforeAUniformConductivity) {
    ImageBench bench;
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    bench.layer.setUniformConductivity(12);
    Entity *layer = bench.importOne();
    EXPECT_EQ(getStandardDoubleValue(layer, Conductor_Planar_Percentage_t, -1.0), 100.0);
}

TEST(LayerImages, ADielectricLayerHasNoImageAndKeepsTheFile) {
    ImageBench bench;
    bench.set(Import_Dielectric_Layers_t, "Yes");
    bench.layer = EDA::EDABoardLayer(false);
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    bench.importOne();
    EXPECT_EQ(bench.dielectrics().size(), 1u);
    EXPECT_TRUE(File::exists(bench.source));
}

TEST(LayerImages, UndoTakesTheLayerBackAndTheModelFileKeepsItsValues) {
    ImageBench bench;
    bench.image(save(bench.folder, "a.png", picture({"#."})));
    const std::string before = ModelFile::toText(bench.model);
    bench.importOne();
    const std::string after = ModelFile::toText(bench.model);
    EXPECT_THAT(after, testing::HasSubstr("Imported Image"));
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
    ASSERT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(ModelFile::toText(bench.model), after);
}
