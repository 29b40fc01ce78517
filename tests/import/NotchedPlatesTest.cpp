// Plates that pass for circles: three of their points, a third of the outline apart, lie on a line.
#include "ComponentSupport.h"
#include "ConductorSupport.h"

#include <cmath>

using namespace TestSupport;

namespace {

// A square with sides of 10 and two notches; 12 points, so that every kind of outline could be a circle.
const std::pair<double, double> corners[] = {{0, 0}, {2, 0}, {2, 2}, {4, 2},  {4, 0},   {6, 0},
                                             {6, 2}, {8, 2}, {8, 0}, {10, 0}, {10, 10}, {0, 10}};

EDA::EDAOutline plate(double x, double y, bool isHole = false, double scale = 1.0, double angle = 0.0) {
    const double across = scale * std::cos(angle), along = scale * std::sin(angle);
    EDA::EDAOutline outline(isHole);
    for (const auto &[dx, dy] : corners)
        outline.addPoint(0, x + dx * across - dy * along, y + dx * along + dy * across, 0.0);
    return outline;
}

bool passesForCircle(const EDA::EDAOutline &outline, double &diameter) {
    double x = 0.0, y = 0.0;
    return outline.isCylinder(x, y, diameter, 12, 1e-5);
}

// The points of the plate as an outline has them, its low corner at (x, z) of an entity.
std::string pointsAt(int x, int z) {
    std::string text;
    for (const auto &[dx, dy] : corners) {
        text += (text.empty() ? "" : ",") + std::to_string(x + static_cast<int>(dx)) + ',' +
                std::to_string(z - static_cast<int>(dy));
    }
    return text + " <mm>";
}

// One shape and outline for a plate with its low corner at (x, z).
void expectPlate(Entity *entity, int x, int z) {
    ASSERT_TRUE(entity);
    EXPECT_EQ(text(entity, Shape_t), "Polygon");
    EXPECT_EQ(text(entity, Outline_t), pointsAt(x, z));
}

class Plates : public testing::TestWithParam<ConductorFamily> {
protected:
    ConductorBench bench{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Families, Plates, testing::Values(onPcb, onSubstrate));

} // namespace

TEST(NotchedPlates, ThePlateIsACircleWithoutSizeByItsPointsAlone) {
    double diameter = 0.0;
    ASSERT_TRUE(passesForCircle(plate(20, 40), diameter));
    EXPECT_FALSE(std::isfinite(diameter));
}

TEST_P(Plates, AConductorIsAPolygon) { expectPlate(bench.importOne(plate(20, 40)), 10, 30); }

TEST_P(Plates, AHoleInAConductorIsAPolygon) {
    EDA::EDAOutline outer = EDA::test::outline("15,35 40,35 40,60 15,61");
    outer.addInternalOutline(plate(20, 40, true));
    Entity *const conductor = bench.importOne(outer);
    ASSERT_TRUE(conductor);
    if (numOutlineHoles(conductor) >= 0) {
        EXPECT_EQ(numOutlineHoles(conductor), 1);
        EXPECT_EQ(text(conductor, "Hole 1"), pointsAt(10, 30));
        EXPECT_TRUE(bench.holes(conductor).empty());
    } else {
        ASSERT_EQ(bench.holes(conductor).size(), 1u);
        expectPlate(bench.holes(conductor)[0], 10 - 5, 30 - 9); // from the corner at (5, 9)
    }
}

TEST_P(Plates, AHoleOfTheBoardIsAPolygon) {
    for (const auto &[dx, dy] : corners)
        bench.board().addPoint(1, 20 + dx, 40 + dy, 0.0);
    std::vector<Entity *> holes;
    getLinkedEntities(bench.import(), Holes_t, holes);
    ASSERT_EQ(holes.size(), 1u);
    expectPlate(holes[0], -5, 5);
    EXPECT_EQ(mm(holes[0], X_Location_t), 15.0);
    EXPECT_EQ(mm(holes[0], Z_Location_t), 25.0);
}

TEST_P(Plates, AKeepoutIsAPolygon) {
    EDA::EDAKeepout keepout("VIA_KEEPOUT");
    for (const auto &[dx, dy] : corners)
        keepout.addPoint(0, 20 + dx, 40 + dy, 0.0);
    bench.board().addKeepout(keepout);
    const auto keepouts = bench.children(bench.import(), Board_Keepout_t);
    if (GetParam().board == PCB_t) {
        ASSERT_EQ(keepouts.size(), 1u);
    }
    for (Entity *entity : keepouts)
        expectPlate(entity, 10, 30);
}

TEST_P(Plates, ABoardIsAPolygon) {
    ImportBench board;
    board.set(Import_Type_t, GetParam().importAs);
    for (const auto &[dx, dy] : corners)
        board.board().addPoint(0, dx, dy, 0.0);
    expectPlate(board.import(), 0, 0);
    EXPECT_EQ(board.importer.getErrorString(), "");
}

TEST(NotchedPlates, AComponentIsAPolygon) {
    for (const char *type : {"Component", "Inductor"}) {
        ComponentBench bench("");
        bench.part.getOutline() = plate(0, 0);
        bench.part.setImportToType(type);
        expectPlate(bench.importOne(), 0, 0);
    }
    ComponentBench bench("");
    bench.part.getOutline() = plate(0, 0);
    expectPlate(bench.importOneOnSubstrate(), 0, 0);
}

TEST(NotchedPlates, ASolidOfAComponentAndTheHoleInItArePolygons) {
    ComponentBench bench(lOutline);
    EDA::EDAOutline body = plate(0, 0);
    body.setZDimensions(0, 1);
    EDA::EDAOutline pierced = EDA::test::outline("-5,-5 20,-5 20,20 -5,21");
    pierced.addInternalOutline(plate(0, 0, true));
    bench.part.getOutline().addInternalOutline(body);
    bench.part.getOutline().addInternalOutline(pierced);
    const auto groups = bench.children(bench.importOne(), Subcomponent_Group_t);
    ASSERT_EQ(groups.size(), 1u);
    const auto solids = bench.children(groups[0], Solid_Obstruction_t);
    ASSERT_EQ(solids.size(), 3u);
    expectPlate(solids[1], 0, 0);
    const auto holes = bench.children(solids[2], TypeRef("Obstruction Hole"));
    ASSERT_EQ(holes.size(), 1u);
    EXPECT_EQ(text(holes[0], Shape_t), "Polygon");
}

// With rounded coordinates the points are hardly on a line, and the circle through them has a size beyond all
// use.
TEST_P(Plates, APlateIsAPolygonWhateverItsPlaceSizeAndAngle) {
    constexpr int count = 3000;
    EDA::test::Random random(20240601);
    int circles = 0;
    for (int i = 0; i < count; ++i) {
        const double angle = i % 3 == 0 ? random.between(0.0, 6.0) : 0.0;
        const EDA::EDAOutline placed = plate(random.between(0.0, 9.0), random.between(0.0, 9.0), false,
                                             random.between(0.01, 1.0), angle);
        double diameter = 0.0;
        if (passesForCircle(placed, diameter) && std::isfinite(diameter)) ++circles;
        bench.add(bench.shape(placed));
    }
    EXPECT_GT(circles, 0);
    bench.importLayer();
    const auto conductors = bench.conductors();
    ASSERT_EQ(conductors.size(), static_cast<std::size_t>(count));
    for (Entity *conductor : conductors)
        ASSERT_EQ(text(conductor, Shape_t), "Polygon");
}
