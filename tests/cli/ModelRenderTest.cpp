// What the picture of a model shows, of models built in code.
#include "BoardScene.h"
#include "BoardView.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Undo.h"
#include "PowerScale.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>

namespace {

using namespace EDATool;
using namespace EntityModel;

// A board of 100 by 60 by 1.6 mm.
class ModelRender : public testing::Test {
protected:
    void SetUp() override {
        chassis = make(Chassis_t, model.root(), Chassis_t);
        board =
            make(PCB_t, chassis, PCBs_t, {{"Width", "100 mm"}, {"Depth", "60 mm"}, {"Thickness", "1.6 mm"}});
    }

    using Values = std::vector<std::pair<const char *, std::string>>;

    static Entity *make(const TypeRef &type, Entity *parent, const TypeRef &list, const Values &values = {}) {
        Entity *const entity = EntityEditor::createEntity(type, parent, AttributePath(list));
        EXPECT_NE(entity, nullptr) << type.getLabel();
        for (const auto &[label, value] : values)
            EXPECT_TRUE(EntityEditor::setValue(entity, AttributePath(label), value)) << label << " " << value;
        return entity;
    }

    // 10 by 4 mm.
    Entity *part(const std::string &designator, double x, double z, const Values &more = {}) {
        Values values{{"Reference Designator", designator},
                      {"Width", "10 mm"},
                      {"Depth", "4 mm"},
                      {"X Location", std::to_string(x) + " mm"},
                      {"Z Location", std::to_string(z) + " mm"}};
        values.insert(values.end(), more.begin(), more.end());
        return make(Component_t, board, Components_t, values);
    }

    // A package of 20 by 20 mm with its low corner at (30, 20) on the board, and a substrate of 16 by 16 in
    // it.
    void makePackage() {
        component = part("U1", 30, 20,
                         {{"Width", "20 mm"},
                          {"Depth", "20 mm"},
                          {"Modelling Level", "Detailed"},
                          {"Render Style", "Invisible"}});
        group = make(Subcomponent_Group_t, component, SubcomponentGroups_t);
        std::vector<Entity *> solids;
        getLinkedEntities(group, AttributePath(Obstructions_t), solids);
        EntityEditor::deleteEntities(solids);
        substrate = make(Substrate_t, group, Obstructions_t,
                         {{"Reference Designator", "SUB"},
                          {"Width", "16 mm"},
                          {"Depth", "16 mm"},
                          {"X Location", "2 mm"},
                          {"Z Location", "2 mm"},
                          {"Thickness", "0.5 mm"}});
    }

    BoardView view(Side side = Side::Top) const { return viewOfModel(*board, side); }

    static const PartView *find(const BoardView &view, const std::string &designator) {
        for (const PartView &part : view.parts)
            if (part.designator == designator) return &part;
        return nullptr;
    }

    // x from the left, y from the low edge, in mm.
    static void expectBox(const Path &path, double xLow, double yLow, double xHigh, double yHigh) {
        const Box box = boundOf(path);
        EXPECT_NEAR(box.low.x, xLow, 1e-9);
        EXPECT_NEAR(box.low.y + 60, yLow, 1e-9);
        EXPECT_NEAR(box.high.x, xHigh, 1e-9);
        EXPECT_NEAR(box.high.y + 60, yHigh, 1e-9);
    }

    static void expectBox(const BoardView &view, const std::string &designator, double xLow, double yLow,
                          double xHigh, double yHigh) {
        SCOPED_TRACE(designator);
        const PartView *const part = find(view, designator);
        ASSERT_NE(part, nullptr);
        expectBox(part->body, xLow, yLow, xHigh, yHigh);
    }

    static std::vector<std::string> textsOf(const Picture &picture) {
        std::vector<std::string> texts;
        for (const PictureItem &item : picture.items())
            if (!item.text.empty()) texts.push_back(item.text);
        return texts;
    }

    Model model;
    Entity *chassis = nullptr;
    Entity *board = nullptr;
    Entity *component = nullptr;
    Entity *group = nullptr;
    Entity *substrate = nullptr;
};

TEST_F(ModelRender, ShowsAPartOnItsSideAlone) {
    part("U1", 10, 20);
    part("U2", 10, 20, {{"Board Side", "Bottom"}});
    expectBox(view(), "U1", 10, 36, 20, 40);
    EXPECT_EQ(view().parts.size(), 1u);
    expectBox(view(Side::Bottom), "U2", 10, 36, 20, 40);
    EXPECT_EQ(view(Side::Bottom).parts.size(), 1u);
}

TEST_F(ModelRender, TurnsABoxAboutItsCentre) {
    part("U1", 10, 20, {{"Angle", "90"}});
    expectBox(view(), "U1", 13, 33, 17, 43);
}

// A corner of the bottom is mirrored, then turned.
TEST_F(ModelRender, MirrorsAPolygonOfTheBottom) {
    Entity *const entity =
        part("U1", 50, 30,
             {{"Shape", "Polygon"}, {"Outline", "0,0,6,0,6,-1,0,-4 <mm>"}, {"Board Side", "Bottom"}});
    expectBox(view(Side::Bottom), "U1", 44, 30, 50, 34);
    EntityEditor::setValue(entity, Angle_t, "90");
    expectBox(view(Side::Bottom), "U1", 46, 24, 50, 30);
}

TEST_F(ModelRender, KeepsACylinderRound) {
    part("U1", 50, 30, {{"Shape", "Cylinder"}, {"Diameter", "8 mm"}});
    const BoardView shown = view();
    ASSERT_EQ(shown.parts.size(), 1u);
    ASSERT_EQ(shown.parts[0].body.size(), 3u);
    EXPECT_EQ(shown.parts[0].body[1].kind, PathStep::Kind::Arc);
    expectBox(shown, "U1", 46, 26, 54, 34);
}

// It lies on its side, from the rim with the greatest Z on.
TEST_F(ModelRender, ShowsTheShadowOfACylinderThatLies) {
    part("U1", 50, 30,
         {{"Shape", "Cylinder"}, {"Diameter", "8 mm"}, {"Height", "12 mm"}, {"Angle To Board", "90"}});
    expectBox(view(), "U1", 46, 14, 54, 26);
}

TEST_F(ModelRender, ShowsEveryTypeOfPart) {
    const auto add = [this](const TypeRef &type, const TypeRef &list, const char *designator) {
        make(type, board, list,
             {{"Reference Designator", designator}, {"X Location", "40 mm"}, {"Z Location", "10 mm"}});
    };
    add(Resistor_t, Resistors_t, "R1");
    add(Capacitor_t, Capacitors_t, "C1");
    add(Inductor_t, Inductors_t, "L1");
    add(Chip_Socket_t, Chip_Sockets_t, "X1");
    add(Cable_Socket_t, Cable_Sockets_t, "X2");
    add(Daughter_Board_Socket_t, Daughter_Board_Sockets_t, "X3");
    const BoardView shown = view();
    for (const char *designator : {"R1", "C1", "L1", "X1", "X2", "X3"}) {
        ASSERT_NE(find(shown, designator), nullptr) << designator;
        EXPECT_EQ(find(shown, designator)->kind,
                  designator[0] == 'X' ? PartKind::Socket : PartKind::Component);
    }
}

TEST_F(ModelRender, ShowsWhatIsInASocketOnItsSide) {
    Entity *const socket = make(Chip_Socket_t, board, Chip_Sockets_t,
                                {{"Reference Designator", "XU1"},
                                 {"Width", "20 mm"},
                                 {"Depth", "20 mm"},
                                 {"X Location", "40 mm"},
                                 {"Z Location", "10 mm"},
                                 {"Board Side", "Bottom"},
                                 {"Orientation", "90"}});
    make(Component_t, socket, ComponentLink_t,
         {{"Reference Designator", "U1"},
          {"Width", "10 mm"},
          {"Depth", "4 mm"},
          {"X Location", "5 mm"},
          {"Z Location", "8 mm"}});
    EXPECT_TRUE(view().parts.empty());
    expectBox(view(Side::Bottom), "U1", 48, 35, 52, 45); // turned with its socket
}

TEST_F(ModelRender, LeavesOutTheBoardInASocket) {
    Entity *const socket = make(Daughter_Board_Socket_t, board, Daughter_Board_Sockets_t);
    Entity *const daughter = make(PCB_t, socket, Daughter_Board_t);
    make(Component_t, daughter, Components_t, {{"Reference Designator", "U9"}});
    EXPECT_EQ(view().parts.size(), 1u);
    EXPECT_NE(find(viewOfModel(*daughter, Side::Top), "U9"), nullptr);
}

TEST_F(ModelRender, ShowsThePackageOnABoardAsItsSolids) {
    makePackage();
    make(Solid_Obstruction_t, group, Obstructions_t,
         {{"Width", "8 mm"}, {"Depth", "6 mm"}, {"X Location", "10 mm"}, {"Z Location", "10 mm"}});
    const BoardView shown = view();
    ASSERT_EQ(shown.parts.size(), 3u);
    EXPECT_EQ(find(shown, "U1")->kind, PartKind::Container);
    expectBox(shown, "U1", 30, 20, 50, 40);
    expectBox(shown, "SUB", 32, 22, 48, 38);
    EXPECT_EQ(shown.parts[2].kind, PartKind::Solid);
    EXPECT_EQ(shown.parts[2].designator, ""); // a body has a name, but no designator
    expectBox(shown.parts[2].body, 36, 27, 44, 33);
}

TEST_F(ModelRender, ShowsASubstrateWithTheSolidsBesideIt) {
    makePackage();
    Entity *const die = make(Solid_Obstruction_t, group, Obstructions_t,
                             {{"Width", "8 mm"},
                              {"Depth", "6 mm"},
                              {"X Location", "10 mm"},
                              {"Z Location", "10 mm"},
                              {"Y Location", "0.5 mm"},
                              {"Angle 1", "90"}});
    EntityEditor::setValue(die, Name_t, "DIE");
    Entity *const below = make(Solid_Obstruction_t, group, Obstructions_t,
                               {{"Width", "2 mm"},
                                {"Depth", "2 mm"},
                                {"X Location", "4 mm"},
                                {"Z Location", "4 mm"},
                                {"Y Location", "0 mm"},
                                {"Angle 2", "180"}});
    EntityEditor::setValue(below, Name_t, "BELOW");
    const BoardView top = viewOfModel(*substrate, Side::Top);
    EXPECT_EQ(top.parts.size(), 1u);
    ASSERT_NE(find(top, "DIE"), nullptr);
    const Box box = boundOf(find(top, "DIE")->body); // from the corner of the substrate
    EXPECT_NEAR(box.low.x, 5, 1e-9);
    EXPECT_NEAR(box.high.y, -4, 1e-9);
    EXPECT_NEAR(box.width(), 6, 1e-9);
    const BoardView bottom = viewOfModel(*substrate, Side::Bottom);
    ASSERT_NE(find(bottom, "BELOW"), nullptr);
    EXPECT_EQ(bottom.parts.size(), 1u);
}

TEST_F(ModelRender, CutsTheHolesOfASolid) {
    makePackage();
    Entity *const lid = make(Solid_Obstruction_t, group, Obstructions_t,
                             {{"Shape", "Polygon"}, {"Outline", "0,0,10,0,10,10,0,10 <mm>"}});
    make(TypeRef("Obstruction Hole"), lid, Holes_t,
         {{"Shape", "Cylinder"}, {"Diameter", "2 mm"}, {"X Location", "5 mm"}, {"Z Location", "5 mm"}});
    EXPECT_NEAR(areaOf(view().parts.back().body), 100 - 4 * std::atan(1.0), 1e-9);
}

TEST_F(ModelRender, ShowsViasOfBoardsAndPartsFromBothSides) {
    make(Via_t, board, Vias_t, {{"Diameter", "2 mm"}, {"X Location", "5 mm"}, {"Z Location", "6 mm"}});
    Entity *const owner = part("U1", 10, 20, {{"Angle", "90"}});
    make(Via_t, owner, Vias_t, {{"Diameter", "1 mm"}, {"X Location", "1 mm"}, {"Z Location", "2 mm"}});
    for (const Side side : {Side::Top, Side::Bottom}) {
        const BoardView shown = view(side);
        ASSERT_EQ(shown.holes.size(), 2u);
        expectBox(shown.holes[0].path, 4, 53, 6, 55);
        expectBox(shown.holes[1].path, 14.5, 33.5, 15.5, 34.5); // turned with U1 about (15, 38)
    }
}

TEST_F(ModelRender, ShowsEachOfManyViasAndBumps) {
    make(Via_t, board, Vias_t,
         {{"Modelling Type", "Multiple Vias"},
          {"Via Diameter", "2 mm"},
          {"Width", "6 mm"},
          {"Depth", "2 mm"},
          {"X Location", "10 mm"},
          {"Z Location", "20 mm"},
          {"Instance Placements", "1,1,5,1 <mm>"}});
    makePackage();
    make(Bump_t, substrate, Bumps_t,
         {{"Modelling Type", "Multiple Bumps"},
          {"Max Diameter", "1 mm"},
          {"Height", "0.2 mm"},
          {"Y Location", "0.5 mm"},
          {"Instance Placements", "1,1,2,3,7,7 <mm>"}});
    make(Bump_t, substrate, Bumps_t,
         {{"Max Diameter", "1 mm"},
          {"Height", "0.2 mm"},
          {"Y Location", "-0.2 mm"},
          {"X Location", "4 mm"},
          {"Z Location", "4 mm"}});
    const BoardView shown = view();
    ASSERT_EQ(shown.holes.size(), 2u);
    expectBox(shown.holes[0].path, 10, 38, 12, 40);
    expectBox(shown.holes[1].path, 14, 38, 16, 40);
    const BoardView top = viewOfModel(*substrate, Side::Top);
    ASSERT_EQ(top.bumps.size(), 3u);
    EXPECT_NEAR(boundOf(top.bumps[1]).low.x, 1.5, 1e-9);
    EXPECT_NEAR(boundOf(top.bumps[1]).high.y, -2.5, 1e-9);
    EXPECT_EQ(viewOfModel(*substrate, Side::Bottom).bumps.size(), 1u);
    EXPECT_EQ(shown.bumps.size(), 3u); // the one below the package is hidden by it, and by the board
    EXPECT_EQ(view(Side::Bottom).bumps.size(), 0u);
}

TEST_F(ModelRender, LabelsWhatHoldsOthersAboveThem) {
    makePackage();
    Entity *const socket = make(Chip_Socket_t, board, Chip_Sockets_t,
                                {{"Reference Designator", "XU2"}, {"X Location", "60 mm"}});
    make(Component_t, socket, ComponentLink_t, {{"Reference Designator", "U2"}});
    const BoardView shown = view();
    EXPECT_EQ(find(shown, "U1")->labelPlace, LabelPlace::Above);
    EXPECT_EQ(find(shown, "XU2")->labelPlace, LabelPlace::Above);
    EXPECT_EQ(find(shown, "U2")->labelPlace, LabelPlace::Inside);
    EXPECT_THAT(textsOf(drawBoard(shown, 800)), testing::IsSupersetOf({"U1", "XU2", "U2"}));
    EXPECT_THAT(textsOf(drawBoard(shown, 800)), testing::Not(testing::Contains("SUB")));
}

TEST_F(ModelRender, ShowsWirebondsFromJunctionToJunction) {
    makePackage();
    Entity *const wire = make(Wirebond_t, group, Wirebonds_t, {{"Diameter", "0.02 mm"}});
    const auto junction = [&](const char *x, const char *z) {
        return make(Wirebond_Junction_t, wire, WirebondJunctions_t,
                    {{"X Location", x}, {"Z Location", z}, {"Y Location", "0.6 mm"}});
    };
    Entity *const points[] = {junction("3 mm", "3 mm"), junction("5 mm", "4 mm")};
    Entity *const segment = make(Wirebond_Segment_t, wire, WirebondSegments_t);
    EntityEditor::addEntity(segment, Start_Junction_t, points[0]);
    EXPECT_TRUE(view().wires.empty()); // an end is missing
    EntityEditor::addEntity(segment, End_Junction_t, points[1]);
    make(Wirebond_Segment_t, wire, WirebondSegments_t); // leads nowhere
    const BoardView shown = view();
    ASSERT_EQ(shown.wires.size(), 1u);
    ASSERT_EQ(shown.wires[0].path.size(), 2u);
    expectBox(shown.wires[0].path, 33, 36, 35, 37);
    EXPECT_NEAR(shown.wires[0].diameter, 0.02, 1e-12);
}

TEST_F(ModelRender, DrawsFilteredPartsDashedAndWithoutTheirPower) {
    part("U1", 10, 20, {{"Filtered", "Yes"}, {"Thermal Design Power", "5 W"}});
    part("U2", 40, 20, {{"Thermal Design Power", "2 W"}});
    const BoardView shown = view();
    EXPECT_TRUE(find(shown, "U1")->isFiltered);
    EXPECT_EQ(shown.power.board, 2.0);
    const Picture picture = drawBoard(shown, 800);
    EXPECT_THAT(textsOf(picture), testing::IsSupersetOf({"U1", "Filtered part"}));
    EXPECT_TRUE(std::any_of(picture.items().begin(), picture.items().end(),
                            [](const PictureItem &item) { return item.style.dashed; }));
}

TEST_F(ModelRender, MarksAPartWithoutSize) {
    part("U1", 10, 20, {{"Width", "0 mm"}});
    part("U2", 30, 20, {{"Shape", "Polygon"}});
    part("U3", 50, 20, {{"Shape", "Polygon"}, {"Outline", "0,0,1,1 <mm>"}});
    const BoardView shown = view();
    ASSERT_EQ(shown.parts.size(), 3u);
    for (const PartView &each : shown.parts)
        EXPECT_TRUE(each.body.empty()) << each.designator;
    EXPECT_NEAR(shown.parts[1].at.x, 30, 1e-9);
    EXPECT_NEAR(shown.parts[1].at.y, -20, 1e-9);
    EXPECT_THAT(textsOf(drawBoard(shown, 800)), testing::Contains("Part without a shape"));
}

TEST_F(ModelRender, HugeNumbersMakeNoHarm) {
    for (const char *number : {"1e300 m", "-1e300 m", "1e308 m", "1e-300 m"}) {
        for (const char *label : {"X Location", "Z Location", "Width", "Depth", "Height"}) {
            if (number[0] == '-' && label[1] != ' ') continue;
            part("U", 10, 20, {{label, number}, {"Thermal Design Power", "1e308 W"}, {"Angle", "33"}});
        }
    }
    part("V", 10, 20,
         {{"Shape", "Polygon"}, {"Outline", "0,0,1e308,0,1e308,1e308,-1e308,5 <m>"}, {"Angle", "1e300"}});
    for (const Colouring colouring : {Colouring::Kind, Colouring::Power, Colouring::Density}) {
        for (const Side side : {Side::Top, Side::Bottom}) {
            const Picture picture = drawBoard(view(side), 300, colouring);
            EXPECT_GT(toSvg(picture).size(), 100u);
            std::string error;
            EXPECT_GT(toPng(picture, error).size(), 100u) << error;
        }
    }
}

// A pass over all others for each of them would take minutes.
TEST_F(ModelRender, AHundredThousandPartsTakeSeconds) {
    constexpr int across = 400;
    const UndoStackDisabler noUndo;
    for (int index = 0; index < 100'000; ++index) {
        Entity *const each = EntityEditor::createEntity(Resistor_t, board, AttributePath(Resistors_t));
        EntityEditor::setValue(each, Reference_Designator_t, "R" + std::to_string(index));
        EntityEditor::setSIValue(each, Width_t, 1e-4);
        EntityEditor::setSIValue(each, Depth_t, 1e-4);
        EntityEditor::setSIValue(each, X_Location_t, 2.5e-4 * (index % across));
        EntityEditor::setSIValue(each, Z_Location_t, 2.4e-4 * (index / across));
        EntityEditor::setSIValue(each, Thermal_Design_Power_t, 1e-3 * (index % 100));
    }
    const auto start = std::chrono::steady_clock::now();
    const BoardView shown = view();
    EXPECT_EQ(shown.parts.size(), 100'000u);
    EXPECT_GT(toSvg(drawBoard(shown, 8192, Colouring::Power)).size(), 1'000'000u);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

} // namespace
