// XFL files as packages: one component made of solids, by itself, from a library, and on a board.
#include "Entities.h"
#include "host/EntityCore/PartPlacement.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "JsonText.h"
#include "SmallDesign.h"
#include "ViewCompare.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace TestSupport;
using namespace EntityModel;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string example = std::string(EDA_EXAMPLES) + "/xfl/package.xfl";
const std::string controller = std::string(EDA_EXAMPLES) + "/controller/controller.emn";

// 20 by 10 mm about the origin, or from `corner` on; 0.6 thick, and a die of 0.5 on it off its middle.
std::string package(const std::string &edge = "rectangle 20 10") {
    return ".unit mm\n.layer\nTOP 0.1 C Copper \"BT Laminate\"\nCORE 0.4 D Copper \"BT Laminate\"\n"
           "BOT 0.1 C Gold \"BT Laminate\"\n.end\n.shape\n1 rectangle 2 1\n2 circle 1\n.end\n.board_geom\n" +
           edge +
           "\n.part\nDIE R 1 -2 5 3 0.5\n.end\n.component\nU1 DIE 0 0 1 0\n.end\n.via\nV 1 2 2 0\n.end\n"
           ".route\nN {\nrectangle 2 6 4 3 0\nvoid_rectangle 2 1 2 4 1\nshape 1 1 -5 2 0 N\nvia 1 2 V -5 2\n"
           "}\n.end\n";
}

// All below an entity, at any depth.
std::vector<Entity *> all(const Entity &parent, const TypeRef &type) {
    std::vector<Entity *> found, waiting;
    parent.getChildEntities(waiting);
    while (!waiting.empty()) {
        Entity *const entity = waiting.back();
        waiting.pop_back();
        if (entity->getType() == type) found.push_back(entity);
        std::vector<Entity *> children;
        entity->getChildEntities(children);
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return found;
}

std::vector<Entity *> all(const Model &model, const TypeRef &type) { return all(*model.root(), type); }

std::string nameOf(const Entity &entity) {
    std::string name;
    entity.getName(name);
    return name;
}

std::vector<Entity *> bodies(const Entity &component) { return all(component, Solid_Obstruction_t); }

Entity *bodyNamed(const Entity &component, const std::string &name) {
    for (Entity *body : bodies(component))
        if (nameOf(*body) == name) return body;
    ADD_FAILURE() << "no body " << name;
    return nullptr;
}

std::string materialOf(const Entity &body) {
    const Entity *const material = getLinkedEntity(&body, MaterialLink_t);
    return material == nullptr ? "none" : nameOf(*material);
}

// In millimetres, x to the right, y against z, height from the bottom.
struct Box3 {
    double x[2], y[2], height[2];
};

std::ostream &operator<<(std::ostream &stream, const Box3 &box) {
    return stream << "x " << box.x[0] << " to " << box.x[1] << ", y " << box.y[0] << " to " << box.y[1]
                  << ", height " << box.height[0] << " to " << box.height[1];
}

// Where the solid of an entity stands in the model.
Box3 boxOf(const Entity &entity) {
    const EntityGUI::PartRule &rule = *EntityGUI::findPartRule(entity.getType());
    const EntityGUI::PartPlace place = EntityGUI::placePart(entity, rule, EntityGUI::ownerFrame(entity));
    Box3 box{{HUGE_VAL, -HUGE_VAL}, {HUGE_VAL, -HUGE_VAL}, {HUGE_VAL, -HUGE_VAL}};
    const auto unite = [](double(&range)[2], double value) {
        range[0] = std::min(range[0], 1000.0 * value);
        range[1] = std::max(range[1], 1000.0 * value);
    };
    for (const double x : {place.footprint.xLow, place.footprint.xHigh}) {
        for (const double z : {place.footprint.zLow, place.footprint.zHigh}) {
            for (const double y : {0.0, place.height}) {
                Geometry::Vec3T<double> point(x, y, z);
                place.toRoot.transform(point);
                unite(box.x, point.x);
                unite(box.y, -point.z);
                unite(box.height, point.y);
            }
        }
    }
    return box;
}

Box3 relativeTo(Box3 box, double x, double y, double height) {
    for (int i : {0, 1}) {
        box.x[i] -= x;
        box.y[i] -= y;
        box.height[i] -= height;
    }
    return box;
}

void expectNear(const Box3 &box, const Box3 &expected) {
    for (int i : {0, 1}) {
        EXPECT_NEAR(box.x[i], expected.x[i], 1e-5) << box;
        EXPECT_NEAR(box.y[i], expected.y[i], 1e-5) << box;
        EXPECT_NEAR(box.height[i], expected.height[i], 1e-5) << box;
    }
}

class ToolXflPackage : public testing::Test {
protected:
    ToolResult import(const std::string &file, const std::vector<std::string> &more = {},
                      const std::string &output = "m.json") const {
        std::vector<std::string> arguments{"import", file, "-o", folder.path(output), "--json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTool(arguments);
    }
    std::unique_ptr<Model> imported(const std::string &file,
                                    const std::vector<std::string> &more = {}) const {
        const ToolResult result = import(file, more);
        EXPECT_EQ(result.status, 0) << result;
        return loadModel(folder.path("m.json"));
    }
    std::unique_ptr<Model> importedPackage(const std::string &bytes) const {
        return imported(folder.write("a.xfl", bytes), {"--as", "Component"});
    }

    TempFolder folder;
};

// By itself.

TEST_F(ToolXflPackage, IsOneComponentInTheChassis) {
    const auto model = importedPackage(package());
    const std::vector<Entity *> components = all(*model, Component_t);
    ASSERT_EQ(components.size(), 1u);
    EXPECT_EQ(components[0]->getOwnerEntity()->getType(), Chassis_t);
    EXPECT_TRUE(all(*model, PCB_t).empty());
    EXPECT_TRUE(all(*model, Substrate_t).empty());
    EXPECT_EQ(nameOf(*components[0]), "a");
    EXPECT_EQ(textOf(*components[0], Reference_Designator_t), "a");
    EXPECT_EQ(textOf(*components[0], Modelling_Level_t), "Detailed");
    EXPECT_EQ(textOf(*components[0], Type_t), "Electrical");
    EXPECT_NEAR(getDoubleValue(components[0], Width_t, "mm", 0.0), 20.0, 1e-9);
    EXPECT_NEAR(getDoubleValue(components[0], Depth_t, "mm", 0.0), 10.0, 1e-9);
    EXPECT_NEAR(getDoubleValue(components[0], Height_t, "mm", 0.0), 1.1, 1e-9);
}

TEST_F(ToolXflPackage, ItsSolidsHaveHeightsAndMaterials) {
    const auto model = importedPackage(package());
    const Entity &component = *all(*model, Component_t).at(0);
    ASSERT_EQ(bodies(component).size(), 7u);
    struct Expected {
        const char *name;
        double low, high;
        const char *material;
    };
    for (const Expected &body : {Expected{"TOP", 0.5, 0.6, "Copper"},
                                 {"CORE", 0.1, 0.5, "BT Laminate"},
                                 {"BOT", 0.0, 0.1, "Gold"},
                                 {"DIE", 0.6, 1.1, "Typical Component"},
                                 {"V", 0.1, 0.5, "Gold"}}) {
        const Entity *const found = bodyNamed(component, body.name);
        ASSERT_NE(found, nullptr);
        EXPECT_NEAR(boxOf(*found).height[0], body.low, 1e-6) << body.name;
        EXPECT_NEAR(boxOf(*found).height[1], body.high, 1e-6) << body.name;
        EXPECT_EQ(materialOf(*found), body.material) << body.name;
    }
}

// Whatever the file measures from, solids stand from the corner of the component, and voids in their solids.
TEST_F(ToolXflPackage, ItsSolidsAndVoidsStandWhereTheFilePutsThem) {
    const std::pair<const char *, Point> edges[] = {
        {"rectangle 20 10", {-10, 5}},
        {"polygon { -8 -4 12 -4 12 6 -8 6 }", {-8, 6}},
        {"composite { -8 -4 12 -4 12 5 rarc 11 6 11 5 -8 6 }", {-8, 6}}};
    for (const auto &[edge, corner] : edges) {
        const auto model = importedPackage(package(edge));
        const Entity &component = *all(*model, Component_t).at(0);
        const double x = -corner.x, y = -corner.y;
        expectNear(boxOf(*bodyNamed(component, "DIE")), {{1 + x, 5 + x}, {-2 + y, 3 + y}, {0.6, 1.1}});
        expectNear(boxOf(*bodyNamed(component, "TOP")), {{0, 20}, {-10, 0}, {0.5, 0.6}});
        const std::vector<Entity *> holes = all(component, TypeRef("Obstruction Hole"));
        ASSERT_EQ(holes.size(), 1u);
        EXPECT_EQ(nameOf(*holes[0]->getOwnerEntity()), "N");
        expectNear(boxOf(*holes[0]), {{3.5 + x, 4.5 + x}, {y, 2 + y}, {0.0, 0.1}});
    }
}

TEST_F(ToolXflPackage, WithoutAnEdgeItIsWhatIsInIt) {
    std::string rows = package();
    rows.erase(rows.find(".board_geom"), rows.find(".part") - rows.find(".board_geom"));
    const ToolResult result = import(folder.write("a.xfl", rows), {"--as", "Component"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    const auto model = loadModel(folder.path("m.json"));
    const Entity &component = *all(*model, Component_t).at(0);
    EXPECT_EQ(bodies(component).size(), 4u);
    expectNear(boxOf(*bodyNamed(component, "DIE")), {{7, 11}, {-5, 0}, {0.6, 1.1}});
}

TEST_F(ToolXflPackage, OfNothingIsRefused) {
    const ToolResult result =
        import(folder.write("a.xfl", ".unit mm\n.board_geom\nrectangle 1 1\n"), {"--as", "Component"});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("a.xfl': has nothing that a component can be made of"));
    EXPECT_EQ(folder.read("m.json"), "<missing>");
}

TEST_F(ToolXflPackage, AStoredOptionAsksForItToo) {
    const std::string file = folder.write("a.xfl", package());
    runTool({"options", "XFL", "--set", "Import Type=Component"}, folder.path());
    const auto numBoards = [&](const std::vector<std::string> &more) {
        std::vector<std::string> arguments{"import", file, "-o", folder.path("m.json")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = runTool(arguments, folder.path());
        EXPECT_EQ(result.status, 0) << result;
        return all(*loadModel(folder.path("m.json")), PCB_t).size();
    };
    EXPECT_EQ(numBoards({}), 0u);
    EXPECT_EQ(numBoards({"--as", "PCB"}), 1u);
    EXPECT_EQ(numBoards({"--option", "Import Type=PCB"}), 1u);
}

TEST_F(ToolXflPackage, PicturesAndOtherFormatsAreOfTheBoardAllTheSame) {
    const std::string file = folder.write("a.xfl", package());
    runTool({"options", "XFL", "--set", "Import Type=Component"}, folder.path());
    for (const char *output : {"a.svg", "a.emn"}) {
        const char *const command = std::string(output) == "a.svg" ? "render" : "convert";
        const ToolResult result = runTool({command, file, "-o", folder.path(output)}, folder.path());
        EXPECT_EQ(result.status, 0) << result;
    }
    EXPECT_THAT(folder.read("a.svg"), HasSubstr("20 \u00d7 10 mm"));
    EXPECT_THAT(folder.read("a.emn"), HasSubstr("U1"));
}

TEST_F(ToolXflPackage, TakesNoStackUp) {
    const ToolResult result =
        import(folder.write("a.xfl", package()), {"--as", "Component", "--stackup", folder.path("s.json")});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("is read as a component"));
}

TEST_F(ToolXflPackage, InfoTellsItsEdgeAndHeight) {
    const ToolResult result = runTool({"info", folder.write("a.xfl", package()), "--as", "Component"});
    EXPECT_EQ(result.status, 0) << result;
    for (const char *text : {"Name                a\n", "Thickness           0.6\n", "x -10 to 10, y -5 to 5",
                             "Components          1\n", "Layers              0\n"})
        EXPECT_THAT(result.out, HasSubstr(text));
}

TEST_F(ToolXflPackage, InfoTellsItsSolidsAndNoPlacementsOfTheFile) {
    const ToolResult result = runTool({"info", folder.write("a.xfl", package()), "--as", "Component"});
    EXPECT_THAT(result.out, HasSubstr("Placements          1\n"));
    EXPECT_THAT(result.out, HasSubstr("Solids              7\n"));
}

TEST_F(ToolXflPackage, ItsImportNamesItByItsDesignator) {
    const ToolResult result = runTool(
        {"import", folder.write("a.xfl", package()), "-o", folder.path("m.json"), "--as", "Component"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, testing::ContainsRegex("Without power +1: 'a'\n"));
    EXPECT_THAT(result.out, testing::Not(HasSubstr("Without definition")));
}

TEST_F(ToolXflPackage, SolidsWithoutAnAreaAreLeftOut) {
    std::string rows = package();
    rows.insert(rows.find("shape 1 1 -5"),
                "annular 1 1 2 0 0\nrectangle 1 5\npath 1 0 0 0 1 1\nshape 1 9 0 0\n"
                "rectangle 1 0 0 2 2\n");
    const std::string file = folder.write("a.xfl", rows);
    const ToolResult result = import(file, {"--as", "Component"});
    EXPECT_THAT(result.err, HasSubstr("': 1 solid has no area and is left out: sizes of 0, or tracks"));
    const auto model = loadModel(folder.path("m.json"));
    const std::vector<Entity *> solids = bodies(*all(*model, Component_t).at(0));
    EXPECT_EQ(solids.size(), 7u);
}

TEST_F(ToolXflPackage, AnEdgeWithoutPointsMakesNoSolids) {
    const ToolResult result = import(folder.write("a.xfl", package("diamond 1 1")), {"--as", "Component"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("1 edge has no points"));
    EXPECT_THAT(result.err, testing::Not(HasSubstr("solid")));
    EXPECT_EQ(bodies(*all(*loadModel(folder.path("m.json")), Component_t).at(0)).size(), 4u);
}

TEST_F(ToolXflPackage, VoidsThatAnEdgeMayMoveAreTold) {
    const std::string head = ".unit mm\n.layer\nT 1 C Cu FR\nD 1 D Cu FR\n.end\n";
    const std::string edge = ".board_geom\nrectangle 20 10\n", other = ".board_geom\nrectangle 9 9\n";
    const std::string net = ".route\nN {\nsquare 1 4 4 0 0\nvoid_square 1 1 1 0 0\n}\n.end\n";
    const auto told = [&](const std::string &rows) {
        return runTool({"info", folder.write("a.xfl", head + rows), "--as", "Component"}).err;
    };
    for (const std::string &rows : {edge + net, edge + edge + net, net, edge + net + edge})
        EXPECT_EQ(told(rows), "") << rows;
    for (const std::string &rows : {net + edge, edge + other + net, edge + net + other})
        EXPECT_THAT(told(rows), HasSubstr("1 void may be out of its place: ")) << rows;
}

TEST_F(ToolXflPackage, VoidsBehindNothingAreTold) {
    const std::string head = ".unit mm\n.layer\nT 1 C Cu FR\nD 1 D Cu FR\n.end\n.route\nN {\n";
    const auto told = [&](const std::string &rows) {
        const std::string file = folder.write("a.xfl", head + rows + "square 1 1 1 0 0\n}\n.end\n");
        return runTool({"info", file, "--as", "Component"}).err;
    };
    EXPECT_THAT(told("void_square 1 1 1 0 0\n"),
                HasSubstr("1 void is left out: no solid stands before it\n"));
    EXPECT_THAT(told("square 1 1 1 0 0\nannular 1 1 2 0 0\nvoid_square 1 1 1 0 0\n"),
                HasSubstr("1 void is left out: what it would be cut out of has no area\n"));
    EXPECT_EQ(told("path 1 1 0 0 5 5\nvoid_square 1 1 1 0 0\n"), "");
}

TEST_F(ToolXflPackage, ItsModelIsDrawn) {
    imported(example, {"--as", "Component"});
    for (const char *side : {"top", "bottom"}) {
        const ToolResult result =
            runTool({"render", folder.path("m.json"), "-o", folder.path("p.svg"), "--side", side});
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_THAT(folder.read("p.svg"), HasSubstr("17 \u00d7 17 mm"));
    }
}

// On the controller board.

class XflOnController : public ToolXflPackage {
protected:
    // The example as the library's item for the processor, which stands at 72, 38, turned by 90 degrees.
    void makeLibrary() const {
        std::filesystem::create_directory(std::filesystem::u8path(folder.path("library")));
        const ToolResult result = import(example, {"--as", "Component"}, "library/package.json");
        ASSERT_EQ(result.status, 0) << result;
        folder.write("library/index.json",
                     R"({"format":"eda-library","version":1,"rows":[{"key":"BGA256_17 MPU-256B",
                         "file":"package.json","mapping":"mapped"}]})");
    }

    static Entity *partNamed(const Model &model, const std::string &designator) {
        for (Entity *part : all(model, Component_t))
            if (textOf(*part, Reference_Designator_t) == designator) return part;
        ADD_FAILURE() << "no part " << designator;
        return nullptr;
    }

    // From the location of the processor on the board, and from the board's top.
    static Box3 onBoard(const Model &model, const Entity &entity) {
        const Box3 board = boxOf(*all(model, PCB_t).at(0));
        return relativeTo(boxOf(entity), board.x[0] + 72, board.y[0] + 38, board.height[1]);
    }
};

TEST_F(XflOnController, APackageOfTheLibraryStandsInThePlaceOfThePart) {
    makeLibrary();
    const ToolResult result = import(controller, {"--library", folder.path("library")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    const rapidjson::Document report = parseJson(result.out);
    EXPECT_EQ(report["parts"]["fromLibrary"].GetInt(), 1);
    const auto model = loadModel(folder.path("m.json"));
    const Entity &part = *partNamed(*model, "U1");
    expectNear(onBoard(*model, part), {{-8.5, 8.5}, {-8.5, 8.5}, {0.0, 1.092}});
    struct Expected {
        const char *name;
        Box3 box;
        const char *material;
    };
    // The sensor stands at -6.6, 6.6 in the package, and so at -6.6, -6.6 once that is turned.
    const Expected expected[] = {
        {"DIE", {{-3, 3}, {-3, 3}, {0.592, 0.892}}, "Typical Component"},
        {"SENSOR", {{-7.3, -5.9}, {-7.3, -5.9}, {0.592, 1.092}}, "Typical Component"},
        {"CORE", {{-8.5, 8.5}, {-8.5, 8.5}, {0.096, 0.496}}, "BT Laminate"},
        {"BALLS", {{-8.5, 8.5}, {-8.5, 8.5}, {0.0, 0.018}}, "Copper"},
        {"TOP", {{-8.5, 8.5}, {-8.5, 8.5}, {0.574, 0.592}}, "Copper"},
    };
    for (const Expected &body : expected) {
        SCOPED_TRACE(body.name);
        const Entity *const found = bodyNamed(part, body.name);
        ASSERT_NE(found, nullptr);
        expectNear(onBoard(*model, *found), body.box);
        EXPECT_EQ(materialOf(*found), body.material);
    }
}

TEST_F(XflOnController, ItsVoidsTurnWithIt) {
    makeLibrary();
    const auto model = imported(controller, {"--library", folder.path("library")});
    // The square opening of the ground plane, at 7.5, -7.5 in the package.
    const std::vector<Entity *> holes = all(*partNamed(*model, "U1"), TypeRef("Obstruction Hole"));
    const auto isSquare = [&](const Entity *hole) {
        const Box3 box = onBoard(*model, *hole);
        return std::fabs(box.x[0] - 7.25) < 1e-5 && std::fabs(box.x[1] - 7.75) < 1e-5 &&
               std::fabs(box.y[0] - 7.25) < 1e-5 && std::fabs(box.y[1] - 7.75) < 1e-5;
    };
    EXPECT_GT(holes.size(), 100u);
    EXPECT_EQ(std::count_if(holes.begin(), holes.end(), isSquare), 1);
}

TEST_F(XflOnController, APictureShowsItsSolids) {
    makeLibrary();
    const auto model = imported(controller, {"--library", folder.path("library")});
    const BoardView view = viewOfModel(*findBoard(*model, controller, ""), Side::Top);
    const auto isSolid = [](const PartView &part) { return part.kind == PartKind::Solid; };
    EXPECT_GT(std::count_if(view.parts.begin(), view.parts.end(), isSolid), 700);
    for (const PartView &part : view.parts) {
        if (!isSolid(part) || part.body.empty()) continue;
        const Box box = boundOf(part.body);
        EXPECT_TRUE(box.low.x >= 63.49 && box.high.x <= 80.51 && box.low.y >= -50.51 && box.high.y <= -33.49);
    }
}

TEST_F(XflOnController, APackageCanJoinTheBoardOfAModel) {
    const auto before = imported(controller);
    std::filesystem::copy_file(std::filesystem::u8path(folder.path("m.json")),
                               std::filesystem::u8path(folder.path("board.json")));
    const auto model = imported(example, {"--as", "Component", "--into", folder.path("board.json")});
    EXPECT_EQ(all(*model, PCB_t).size(), 1u);
    EXPECT_EQ(all(*model, Component_t).size(), all(*before, Component_t).size() + 1);
    EXPECT_EQ(all(*model, Resistor_t).size(), all(*before, Resistor_t).size());
    const Entity &part = *partNamed(*model, "package");
    EXPECT_EQ(part.getOwnerEntity()->getType(), PCB_t);
    // At the upper left corner of the board.
    expectNear(onBoard(*model, part), {{-72, -55}, {80 - 38 - 17, 80 - 38}, {0.0, 1.092}});
    EXPECT_EQ(materialOf(*bodyNamed(part, "CORE")), "BT Laminate");
}

} // namespace
