// The share of conductor in a picture, and the map of it.
#include "host/ServerModelGUI/PCBLayerImageCalculator.h"

#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/Types.h"
#include "support/LayerPictures.h"

#include <gmock/gmock.h>

using namespace EntityModel;
using namespace TestSupport;
using ServerConstructor::PCBLayerImageCalculator;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Map = std::vector<int>;

// A layer whose conductor colour is copper.
struct LayerImage : testing::Test {
    LayerImage() {
        colour(qRed(copper), qGreen(copper), qBlue(copper));
        EntityEditor::setValue(layer, MaterialIsConductor_t, "Yes");
        EntityEditor::setValue(layer, BackgroundIsIgnored_t, "Yes");
    }
    void colour(int red, int green, int blue) {
        EntityEditor::setValue(layer, MaterialRed_t, red);
        EntityEditor::setValue(layer, MaterialGreen_t, green);
        EntityEditor::setValue(layer, MaterialBlue_t, blue);
    }
    double percentage(const QImage &image) {
        PCBLayerImageCalculator calculator;
        calculator.initialise(layer, nullptr);
        return calculator.calculatePercentageConductor(image, map);
    }

    Model model{Conductor_Layer_t};
    Entity *layer = model.root();
    Map map{7, 7, 7};
};

} // namespace

TEST_F(LayerImage, TheShareOfThePixelsOfTheColourIsInPercent) {
    EXPECT_EQ(percentage(picture({"#...", "..#."})), 25.0);
    EXPECT_EQ(percentage(picture({"##", "##"})), 100.0);
    EXPECT_EQ(percentage(picture({"..", ".."})), 0.0);
}

TEST_F(LayerImage, ASmallPictureIsMappedPixelByPixelRowByRow) {
    percentage(picture({"#..", "..#"}));
    EXPECT_THAT(map, ElementsAre(1, 0, 0, 0, 0, 1));
}

TEST_F(LayerImage, ANullImageHasNoConductorAndNoMap) {
    EXPECT_EQ(percentage(QImage()), 0.0);
    EXPECT_THAT(map, IsEmpty());
}

TEST_F(LayerImage, AColourNextToTheConductorsIsNot) {
    QImage image = picture({"##"});
    image.setPixel(1, 0, copper + 1);
    EXPECT_EQ(percentage(image), 50.0);
}

TEST_F(LayerImage, TransparentPixelsDoNotCountWhereTheBackgroundIsIgnored) {
    EXPECT_EQ(percentage(picture({"#.  "})), 50.0);
    EXPECT_THAT(map, ElementsAre(1, 0, 0, 0));
}

TEST_F(LayerImage, TransparentPixelsCountWithoutConductorOtherwise) {
    EntityEditor::setValue(layer, BackgroundIsIgnored_t, "No");
    EXPECT_EQ(percentage(picture({"#.  "})), 25.0);
}

TEST_F(LayerImage, APictureOfNothingButIgnoredBackgroundHasNone) {
    EXPECT_EQ(percentage(picture({"  ", "  "})), 0.0);
    EXPECT_THAT(map, ElementsAre(0, 0, 0, 0));
}

TEST_F(LayerImage, AColourThatIsNoConductorLeavesAllOthers) {
    EntityEditor::setValue(layer, MaterialIsConductor_t, "No");
    EXPECT_EQ(percentage(picture({"#...", "    "})), 75.0);
    EXPECT_THAT(map, ElementsAre(0, 1, 1, 1, 0, 0, 0, 0));
}

TEST_F(LayerImage, AColourOutsideEightBitsIsNoPixels) {
    colour(qRed(copper) + 256, qGreen(copper), qBlue(copper));
    EXPECT_EQ(percentage(picture({"#."})), 0.0);
    colour(-1, 0, 0);
    EXPECT_EQ(percentage(picture({"#."})), 0.0);
}

TEST_F(LayerImage, ColoursAreReadInEveryPixelFormat) {
    const QImage image = picture({"#..#", "...#"});
    for (const QImage::Format format :
         {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied, QImage::Format_Indexed8,
          QImage::Format_RGB888, QImage::Format_RGBA64}) {
        EXPECT_EQ(percentage(image.convertToFormat(format, {copper, resin})), 37.5) << format;
        EXPECT_THAT(map, ElementsAre(1, 0, 0, 1, 0, 0, 0, 1)) << format;
    }
}

TEST_F(LayerImage, APictureOfOneBitAPixelIsReadByItsColours) {
    colour(0, 0, 0);
    QImage image(35, 2, QImage::Format_Mono);
    image.setColorTable({0xff000000, 0xffffffff});
    image.fill(1);
    image.setPixel(34, 1, 0);
    EXPECT_DOUBLE_EQ(percentage(image), 100.0 / 70);
    ASSERT_EQ(map.size(), 70u);
    EXPECT_EQ(map.back(), 1);
}

TEST_F(LayerImage, TheMapOfALargePictureIsBounded) {
    QImage image(1000, 3, QImage::Format_RGB32);
    image.fill(copper);
    EXPECT_EQ(percentage(image), 100.0);
    EXPECT_EQ(map.size(), 256u * 3);
    EXPECT_THAT(map, Each(1));
}

TEST_F(LayerImage, ACellIsConductorWhenHalfOfItIs) {
    QImage image(512, 512, QImage::Format_RGB32);
    image.fill(resin);
    image.setPixel(0, 0, copper); // A quarter of the first cell.
    image.setPixel(2, 0, copper); // Half of the second.
    image.setPixel(3, 1, copper);
    image.setPixel(510, 511, copper); // Half of the last.
    image.setPixel(511, 511, copper);
    EXPECT_DOUBLE_EQ(percentage(image), 100.0 * 5 / (512 * 512));
    ASSERT_EQ(map.size(), 256u * 256);
    EXPECT_EQ(map[0], 0);
    EXPECT_EQ(map[1], 1);
    EXPECT_EQ(map.back(), 1);
}

TEST_F(LayerImage, EveryPixelOfAnAwkwardSizeBelongsToOneCell) {
    for (const int side : {255, 256, 257, 300, 511, 513, 700}) {
        QImage image(side, side, QImage::Format_RGB32);
        image.fill(copper);
        EXPECT_EQ(percentage(image), 100.0) << side;
        EXPECT_THAT(map, Each(1)) << side;
        image.fill(resin);
        image.setPixel(side - 1, side - 1, copper);
        EXPECT_DOUBLE_EQ(percentage(image), 100.0 / side / side) << side;
    }
}

TEST_F(LayerImage, ACompositeGoesBeforeTheEntity) {
    Model other(Conductor_Layer_t);
    EntityEditor::setValue(other.root(), MaterialIsConductor_t, "Yes");
    PCBLayerImageCalculator calculator;
    calculator.initialise(layer, other.root());
    EXPECT_EQ(calculator.calculatePercentageConductor(picture({"#."}), map), 0.0);
}

TEST(PCBLayerImageCalculator, WithoutSettingsAllButBlackIsConductor) {
    PCBLayerImageCalculator calculator;
    calculator.initialise(nullptr, nullptr);
    Map map;
    QImage image = picture({"#.", ".."});
    image.setPixel(0, 0, 0xff000000);
    EXPECT_EQ(calculator.calculatePercentageConductor(image, map), 75.0);
}
