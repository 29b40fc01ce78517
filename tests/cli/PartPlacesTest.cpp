// The picture of a model shows each part where the picture of its design shows it.
#include "Entities.h"
#include "support/RunTool.h"
#include "ViewCompare.h"

#include <filesystem>
#include <random>
#include <sstream>

namespace {

using namespace TestSupport;

// Half a millionth of outlines' six decimals, both ways.
constexpr double tolerance = 1e-6;

struct Outline {
    const char *prefix; // of designators
    const char *points;
};

// Shapes without symmetry where the type can keep them.
constexpr Outline outlines[] = {
    {"U", "0 0 0 0\n0 6 0 0\n0 6 1 0\n0 1 1 0\n0 1 4 0\n0 0 4 0\n0 0 0 0\n"},        // an L from its corner
    {"U", "0 -1 -2 0\n0 5 -2 0\n0 5 1 0\n0 -1 1 0\n0 -1 -2 0\n"},                    // a box off its origin
    {"R", "0 0.5 0.25 0\n0 3.5 0.25 0\n0 3.5 1.75 0\n0 0.5 1.75 0\n0 0.5 0.25 0\n"}, // the same beside it
    {"C", "0 -4 -1 0\n0 1 -1 0\n0 1 3 0\n0 -4 3 0\n0 -4 -1 0\n"},
    {"L", "0 0 0 0\n0 4 0 0\n0 5 2 0\n0 1 3 0\n0 0 0 0\n"},                   // a slanted quadrangle
    {"U", "0 -2 -1 0\n0 3 -1 0\n0 3 2 0\n0 1 4 90\n0 -2 4 0\n0 -2 -1 0\n"},   // with a rounded corner
    {"J", "0 -3 -1 0\n0 2 -1 0\n0 2 0.5 0\n0 -3 0.5 0\n0 -3 -1 0\n"},         // a cable socket
    {"DIMM", "0 -3 -2 0\n0 2 -2 0\n0 2 0.5 0\n0 -3 0.5 0\n0 -3 -2 0\n"},      // a daughter board's
    {"J", "0 0 0 0\n0 4 0 0\n0 4 1 0\n0 2 1 0\n0 2 3 0\n0 0 3 0\n0 0 0 0\n"}, // a socket that is no box
    {"U", "0 0 0 0\n0 1.5 0 360\n"},                                          // a circle
    {"C", "0 0 0 0\n0 2.5 0 360\n"},
};

constexpr double angles[] = {0,   15,     30,  45,  60,  89.999, 90,     90.001, 133.7, 135,
                             180, 211.25, 270, 300, 315, 359.5,  -33.75, 360,    725.5, 1e-5};

class Pair {
public:
    explicit Pair(const std::string &units) : units_(units) {}

    std::string define(const std::string &points) {
        const std::string name = "PKG" + std::to_string(numDefined_++);
        library_ << ".ELECTRICAL\n" << name << " PN " << units_ << " 1.5\n" << points << ".END_ELECTRICAL\n";
        return name;
    }

    void place(const std::string &package, const std::string &designator, double x, double y, double angle,
               bool isTop, double offset = 0.0) {
        placements_ << package << " PN " << designator << "\n"
                    << x << " " << y << " " << offset << " " << angle << (isTop ? " TOP" : " BOTTOM")
                    << " PLACED\n";
    }

    std::string write(const TempFolder &folder, const std::string &edge) const {
        const auto header = [](const char *kind) {
            return std::string(".HEADER\n") + kind + "_FILE 3.0 \"test\" 2024/01/01.00:00:00 1\n";
        };
        folder.write("pair.emp", header("LIBRARY") + ".END_HEADER\n" + library_.str());
        return folder.write("pair.emn", header("BOARD") + "pair " + units_ +
                                            "\n.END_HEADER\n.BOARD_OUTLINE ECAD\n1.6\n" + edge +
                                            ".END_BOARD_OUTLINE\n.PLACEMENT\n" + placements_.str() +
                                            ".END_PLACEMENT\n");
    }

private:
    std::string units_;
    std::ostringstream library_;
    std::ostringstream placements_;
    int numDefined_ = 0;
};

constexpr const char *boxEdge = "0 -20 -30 0\n0 180 -30 0\n0 180 70 0\n0 -20 70 0\n0 -20 -30 0\n";
constexpr const char *slantedEdge = "0 -20 -30 0\n0 180 -40 0\n0 190 70 0\n0 -25 65 0\n0 -20 -30 0\n";

class PartPlaces : public testing::Test {
protected:
    std::unique_ptr<EntityModel::Model> import(const std::string &file,
                                               const std::vector<std::string> &more = {}) {
        std::vector<std::string> arguments{"import", file, "-o", folder.path("model.json")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 0) << result;
        return loadModel(folder.path("model.json"));
    }

    // Both pictures of both sides.
    void compare(const std::string &file, double mmPerUnit, double allowed = tolerance) {
        const auto model = import(file);
        const EntityModel::Entity &board = *findBoard(*model, file, "");
        const Design design = readDesign({file});
        for (const Side side : {Side::Top, Side::Bottom}) {
            SCOPED_TRACE(side == Side::Top ? "top" : "bottom");
            const PartPaths parts = pathsOfDesign(viewOfDesign(design, side), mmPerUnit);
            EXPECT_FALSE(parts.empty());
            expectSameParts(parts, pathsOfModel(viewOfModel(board, side)), allowed);
        }
    }

    TempFolder folder;
};

// All but two: a capacitor with cut corners becomes its box (see below), on which the other corners lie.
TEST_F(PartPlaces, OfTheControllerExample) {
    const std::string file = std::string(EDA_EXAMPLES) + "/controller/controller.emn";
    const auto model = import(file);
    std::size_t count = 0;
    for (const Side side : {Side::Top, Side::Bottom}) {
        PartPaths design = pathsOfDesign(viewOfDesign(readDesign({file}), side), 1.0);
        PartPaths shown = pathsOfModel(viewOfModel(*findBoard(*model, file, ""), side));
        count += shown.size();
        for (const char *cut : {"C60", "C61"}) {
            if (design.count(cut) == 0) continue;
            EXPECT_LE(distanceOfCorners(design[cut], shown[cut]), tolerance) << cut;
            design.erase(cut);
            shown.erase(cut);
        }
        expectSameParts(design, shown, tolerance);
    }
    EXPECT_EQ(count, 85u);
}

TEST_F(PartPlaces, OfEveryShapeAtEveryAngleOnBothSides) {
    for (const char *edge : {boxEdge, slantedEdge}) {
        Pair pair("MM");
        int count = 0;
        for (const Outline &outline : outlines) {
            const std::string package = pair.define(outline.points);
            for (const double angle : angles) {
                for (const bool isTop : {true, false}) {
                    ++count;
                    pair.place(package, outline.prefix + std::to_string(count), count % 17 * 8.25,
                               count % 5 * 9.5, angle, isTop);
                }
            }
        }
        compare(pair.write(folder, edge), 1.0);
    }
}

TEST_F(PartPlaces, OfRandomBoxesAndPolygonsInThousandthsOfAnInch) {
    std::mt19937 random(20240517);
    const auto pick = [&random](int low, int high) {
        return std::to_string(low + static_cast<int>(random() % static_cast<unsigned>(high - low)));
    };
    Pair pair("THOU");
    for (int index = 0; index < 60; ++index) {
        const std::string first = "0 " + pick(-300, -100) + " " + pick(-300, -100) + " 0\n";
        const std::string package =
            pair.define(first + "0 " + pick(50, 500) + " " + pick(-250, -50) + " 0\n0 " + pick(50, 500) +
                        " " + pick(20, 400) + " 0\n0 " + pick(-60, 0) + " " + pick(50, 90) + " 0\n" + first);
        const double angle = 0.25 * static_cast<double>(random() % 1440);
        pair.place(package, "U" + std::to_string(index), std::stod(pick(-1000, 5000)),
                   std::stod(pick(-1000, 3000)), angle, index % 2 == 0);
    }
    compare(pair.write(folder, boxEdge), 0.0254);
}

// Capacitors aside, which are what a test below is about.
TEST_F(PartPlaces, OfRealDesigns) {
    namespace fs = std::filesystem;
    const fs::path corpus = fs::u8path(std::string(EDA_CORPUS) + "/idf");
    if (!fs::exists(corpus)) GTEST_SKIP() << "no folder of real designs here";
    constexpr std::pair<const char *, double> boards[] = {{"i01/parallella_gen0.emn", 0.0254},
                                                          {"i02/beaglebone.emn", 0.0254},
                                                          {"i03/ain.emn", 1.0},
                                                          {"i06/ISOL.emn", 0.0254},
                                                          {"i10/hub.emn", 1.0}};
    const auto withoutCapacitors = [](PartPaths paths) {
        for (auto path = paths.begin(); path != paths.end();)
            path = path->first[0] == 'C' ? paths.erase(path) : std::next(path);
        return paths;
    };
    for (const auto &[name, mmPerUnit] : boards) {
        SCOPED_TRACE(name);
        const std::string file = (corpus / name).u8string();
        const auto model = import(file);
        const Design design = readDesign({file});
        for (const Side side : {Side::Top, Side::Bottom}) {
            expectSameParts(withoutCapacitors(pathsOfDesign(viewOfDesign(design, side), mmPerUnit)),
                            withoutCapacitors(pathsOfModel(viewOfModel(*findBoard(*model, file, ""), side))),
                            tolerance);
        }
    }
}

// The parts go into their sockets, whose sides and angles they then add their own to.
TEST_F(PartPlaces, OfPartsInSocketsAtAnyAngle) {
    Pair pair("MM");
    const std::string socket = pair.define("0 -7 -5 0\n0 7 -5 0\n0 7 5 0\n0 -7 5 0\n0 -7 -5 0\n");
    const std::string inner[] = {pair.define("0 -2 -1 0\n0 3 -1 0\n0 3 2 0\n0 -2 2 0\n0 -2 -1 0\n"),
                                 pair.define("0 -2 -2 0\n0 3 -2 0\n0 3 -1 0\n0 -1 -1 0\n0 -1 2 0\n0 -2 2 "
                                             "0\n0 -2 -2 0\n"),
                                 pair.define("0 0 0 0\n0 1.5 0 360\n")};
    int count = 0;
    for (const double angle : {0.0, 30.0, 90.0, 200.0}) {
        for (const std::string &part : inner) {
            for (const bool isTop : {true, false}) {
                const double x = count % 8 * 20.0, y = count / 8 * 20.0;
                const std::string number = std::to_string(++count);
                pair.place(socket, "XU" + number, x, y, angle, isTop);
                pair.place(part, "U" + number, x + 0.5, y + 0.25, 2 * angle + 10, isTop);
            }
        }
    }
    const std::string file = pair.write(folder, boxEdge);
    compare(file, 1.0);
    const auto model = loadModel(folder.path("model.json"));
    EXPECT_EQ(countEntities(*model)["Chip Socket"], 24u);
    for (const EntityModel::Entity *board : findBoards(*model)) {
        std::vector<EntityModel::Entity *> parts;
        board->getOwnedChildEntitiesOfType(parts, EntityModel::Component_t, false, true);
        EXPECT_EQ(parts.size(), 0u); // All are in sockets: else this test is about something else.
    }
}

// Intended: a cylinder stands at the location of its placement, also where its outline has the circle aside.
TEST_F(PartPlaces, OfACircleBesideItsOriginIsTheOrigin) {
    Pair pair("MM");
    pair.place(pair.define("0 3 0 0\n0 4 0 360\n"), "U1", 50, 20, 90, true);
    const std::string file = pair.write(folder, boxEdge);
    const auto model = import(file);
    const Path design = pathsOfDesign(viewOfDesign(readDesign({file}), Side::Top), 1.0)["U1"];
    const Path shown = pathsOfModel(viewOfModel(*findBoard(*model, file, ""), Side::Top))["U1"];
    ASSERT_TRUE(isFullCircle(design) && isFullCircle(shown));
    EXPECT_NEAR(shown[1].centre.x, 70.0, tolerance);
    EXPECT_NEAR(shown[1].centre.y, -50.0, tolerance);
    EXPECT_NEAR(design[1].centre.y, -47.0, tolerance);
}

// Intended: a capacitor is a box or a cylinder, so any other outline becomes its box.
TEST_F(PartPlaces, OfACapacitorOfAnyShapeIsItsBox) {
    Pair pair("MM");
    pair.place(pair.define("0 0 0 0\n0 4 0 0\n0 4 1 0\n0 1 1 0\n0 1 3 0\n0 0 3 0\n0 0 0 0\n"), "C1", 50, 20,
               90, false);
    const std::string file = pair.write(folder, boxEdge);
    const auto model = import(file);
    const Box design = boundOf(pathsOfDesign(viewOfDesign(readDesign({file}), Side::Bottom), 1.0)["C1"]);
    const Path shown = pathsOfModel(viewOfModel(*findBoard(*model, file, ""), Side::Bottom))["C1"];
    EXPECT_NEAR(areaOf(shown), 12.0, tolerance);
    EXPECT_LE(deviation(boxPath(design), shown), tolerance);
}

// Cut-outs, keepouts and the edge are shown in the same places too.
TEST_F(PartPlaces, OfTheBoardItself) {
    const std::string file = std::string(EDA_EXAMPLES) + "/controller/controller.emn";
    const auto model = import(file);
    const BoardView design = viewOfDesign(readDesign({file}), Side::Bottom);
    const BoardView shown = viewOfModel(*findBoard(*model, file, ""), Side::Bottom);
    const Similarity move = Similarity::move(-design.edgeBound.low.x, -design.edgeBound.high.y);
    ASSERT_LE(design.cutOuts.size(), shown.cutOuts.size());
    for (std::size_t index = 0; index < design.cutOuts.size(); ++index) {
        for (const PathStep &step : shown.cutOuts[index])
            EXPECT_LE(distanceToPath(step.to, move.apply(design.cutOuts[index])), tolerance) << index;
    }
    ASSERT_EQ(design.keepouts.size(), shown.keepouts.size());
    for (std::size_t index = 0; index < shown.keepouts.size(); ++index) {
        for (const PathStep &step : shown.keepouts[index].path)
            EXPECT_LE(distanceToPath(step.to, move.apply(design.keepouts[index].path)), tolerance) << index;
    }
}

// In a model, mounting and tool holes are cut-outs of the board behind those of its outline.
TEST_F(PartPlaces, OfHoles) {
    const std::string file = std::string(EDA_EXAMPLES) + "/controller/controller.emn";
    const auto model = import(file);
    const BoardView design = viewOfDesign(readDesign({file}), Side::Top);
    const BoardView shown = viewOfModel(*findBoard(*model, file, ""), Side::Top);
    std::vector<Path> holes(shown.cutOuts.begin() + static_cast<std::ptrdiff_t>(design.cutOuts.size()),
                            shown.cutOuts.end());
    EXPECT_EQ(holes.size(), 10u);
    for (const HoleView &hole : shown.holes)
        holes.push_back(hole.path);
    constexpr std::size_t numTestPoints = 2; // of no kind that imports take
    ASSERT_EQ(holes.size() + numTestPoints, design.holes.size());
    const Similarity move = Similarity::move(-design.edgeBound.low.x, -design.edgeBound.high.y);
    for (const Path &hole : holes) {
        double nearest = HUGE_VAL;
        for (const HoleView &each : design.holes)
            nearest = std::min(nearest, deviation(move.apply(each.path), hole));
        EXPECT_LE(nearest, tolerance);
    }
}

} // namespace
