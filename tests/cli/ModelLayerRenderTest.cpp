// eda render of a layer of a model.
#include "Entities.h"
#include "GerberFiles.h"
#include "host/EntityModel/ModelFile.h"
#include "LayerScene.h"
#include "SmallDesign.h"
#include "support/ImportBench.h"
#include "support/RunTool.h"

#include <QtGui/QImage>

#include <gmock/gmock.h>

#include <cmath>

namespace {

using namespace TestSupport;
using testing::HasSubstr;

// Copper with round and rectangular pads, strokes, an opening that two cleared squares make, and an island.
std::string richLayer() {
    return gerberLayer(
        "%ADD12R,12X12*%\n%ADD13R,4X4*%\nD10*\nX050000Y150000D02*\nX350000Y150000D01*\nD11*\n"
        "X200000Y030000D03*\nD10*\nX240000Y030000D03*\nD12*\nX300000Y080000D03*\n%LPC*%\nD13*\n"
        "X290000Y070000D03*\nX310000Y090000D03*\nD10*\nX260000Y110000D03*\n%LPD*%\nD10*\n"
        "X300000Y080000D03*\n");
}

class ToolModelLayer : public testing::Test {
protected:
    void SetUp() override {
        board = writeSmallDesign(folder);
        top = folder.write("top.gbr", richLayer());
        bottom = folder.write("bottom.gbr", gerberLayer("D11*\nX100000Y100000D03*\n"));
        drills = folder.write("holes.drl", drillFile("T01\nX050000Y150000\n"));
    }

    void import(const std::vector<std::string> &more = {}) const {
        std::vector<std::string> arguments{"import",   board, "-o",   folder.path("model.json"),
                                           "--copper", top,   bottom, drills};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = runTool(arguments);
        ASSERT_EQ(result.status, 0) << result;
    }

    QImage render(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "render");
        arguments.insert(arguments.end(), {"-o", folder.path("out.png")});
        const ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 0) << result;
        return QImage(QString::fromStdString(folder.path("out.png")));
    }

    TempFolder folder;
    std::string board, top, bottom, drills;
};

TEST_F(ToolModelLayer, ShowsTheSameCopperAsTheDesign) {
    import();
    const QImage design = render({board, "--layer", "top", "--bare", "--dpi", "508", "--window=0,0,40,20",
                                  "--copper", top, bottom, drills});
    // A model counts from the upper left corner of the board, 0, 20.
    const QImage model = render(
        {folder.path("model.json"), "--layer", "top", "--bare", "--dpi", "508", "--window=0,-20,40,0"});
    ASSERT_EQ(design.size(), model.size());
    int differences = 0, black = 0;
    for (int y = 0; y < design.height(); ++y) {
        for (int x = 0; x < design.width(); ++x) {
            differences += design.pixel(x, y) != model.pixel(x, y) ? 1 : 0;
            black += design.pixel(x, y) == qRgb(0, 0, 0) ? 1 : 0;
        }
    }
    EXPECT_GT(black, 20'000);
    EXPECT_LT(differences, 60); // of round edges that became chords
}

TEST_F(ToolModelLayer, NamesNumbersAndSidesAreThoseOfTheDesign) {
    import();
    const std::string model = folder.path("model.json");
    const QImage topPicture = render({model, "--layer", "top"});
    EXPECT_EQ(render({model, "--layer", "1"}), topPicture);
    EXPECT_EQ(render({model, "--layer", "TOP"}), topPicture);
    EXPECT_NE(render({model, "--layer", "bottom"}), topPicture);
    const ToolResult result = runTool({"render", model, "--layer", "inner", "-o", folder.path("x.png")});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("is none of the layers"));
    EXPECT_EQ(folder.read("x.png"), "<missing>");
}

TEST_F(ToolModelLayer, AModelWithoutLayersIsSaidToHaveNone) {
    ASSERT_EQ(runTool({"import", board, "-o", folder.path("plain.json")}).status, 0);
    const ToolResult result =
        runTool({"render", folder.path("plain.json"), "--layer", "top", "-o", folder.path("x.png")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("no layers"));
}

TEST_F(ToolModelLayer, PartsOfItsSideAndHolesStandOnIt) {
    import();
    const std::unique_ptr<Model> model = EDATool::loadModel(folder.path("model.json"));
    const Entity &entity = *EDATool::findBoard(*model, "model.json", "");
    const auto designators = [](const EDATool::BoardView &view) {
        std::vector<std::string> names;
        for (const EDATool::PartView &part : view.parts)
            names.push_back(part.designator);
        return names;
    };
    const EDATool::BoardView topView = EDATool::viewOfModelLayer(entity, "top");
    EXPECT_THAT(designators(topView), testing::UnorderedElementsAre("U1", "H1"));
    EXPECT_EQ(topView.holes.size(), 2u); // the mounting hole is a hole of the board
    EXPECT_TRUE(topView.keepouts.empty());
    EXPECT_THAT(designators(EDATool::viewOfModelLayer(entity, "bottom")), testing::ElementsAre("U2"));
    // The pad at 20, 3 from the upper left corner at 0, 20.
    bool isFound = false;
    for (const EDATool::Path &path : topView.copper) {
        const EDATool::Point centre = boundOf(path).centre();
        isFound = isFound || std::hypot(centre.x - 20, centre.y + 17) < 1e-6;
    }
    EXPECT_TRUE(isFound);
}

TEST_F(ToolModelLayer, OnlyViasThatReachItAreShown) {
    const std::string inner = folder.write("inner.gbr", gerberLayer("D11*\nX100000Y100000D03*\n"));
    import({inner, "--layer-order", "top.gbr,inner.gbr,bottom.gbr", "--span", "holes.drl=1:2"});
    const std::unique_ptr<Model> model = EDATool::loadModel(folder.path("model.json"));
    const Entity &entity = *EDATool::findBoard(*model, "model.json", "");
    EXPECT_EQ(EDATool::viewOfModelLayer(entity, "1").holes.size(), 2u);
    EXPECT_EQ(EDATool::viewOfModelLayer(entity, "2").holes.size(), 2u);
    EXPECT_EQ(EDATool::viewOfModelLayer(entity, "3").holes.size(), 1u);
    EXPECT_TRUE(EDATool::viewOfModelLayer(entity, "2").parts.empty());
}

// Routes come from formats that tell them as such.
EDA::EDABoardLayer routeLayer(bool inNet) {
    EDA::EDATrace route;
    route.setRouteWidth(0.5);
    for (const auto &[x, y] : {std::pair(11, 12), std::pair(14, 12), std::pair(14, 16)})
        route.addPoint(0, x, y, 0);
    EDA::EDABoardLayer layer;
    layer.setName("top");
    if (inNet) {
        EDA::EDANet net;
        net.setName("GND");
        net.addTrace(route);
        layer.addNet(std::move(net));
    } else {
        layer.addTrace(route);
    }
    return layer;
}

void expectRoute(const EDATool::BoardView &view) {
    ASSERT_EQ(view.copper.size(), 2u);
    // From the upper left corner, 10, 20.
    const EDATool::Box first = boundOf(view.copper[0]), second = boundOf(view.copper[1]);
    EXPECT_NEAR(first.low.x, 0.75, 1e-6);
    EXPECT_NEAR(first.high.x, 4.25, 1e-6);
    EXPECT_NEAR(first.low.y, -8.25, 1e-6);
    EXPECT_NEAR(first.high.y, -7.75, 1e-6);
    EXPECT_NEAR(second.low.x, 3.75, 1e-6);
    EXPECT_NEAR(second.high.y, -3.75, 1e-6);
    EXPECT_NEAR(EDATool::areaOf(view.copper[0]), 3 * 0.5 + 0.0625 * 3.14159265, 1e-6);
}

TEST(ModelLayer, RoutesHaveTheirWidthOnBoardsOfAnyShape) {
    for (const bool inNet : {false, true}) {
        ImportBench box;
        box.rectangle(0, 10, 10, 30, 20);
        box.board().addLayer(routeLayer(inNet));
        expectRoute(EDATool::viewOfModelLayer(*box.import(), "top"));

        ImportBench polygon;
        polygon.loop(0, {{10, 10}, {30, 10}, {30, 20}, {20, 20}, {20, 18}, {10, 20}});
        polygon.board().addLayer(routeLayer(inNet));
        expectRoute(EDATool::viewOfModelLayer(*polygon.import(), "top"));
    }
}

TEST(ModelLayer, ARouteOfOnePointIsADot) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 10, 10);
    EDA::EDATrace route;
    route.setRouteWidth(1);
    route.addPoint(0, 5, 5, 0);
    EDA::EDABoardLayer layer;
    layer.addTrace(route);
    bench.board().addLayer(layer);
    const EDATool::BoardView view = EDATool::viewOfModelLayer(*bench.import(), "1");
    ASSERT_EQ(view.copper.size(), 1u);
    EXPECT_NEAR(boundOf(view.copper[0]).width(), 1, 1e-9);
    EXPECT_NEAR(boundOf(view.copper[0]).centre().y, -5, 1e-9);
}

TEST(ModelLayer, HolesOfConductorsStayOpenOnBothFamilies) {
    for (const char *kind : {"PCB", "Component"}) {
        ImportBench bench;
        bench.set(Import_Type_t, kind);
        bench.rectangle(0, 0, 0, 20, 20);
        EDA::EDATrace trace;
        for (const auto &[x, y] : {std::pair(5, 5), std::pair(15, 5), std::pair(15, 15), std::pair(5, 15)})
            trace.addPoint(0, x, y, 0);
        for (const auto &[x, y] : {std::pair(6, 6), std::pair(8, 6), std::pair(8, 9)}) // a triangle
            trace.addPoint(1, x, y, 0);
        trace.addPoint(2, 12, 12, 0); // a circle
        trace.addPoint(2, 13, 12, 360);
        EDA::EDABoardLayer layer;
        layer.addTrace(trace);
        bench.board().addLayer(layer);
        const EDATool::BoardView view = EDATool::viewOfModelLayer(*bench.import(), "1");
        ASSERT_EQ(view.copper.size(), 1u) << kind;
        const double circle = 3.14159265;
        EXPECT_NEAR(EDATool::areaOf(view.copper[0]), 100 - 3 - circle, 0.05) << kind;
        // Where they are: the box of each sub-path.
        std::vector<EDATool::Path> loops;
        for (const EDATool::PathStep &step : view.copper[0]) {
            if (step.kind == EDATool::PathStep::Kind::Move) loops.emplace_back();
            loops.back().push_back(step);
        }
        ASSERT_EQ(loops.size(), 3u) << kind;
        std::vector<double> middles;
        for (const EDATool::Path &loop : loops)
            middles.push_back(boundOf(loop).centre().x - boundOf(loop).centre().y);
        EXPECT_THAT(middles, testing::UnorderedElementsAre(testing::DoubleNear(20, 1e-6),   // 10, -10
                                                           testing::DoubleNear(19.5, 1e-6), // 7, -12.5
                                                           testing::DoubleNear(20, 1e-6)))  // 12, -8
            << kind;
    }
}

} // namespace
