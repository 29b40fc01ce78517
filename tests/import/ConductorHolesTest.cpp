// Holes and islands in conductors.
#include "ConductorSupport.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace TestSupport;
using EDA::test::hole;
using EDA::test::outline;

namespace {

// In entity space from (10, 10) to (20, 30); its corner of low x and high y is (10, 10).
const char *const square = "20,40 30,40 30,60 20,60";

EDA::EDAOutline squareWith(const EDA::EDAOutline &inner) {
    EDA::EDAOutline shape = outline(square);
    shape.addInternalOutline(inner);
    return shape;
}

// Does a hole from (22, 42) of this size stay in the conductor?
bool stays(ConductorBench &bench, double width, double depth) {
    EDA::EDAOutline inner(true);
    inner.addPoint(0, 22, 42, 0.0);
    inner.addPoint(0, 22 + width, 42, 0.0);
    inner.addPoint(0, 22 + width, 42 + depth, 0.0);
    Entity *conductor = bench.importOne(squareWith(inner));
    return numOutlineHoles(conductor) > 0 || !bench.holes(conductor).empty();
}

void ignoreUpTo(ConductorBench &bench, const char *size) {
    bench.set(Ignore_holes_less_than_a_specified_size_t, "Yes");
    bench.set(Maximum_size_to_be_ignored_t, size);
}

} // namespace

TEST(ConductorHoles, OnAPcbAPolygonHoleLiesWhereTheConductorsOwnPointsDo) {
    ConductorBench bench;
    Entity *conductor = bench.importOne(squareWith(hole("22,42 24,42 24,45")));
    ASSERT_TRUE(conductor);
    ASSERT_EQ(numOutlineHoles(conductor), 1);
    EXPECT_EQ(text(conductor, "Hole 1"), "12,28,14,28,14,25 <mm>");
    EXPECT_TRUE(bench.holes(conductor).empty());
}

TEST(ConductorHoles, OnASubstrateAPolygonHoleIsASolidOneFromTheConductorsCorner) {
    ConductorBench bench(onSubstrate);
    Entity *conductor = bench.importOne(squareWith(hole("22,42 24,42 24,45")));
    ASSERT_TRUE(conductor);
    EXPECT_EQ(numOutlineHoles(conductor), -1);
    const auto holes = bench.holes(conductor);
    ASSERT_EQ(holes.size(), 1u);
    EXPECT_EQ(text(holes[0], Shape_t), "Polygon");
    EXPECT_EQ(text(holes[0], Outline_t), "2,18,4,18,4,15 <mm>");
    EXPECT_EQ(mm(holes[0], X_Location_t), 0.0);
    EXPECT_EQ(mm(holes[0], Z_Location_t), 0.0);
    EXPECT_EQ(text(holes[0], Render_Style_t), "Invisible");
}

TEST(ConductorHoles, ARoundHoleIsASolidOneFromTheConductorsCorner) {
    for (const ConductorFamily &family : {onPcb, onSubstrate}) {
        ConductorBench bench(family);
        Entity *conductor = bench.importOne(squareWith(circleOutline(25, 50, 1, true)));
        ASSERT_TRUE(conductor);
        EXPECT_LE(numOutlineHoles(conductor), 0);
        const auto holes = bench.holes(conductor);
        ASSERT_EQ(holes.size(), 1u);
        EXPECT_EQ(holes[0]->getType(), family.hole);
        EXPECT_EQ(text(holes[0], Shape_t), "Cylinder");
        EXPECT_NEAR(mm(holes[0], Diameter_t), 2.0, 1e-9);
        EXPECT_NEAR(mm(holes[0], X_Location_t), 5.0, 1e-9);
        EXPECT_NEAR(mm(holes[0], Z_Location_t), 10.0, 1e-9);
        EXPECT_TRUE(holes[0]->findAttribute(Geometry_t)->isLocked());
    }
}

TEST(ConductorHoles, ASquareHoleIsAPolygonOnAPcbAndARectangleOnASubstrate) {
    ConductorBench pcb;
    Entity *conductor = pcb.importOne(squareWith(hole("22,42 24,42 24,45 22,45")));
    EXPECT_EQ(text(conductor, "Hole 1"), "12,28,14,28,14,25,12,25 <mm>");

    ConductorBench substrate(onSubstrate);
    const auto holes = substrate.holes(substrate.importOne(squareWith(hole("22,42 24,42 24,45 22,45"))));
    ASSERT_EQ(holes.size(), 1u);
    EXPECT_EQ(text(holes[0], Shape_t), "Rectangle");
    EXPECT_EQ(mm(holes[0], X_Location_t), 2.0);
    EXPECT_EQ(mm(holes[0], Z_Location_t), 15.0);
}

TEST(ConductorHoles, WithoutSimplifiedShapesARoundHoleOnAPcbIsAPolygon) {
    ConductorBench bench;
    bench.set(Simplify_Shapes_t, "No");
    Entity *conductor = bench.importOne(squareWith(circleOutline(25, 50, 1, true)));
    ASSERT_EQ(numOutlineHoles(conductor), 1);
    EXPECT_TRUE(bench.holes(conductor).empty());
    Attribute *points = conductor->findAttribute("Hole 1");
    EDA::EDAOutline expected = circleOutline(25, 50, 1, true);
    expected.setModelDimension(bench.board().getModelDimension());
    EXPECT_EQ(static_cast<DoubleListAttribute *>(points)->values().size(),
              2 * expected.getPoints(true).size());
}

TEST(ConductorHoles, WithoutSimplifiedShapesATwoPointCircleOnASubstrateIsStillRound) {
    ConductorBench bench(onSubstrate);
    bench.set(Simplify_Shapes_t, "No");
    const auto holes = bench.holes(bench.importOne(squareWith(circleOutline(25, 50, 1, true))));
    ASSERT_EQ(holes.size(), 1u);
    EXPECT_EQ(text(holes[0], Shape_t), "Cylinder");
}

TEST(ConductorHoles, HolesKeepTheirOrderAndTheirNumbers) {
    ConductorBench bench;
    EDA::EDAOutline shape = squareWith(hole("21,41 22,41 22,42"));
    shape.addInternalOutline(circleOutline(25, 50, 1, true));
    shape.addInternalOutline(hole("27,41 28,41 28,42"));
    shape.addInternalOutline(hole("27,57 28,57 28,58"));
    Entity *conductor = bench.importOne(shape);
    ASSERT_EQ(numOutlineHoles(conductor), 3);
    EXPECT_EQ(text(conductor, "Hole 1"), "11,29,12,29,12,28 <mm>");
    EXPECT_EQ(text(conductor, "Hole 2"), "17,29,18,29,18,28 <mm>");
    EXPECT_EQ(text(conductor, "Hole 3"), "17,13,18,13,18,12 <mm>");
    EXPECT_EQ(bench.holes(conductor).size(), 1u);
}

TEST(ConductorHoles, HolesBeyondTheFirstMayLieAnywhere) {
    ConductorBench bench;
    EDA::EDAOutline shape = squareWith(hole("22,42 24,42 24,45"));
    shape.addInternalOutline(hole("100,42 101,42 101,45"));
    EXPECT_EQ(numOutlineHoles(bench.importOne(shape)), 2);
}

TEST(ConductorHoles, OnASubstrateAHoleWithoutAreaIsLeftOut) {
    ConductorBench bench(onSubstrate);
    EDA::EDAOutline shape = squareWith(hole("22,42 24,42 24,45"));
    shape.addInternalOutline(hole("27,42 28,42"));
    EXPECT_EQ(bench.holes(bench.importOne(shape)).size(), 1u);
}

TEST(ConductorHoles, AHoleWithoutPointsIsLeftOut) {
    for (const ConductorFamily &family : {onPcb, onSubstrate}) {
        ConductorBench bench(family);
        EDA::EDAOutline shape = squareWith(hole("22,42 24,42 24,45"));
        shape.addInternalOutline(EDA::EDAOutline(true));
        Entity *conductor = bench.importOne(shape);
        EXPECT_EQ(std::max(numOutlineHoles(conductor), 0) + static_cast<int>(bench.holes(conductor).size()),
                  1);
    }
}

TEST(ConductorHoles, AHoleWithAnOutlineInsideIsNotRound) {
    ConductorBench bench;
    EDA::EDAOutline ring = circleOutline(25, 50, 2, true);
    ring.addInternalOutline(circleOutline(25, 50, 1));
    Entity *conductor = bench.importOne(squareWith(ring));
    EXPECT_EQ(numOutlineHoles(conductor), 1);
    EXPECT_TRUE(bench.holes(conductor).empty());
}

TEST(ConductorHoles, AnIslandIsASiblingWithTheSameNameAndItsOwnHoles) {
    for (const ConductorFamily &family : {onPcb, onSubstrate}) {
        ConductorBench bench(family);
        EDA::EDAOutline innermost = outline("25,49 26,49 26,50");
        EDA::EDAOutline island = outline("24,44 28,44 28,54 24,54", "24.5,44.5 27,44.5 27,53");
        island.setMaterial("Gold");
        island.addInternalOutline(innermost);
        EDA::EDAOutline shape = squareWith(hole("22,42 29,42 29,57 22,58"));
        shape.setMaterial("Copper");
        shape.addInternalOutline(island);
        bench.add(bench.shape(shape, "GND"));
        bench.importLayer();
        const auto conductors = bench.conductors();
        ASSERT_EQ(conductors.size(), 3u);
        for (Entity *conductor : conductors)
            EXPECT_EQ(text(conductor, Name_t), "GND");
        EXPECT_EQ(text(conductors[0], Outline_t), "10,30,20,30,20,10,10,10 <mm>");
        EXPECT_EQ(text(conductors[1], Outline_t), "14,26,18,26,18,16,14,16 <mm>");
        EXPECT_EQ(text(conductors[2], Outline_t), "15,21,16,21,16,20 <mm>");
        EXPECT_EQ(text(getLinkedEntity(conductors[0], MaterialLink_t), Name_t), "Copper");
        EXPECT_EQ(text(getLinkedEntity(conductors[1], MaterialLink_t), Name_t), "Gold");
        for (const size_t i : {0u, 1u}) {
            EXPECT_EQ(std::max(numOutlineHoles(conductors[i]), 0) +
                          static_cast<int>(bench.holes(conductors[i]).size()),
                      1);
        }
        EXPECT_TRUE(bench.holes(conductors[2]).empty());
    }
}

TEST(ConductorHoles, AnIslandInANetBelongsToTheNet) {
    ConductorBench bench;
    EDA::EDANet net;
    net.setName("GND");
    net.addTrace(bench.shape(squareWith(outline("24,44 28,44 28,54"))));
    bench.layer.addNet(net);
    bench.importLayer();
    EXPECT_EQ(bench.children(bench.nets().at(0), PCB_Conductor_t).size(), 2u);
    EXPECT_TRUE(bench.conductors().empty());
}

TEST(ConductorHoles, AHoleIsIgnoredUpToTheSizeInBothDirections) {
    struct Row {
        double width, depth;
        bool stays;
    };
    const Row rows[] = {{0.5, 0.25, false},  {0.5, 0.5, false}, {0.5, 0.5625, true},
                        {0.5625, 0.5, true}, {0.25, 4.0, true}, {0.25, 0.25, false}};
    for (const ConductorFamily &family : {onPcb, onSubstrate}) {
        for (const Row &row : rows) {
            ConductorBench bench(family);
            ignoreUpTo(bench, "0.5 mm");
            EXPECT_EQ(stays(bench, row.width, row.depth), row.stays) << row.width << " x " << row.depth;
        }
    }
}

TEST(ConductorHoles, WithoutTheOptionNoHoleIsIgnored) {
    ConductorBench bench;
    bench.set(Maximum_size_to_be_ignored_t, "100 mm");
    EXPECT_TRUE(stays(bench, 0.001, 0.001));
}

TEST(ConductorHoles, TheSizeIsAskedInTheBoardsUnits) {
    struct Row {
        const char *boardUnits, *limit;
        double size;
        bool stays;
    };
    const Row rows[] = {{"THOU", "0.0254 mm", 0.99, false}, {"THOU", "0.0254 mm", 1.01, true},
                        {"INCH", "2.54 mm", 0.0999, false}, {"INCH", "2.54 mm", 0.1001, true},
                        {"MM", "10 thou", 0.25, false},     {"MM", "10 thou", 0.26, true},
                        {"FURLONG", "0.5 mm", 0.5, false}};
    for (const Row &row : rows) {
        ConductorBench bench(onPcb);
        bench.board().setUnits(row.boardUnits);
        ignoreUpTo(bench, row.limit);
        EXPECT_EQ(stays(bench, row.size, row.size), row.stays) << row.boardUnits << ' ' << row.size;
    }
}

TEST(ConductorHoles, AnIslandIsNoHoleToBeIgnored) {
    ConductorBench bench;
    ignoreUpTo(bench, "100 mm");
    bench.add(bench.shape(squareWith(outline("24,44 28,44 28,54"))));
    bench.importLayer();
    EXPECT_EQ(bench.conductors().size(), 2u);
}

TEST(ConductorHoles, AConductorFarAwayHasItsHolesFromItsLocation) {
    // From 1e8 on, a corner counts as none.
    for (const auto &[x, local] : {std::pair{9e7, 2.0}, {2e8, 2e8 + 2.0}}) {
        ConductorBench bench(onSubstrate);
        bench.reader.getBoard() = EDA::EDABoard();
        bench.board().setUnits("MM");
        bench.rectangle(0, 0, 0, 100, 50);
        EDA::EDAOutline shape;
        for (const auto &[px, py] : {std::pair{0.0, 0.0}, {10.0, 0.0}, {10.0, 10.0}, {0.0, 10.0}})
            shape.addPoint(0, x + px, py, 0.0);
        EDA::EDAOutline inner(true);
        for (const auto &[px, py] : {std::pair{2.0, 2.0}, {4.0, 2.0}, {4.0, 4.0}, {2.0, 4.0}})
            inner.addPoint(0, x + px, py, 0.0);
        shape.addInternalOutline(inner);
        const auto holes = bench.holes(bench.importOne(shape));
        ASSERT_EQ(holes.size(), 1u);
        EXPECT_EQ(mm(holes[0], X_Location_t), local);
    }
}

TEST(ConductorHoles, SeededHolesHaveThePointsOfTheirPlainText) {
    EDA::test::Random random(20240613);
    ConductorBench bench;
    bench.set(Simplify_Shapes_t, "No");
    EDA::EDAOutline shape = outline("-90,-90 90,-90 90,90 -90,90");
    std::vector<EDA::EDAOutline> inner;
    for (int i = 0; i < 200; ++i) {
        inner.push_back(EDA::test::randomOutline(random, 3 + random.below(20), i % 4 == 0));
        inner.back().setHole(true);
        shape.addInternalOutline(inner.back());
    }
    Entity *conductor = bench.importOne(shape);
    ASSERT_EQ(numOutlineHoles(conductor), 200);
    for (size_t i = 0; i < inner.size(); ++i) {
        inner[i].setModelDimension(bench.board().getModelDimension());
        std::vector<double> mapped;
        for (const auto &[x, y] : inner[i].getPoints(true)) {
            mapped.push_back(x - 10.0);
            mapped.push_back(-(y - 70.0));
        }
        Attribute *written = conductor->findAttribute("Hole " + std::to_string(i + 1));
        ASSERT_TRUE(written);
        EXPECT_EQ(static_cast<DoubleListAttribute *>(written)->values(), throughPlainText(mapped)) << i;
    }
}

TEST(ConductorHoles, ManyHolesInOneConductorAreAllThere) {
    ConductorBench bench;
    EDA::EDAOutline shape = outline("0,0 1000,0 1000,1000 0,1001");
    for (int i = 0; i < 30000; ++i) {
        EDA::EDAOutline inner(true);
        const double x = i % 1000, y = i / 1000;
        for (const auto &[px, py] : {std::pair{0.125, 0.125}, {0.5, 0.125}, {0.5, 0.5}})
            inner.addPoint(0, x + px, y + py, 0.0);
        shape.addInternalOutline(inner);
    }
    Entity *conductor = bench.importOne(shape);
    ASSERT_EQ(numOutlineHoles(conductor), 30000);
    EXPECT_EQ(text(conductor, "Hole 1"), "-9.875,69.875,-9.5,69.875,-9.5,69.5 <mm>");
    EXPECT_EQ(text(conductor, "Hole 30000"), "989.125,40.875,989.5,40.875,989.5,40.5 <mm>");
}

TEST(ConductorHoles, ARoundHoleNeedsEightPointsOrWhatTheReaderAsksFor) {
    EDA::EDAOutline hexagon(true);
    for (int i = 0; i < 6; ++i) {
        const double angle = 3.14159265358979323846 * i / 3;
        hexagon.addPoint(0, 25 + std::cos(angle), 50 + std::sin(angle), 0.0);
    }
    ConductorBench strict;
    EXPECT_EQ(numOutlineHoles(strict.importOne(squareWith(hexagon))), 1);
    ConductorBench lenient;
    lenient.reader.changeOptions = [](EDA::EDAReader::GeometryConversionOptions &options) {
        options.solidHoleMinPoints = 6;
    };
    const auto holes = lenient.holes(lenient.importOne(squareWith(hexagon)));
    ASSERT_EQ(holes.size(), 1u);
    EXPECT_EQ(text(holes[0], Shape_t), "Cylinder");
}

TEST(ConductorHoles, AHoleWithAPointThatIsNotFiniteIsLeftOut) {
    for (const ConductorFamily &family : {onPcb, onSubstrate}) {
        for (const double odd : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
            ConductorBench bench(family);
            EDA::EDAOutline bad = hole("22,42 24,42 24,45");
            bad.addPoint(0, odd, 44, 0.0);
            EDA::EDAOutline shape = squareWith(hole("21,41 22,41 22,42"));
            shape.addInternalOutline(bad);
            shape.addInternalOutline(circleOutline(25, odd, 1, true));
            shape.addInternalOutline(hole("27,41 28,41 28,42"));
            Entity *conductor = bench.importOne(shape);
            const bool isList = numOutlineHoles(conductor) >= 0;
            EXPECT_EQ(isList ? numOutlineHoles(conductor) : static_cast<int>(bench.holes(conductor).size()),
                      2);
            if (isList) {
                EXPECT_EQ(text(conductor, "Hole 2"), "17,29,18,29,18,28 <mm>");
            }
        }
    }
}

TEST(ConductorHoles, TheSizeOfAHoleIsThatOfAllItsOutlines) {
    for (const auto &[reach, count] : {std::pair{22.4, 0}, {26.0, 1}}) {
        ConductorBench bench;
        ignoreUpTo(bench, "0.5 mm");
        EDA::EDAOutline outer = hole("22,42 22.25,42 22.25,42.25");
        EDA::EDAOutline inner;
        for (const auto &[x, y] : {std::pair{22.1, 42.1}, {reach, 42.1}, {reach, 42.2}})
            inner.addPoint(0, x, y, 0.0);
        outer.addInternalOutline(inner);
        EXPECT_EQ(numOutlineHoles(bench.importOne(squareWith(outer))), count) << reach;
    }
}

TEST(ConductorHoles, AnIslandInTheListOfAHoleIsPassedOver) {
    ConductorBench bench;
    EDA::EDAOutline ring = hole("22,42 28,42 28,50");
    ring.addInternalOutline(outline("25,43 26,43 26,44"));
    EXPECT_EQ(numOutlineHoles(bench.importOne(squareWith(ring))), 1); // And there is one conductor.
}

TEST(ConductorHoles, WhatIsInAnIslandComesBeforeWhatComesAfterIt) {
    ConductorBench bench;
    EDA::EDAOutline first = outline("21,41 22,41 22,42");
    first.addInternalOutline(outline("22,41 23,41 23,42"));
    EDA::EDAOutline shape = squareWith(first);
    shape.addInternalOutline(hole("26,41 27,41 27,42"));
    shape.addInternalOutline(outline("23,41 24,41 24,42"));
    bench.add(bench.shape(shape));
    bench.importLayer();
    std::vector<std::string> outlines;
    for (Entity *conductor : bench.conductors())
        outlines.push_back(text(conductor, Outline_t).substr(0, 5));
    EXPECT_THAT(outlines, testing::ElementsAre("10,30", "11,29", "12,29", "13,29"));
    EXPECT_EQ(numOutlineHoles(bench.conductors().at(0)), 1);
    EXPECT_TRUE(bench.conductors().at(0)->findAttribute(Geometry_t)->isLocked());
}

TEST(ConductorHoles, AThousandIslandsInOneAnotherComeFromTheOutsideIn) {
    constexpr int count = 1000;
    ConductorBench bench;
    EDA::EDATrace nest;
    EDA::EDAOutline *level = &nest.getOutline();
    for (int i = 0; i < count; ++i) {
        if (i > 0) {
            level->addInternalOutline(EDA::EDAOutline());
            level = &*level->beginInternalOutlines();
        }
        for (const auto &[x, y] : {std::pair{10 + i, 20}, {3000, 20}, {3000, 70 + i}})
            level->addPoint(0, x, y, 0.0);
    }
    bench.add(nest);
    bench.importLayer();
    const auto conductors = bench.conductors();
    ASSERT_EQ(conductors.size(), static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
        Entity *conductor = conductors[static_cast<size_t>(i)];
        EXPECT_EQ(text(conductor, Outline_t).find(std::to_string(i) + ",50,"), 0u) << i;
        EXPECT_TRUE(conductor->findAttribute(Geometry_t)->isLocked());
    }
}
