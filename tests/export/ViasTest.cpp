// Vias of boards and of parts.
#include "ExportScene.h"

using namespace TestSupport;

namespace {

class ExportedVia : public ExportScene {
protected:
    static Entity *addVia(Entity *parent, const Values &more = {}) {
        Entity *const via = add(parent, "Via", "Vias", {{"X Location", "2 mm"}, {"Z Location", "3 mm"}});
        set(via, more);
        return via;
    }
    static Entity *addThree(Entity *parent) {
        return addVia(parent, {{"Modelling Type", "Multiple Vias"},
                               {"Instance Placements", "0,0,1,0,1,2 <mm>"},
                               {"Width", "2 mm"},
                               {"Depth", "2 mm"}});
    }
    static std::vector<std::pair<double, double>> centres(const EDA::EDABoard &board) {
        std::vector<std::pair<double, double>> result;
        for (auto via = board.beginVias(); via != board.endVias(); ++via)
            result.emplace_back(via->getXCentre(), via->getYCentre());
        return result;
    }
    void expectCentres(const std::vector<std::pair<double, double>> &wanted) const {
        const auto found = centres(exported());
        ASSERT_EQ(found.size(), wanted.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            EXPECT_NEAR(found[i].first, wanted[i].first, 1e-9) << i;
            EXPECT_NEAR(found[i].second, wanted[i].second, 1e-9) << i;
        }
    }
};

TEST_F(ExportedVia, HasNameDiameterAndHoleType) {
    Entity *const entity = addVia(pcb, {{"Diameter", "0.5 in"}});
    set(entity, {{"Name", "thermal"}});
    const EDA::EDABoard board = exported("THOU");
    ASSERT_EQ(board.numVias(0), 1u);
    EXPECT_EQ(board.beginVias()->getName(), "thermal");
    EXPECT_NEAR(board.beginVias()->getDiameter(), 500, 1e-9);
    EXPECT_EQ(board.beginVias()->getHoleType(), "VIA");
}

TEST_F(ExportedVia, IsPlatedOrNot) {
    Entity *const entity = addVia(pcb);
    EXPECT_EQ(exported().beginVias()->getPlatingStyle(), "PTH");
    set(entity, {{"Plated", "No"}});
    EXPECT_EQ(exported().beginVias()->getPlatingStyle(), "NPTH");
}

TEST_F(ExportedVia, OfABoardIsAtItsLocationAndBelongsToNoPart) {
    addVia(pcb);
    expectCentres({{12, 67}});
    EXPECT_EQ(exported().beginVias()->getAssociatedPart(), "BOARD");
}

TEST_F(ExportedVia, OfABoardCountsFromTheCornerWithBuiltPartsToo) {
    Entity *const via = addVia(pcb);
    build({pcb, via});
    expectCentres({{12, 67}});
}

TEST_F(ExportedVia, ConvertsItsLocationOnce) {
    makeBoardRectangular();
    addVia(pcb, {{"X Location", "0.1 mm"}, {"Z Location", "0.3 mm"}});
    EXPECT_EQ(centres(exported("MM")), (std::vector<std::pair<double, double>>{{0.1, -0.3}}));
}

struct OwnerCase {
    const char *type;
    const char *list;
};

class ExportedPartVia : public ExportedVia, public testing::WithParamInterface<OwnerCase> {};

TEST_P(ExportedPartVia, BelongsToTheDesignatorOfItsPart) {
    Entity *const part = add(pcb, GetParam().type, GetParam().list, {{"Reference Designator", "X1"}});
    addVia(part);
    const EDA::EDABoard board = exported();
    ASSERT_EQ(board.numVias(0), 1u);
    EXPECT_EQ(board.beginVias()->getAssociatedPart(), "X1");
}

INSTANTIATE_TEST_SUITE_P(All, ExportedPartVia,
                         testing::Values(OwnerCase{"Component", "Components"},
                                         OwnerCase{"Resistor", "Resistors"},
                                         OwnerCase{"Capacitor", "Capacitors"},
                                         OwnerCase{"Inductor", "Inductors"},
                                         OwnerCase{"Cable Socket", "Cable Sockets"},
                                         OwnerCase{"Daughter Board Socket", "Daughter Board Sockets"}),
                         [](const auto &test) { return "Case" + std::to_string(test.index); });

TEST_F(ExportedVia, OfAPluggedComponentBelongsToTheComponent) {
    Entity *const part = plug(addSocket({{"Reference Designator", "XU1"}}), {{"Reference Designator", "U1"}});
    addVia(part);
    const EDA::EDABoard board = exported();
    ASSERT_EQ(board.numVias(0), 1u);
    EXPECT_EQ(board.beginVias()->getAssociatedPart(), "U1");
}

TEST_F(ExportedVia, OfAPartComesBehindItsPartAndBeforeThoseOfTheBoard) {
    set(addVia(pcb), {{"Name", "board"}});
    set(addVia(addComponent()), {{"Name", "part"}});
    const EDA::EDABoard board = exported();
    EXPECT_EQ(board.beginVias()[0].getName(), "part");
    EXPECT_EQ(board.beginVias()[1].getName(), "board");
}

TEST_F(ExportedVia, EqualOnesAreNotMerged) {
    addVia(pcb);
    addVia(pcb);
    EXPECT_EQ(exported().numVias(0), 2u);
}

// A component of 8 by 4 at (20, 10), turned by 90 degrees about its middle (24, 12).
class ExportedInnerVia : public ExportedVia {
protected:
    Entity *const part = addComponent({{"Reference Designator", "U1"},
                                       {"Width", "8 mm"},
                                       {"Depth", "4 mm"},
                                       {"X Location", "20 mm"},
                                       {"Z Location", "10 mm"},
                                       {"Angle", "90"}});
};

TEST_F(ExportedInnerVia, WithoutBuiltPartsIsAtItsOwnLocationAndTheOffsets) {
    addVia(part);
    expectCentres({{12, 67}});
}

// (2, 3) in the part is (-2, 1) from its middle; turned anticlockwise, X becomes -Z: (1, 2) from the middle.
TEST_F(ExportedInnerVia, WithBuiltPartsIsInTheFrameOfTheBoard) {
    Entity *const via = addVia(part);
    build({pcb, part, via});
    expectCentres({{10 + 24 + 1, 70 - 12 - 2}});
}

TEST_F(ExportedInnerVia, OnARectangularBoardIsInTheFrameOfTheBoard) {
    makeBoardRectangular();
    Entity *const via = addVia(part);
    build({pcb, part, via});
    expectCentres({{25, -14}});
}

TEST_F(ExportedInnerVia, IsInTheUnitsOfTheExport) {
    makeBoardRectangular();
    Entity *const via = addVia(part);
    build({pcb, part, via});
    EXPECT_NEAR(exported("cm").beginVias()->getXCentre(), 2.5, 1e-12);
}

TEST_F(ExportedInnerVia, WithoutPartOfTheBoardIsAtItsOwnLocation) {
    Entity *const via = addVia(part);
    build({part, via});
    expectCentres({{12, 67}});
}

TEST_F(ExportedInnerVia, WithoutPartOfItsOwnIsAtItsOwnLocation) {
    addVia(part);
    build({pcb, part});
    expectCentres({{12, 67}});
}

TEST_F(ExportedVia, ThreePlacementsAreThreeViasWithoutInstances) {
    addThree(pcb);
    expectCentres({{12, 67}, {13, 67}, {13, 65}});
    const EDA::EDABoard board = exported();
    for (auto via = board.beginVias(); via != board.endVias(); ++via)
        EXPECT_EQ(via->numInstances(), 0u);
}

TEST_F(ExportedVia, ThreePlacementsShareDiameterAndPart) {
    Entity *const part = addComponent({{"Reference Designator", "U1"}});
    set(addThree(part), {{"Diameter", "0.25 mm"}});
    const EDA::EDABoard board = exported();
    for (auto via = board.beginVias(); via != board.endVias(); ++via) {
        EXPECT_EQ(via->getDiameter(), 0.25);
        EXPECT_EQ(via->getAssociatedPart(), "U1");
    }
}

TEST_F(ExportedVia, WithoutPlacementsManyAreNone) {
    addVia(pcb, {{"Modelling Type", "Multiple Vias"}});
    EXPECT_EQ(exported().numVias(0), 0u);
}

TEST_F(ExportedVia, OddLastNumberOfPlacementsIsNone) {
    addVia(pcb, {{"Modelling Type", "Multiple Vias"}, {"Instance Placements", "1,1,4 <mm>"}});
    expectCentres({{13, 66}});
}

TEST_F(ExportedInnerVia, ThreePlacementsWithoutBuiltPartsAreAtTheirOwnLocations) {
    addThree(part);
    expectCentres({{12, 67}, {13, 67}, {13, 65}});
}

// Known and kept: the location is in the origin of the part already and is added again with the offsets, and
// the pattern is not turned.
TEST_F(ExportedInnerVia, ThreePlacementsWithBuiltPartsAddTheirLocationTwice) {
    set(part, {{"Angle", "0"}});
    Entity *const via = addThree(part);
    build({pcb, part, via});
    // The frame of the board's part has the offset of the outline already: (10, -70) in X and Z.
    const double x = 10 + 20 + 2 + 2 + 10, z = -70 + 10 + 3 + 3 - 70;
    expectCentres({{x, -z}, {x + 1, -z}, {x + 1, -z - 2}});
}

// The origin of the via turns with the part about its middle, (24, 12), to (25, 14); the pattern stays as it
// is.
TEST_F(ExportedInnerVia, ThreePlacementsOfATurnedPartAreNotTurned) {
    Entity *const via = addThree(part);
    build({pcb, part, via});
    const double x = 10 + 25 + 2 + 10, z = -70 + 14 + 3 - 70;
    expectCentres({{x, -z}, {x + 1, -z}, {x + 1, -z - 2}});
}

} // namespace
