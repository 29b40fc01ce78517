// eda export: from a model file to a pair of IDF files.
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "readers/IDFReader.h"
#include "SmallDesign.h"
#include "support/RunTool.h"

#include <gmock/gmock.h>

#include <cctype>
#include <cstdlib>
#include <filesystem>

namespace {

using namespace TestSupport;
using namespace EntityModel;
using testing::HasSubstr;
using testing::Not;

class ToolExport : public testing::Test {
protected:
    void SetUp() override {
        set(pcb, {{"Reference Designator", "CTRL"}, {"Width", "50.8 mm"}, {"Depth", "25.4 mm"}});
        part = add(pcb, "Component", "Components",
                   {{"Reference Designator", "U1"}, {"Model", "QFP"}, {"Part Number", "P1"}});
    }

    using Values = std::vector<std::pair<const char *, std::string>>;
    static void set(Entity *entity, const Values &values) {
        for (const auto &[label, text] : values)
            EXPECT_TRUE(EntityEditor::setValue(entity, label, text)) << label;
    }
    static Entity *add(Entity *parent, const char *type, const char *list, const Values &values = {}) {
        Entity *const entity = EntityEditor::createEntity(TypeRef(type), parent, list);
        EXPECT_NE(entity, nullptr) << type;
        set(entity, values);
        return entity;
    }

    void save() const {
        std::string error;
        EXPECT_TRUE(ModelFile::save(model, folder.path("model.json"), error)) << error;
    }
    ToolResult run(const std::vector<std::string> &more = {}, const std::string &output = "out.emn",
                   const std::string &configFolder = "/nonexistent") const {
        std::vector<std::string> arguments{"export", folder.path("model.json"), "-o", folder.path(output)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTool(arguments, configFolder);
    }
    ToolResult saveAndRun(const std::vector<std::string> &more = {}) const {
        save();
        return run(more);
    }
    void expectNoOutput() const {
        EXPECT_EQ(folder.read("out.emn"), "<missing>");
        EXPECT_EQ(folder.read("out.emp"), "<missing>");
    }
    void expectRefused(const ToolResult &result, int status, const std::string &message) const {
        EXPECT_EQ(result.status, status) << result;
        EXPECT_THAT(result.err, HasSubstr(message));
        expectNoOutput();
    }

    TempFolder folder;
    Model model{Velkin_Solver_Project_t};
    Entity *chassis = add(model.root(), "Chassis", "Chassis");
    Entity *pcb = add(chassis, "PCB", "PCBs");
    Entity *part = nullptr;
};

TEST_F(ToolExport, WritesAPairThatReadersTake) {
    const ToolResult result = saveAndRun();
    EXPECT_EQ(result.status, 0) << result;
    EDA::IDFReader reader;
    ASSERT_TRUE(reader.readFile(folder.path("out.emn"))) << reader.getError();
    ASSERT_TRUE(reader.readFile(folder.path("out.emp"))) << reader.getError();
    EXPECT_EQ(reader.getBoard().getName(), "CTRL");
    EXPECT_EQ(reader.getBoard().getUnits(), "MM");
    EXPECT_EQ(reader.getBoard().numComponentPlacements(), 1u);
    EXPECT_EQ(reader.getBoard().beginComponents()->getName(), "QFP");
}

TEST_F(ToolExport, SaysWhatItWrote) {
    const ToolResult result = saveAndRun();
    for (const char *text : {"out.emn", "out.emp", "Placements"})
        EXPECT_THAT(result.out, HasSubstr(text));
}

TEST_F(ToolExport, LeavesTheModelFileAlone) {
    save();
    const std::string before = folder.read("model.json");
    run();
    EXPECT_EQ(folder.read("model.json"), before);
    EXPECT_EQ(folder.numEntries(), 3u);
}

TEST_F(ToolExport, UnitsConvertLengths) {
    EXPECT_EQ(saveAndRun({"--units", "THOU"}).status, 0);
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\"CTRL\" THOU"));
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("0 2000 -1000 0"));
}

TEST_F(ToolExport, UnitsAreThoseOfThePreferencesWhereNoneAreNamed) {
    folder.write("preferences.json", "{}");
    save();
    Model preferences(TypeRef("User Preferences"));
    set(preferences.root(), {{"Global Units", "Imperial"}});
    std::string error;
    ASSERT_TRUE(ModelFile::save(preferences, folder.path("preferences.json"), error)) << error;
    EXPECT_EQ(run({}, "out.emn", folder.path()).status, 0);
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\"CTRL\" THOU"));
}

TEST_F(ToolExport, UnitsThatIdfHasNoWordForAreRefused) {
    save();
    expectRefused(run({"--units", "furlong"}), 2, "MM or THOU");
}

TEST_F(ToolExport, BoardChoosesByDesignator) {
    add(chassis, "PCB", "PCBs", {{"Reference Designator", "POWER"}});
    EXPECT_EQ(saveAndRun({"--board", "POWER"}).status, 0);
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\"POWER\" MM"));
}

TEST_F(ToolExport, SeveralBoardsAskForAChoice) {
    add(chassis, "PCB", "PCBs", {{"Reference Designator", "POWER"}});
    expectRefused(saveAndRun(), 2, "'CTRL', 'POWER'");
}

TEST_F(ToolExport, UnknownBoardNamesThoseThatThereAre) {
    expectRefused(saveAndRun({"--board", "NONE"}), 2, "'CTRL'");
}

TEST_F(ToolExport, ModelWithoutBoardIsAFailure) {
    EntityEditor::deleteEntity(pcb);
    expectRefused(saveAndRun(), 1, "no board");
}

TEST_F(ToolExport, MissingModelIsAFailure) { expectRefused(run(), 1, "model.json"); }

TEST_F(ToolExport, UnreadableModelIsAFailure) {
    folder.write("model.json", "{ \"format\": ");
    expectRefused(run(), 1, "model.json");
}

TEST_F(ToolExport, DesignIsNoModel) {
    const std::string board = writeSmallDesign(folder);
    const ToolResult result = runTool({"export", board, "-o", folder.path("out.emn")});
    expectRefused(result, 1, "small.emn");
}

TEST_F(ToolExport, NeedsAModelAndAnOutput) {
    save();
    expectRefused(runTool({"export", "-o", folder.path("out.emn")}), 2, "MODEL.json");
    expectRefused(runTool({"export", folder.path("model.json")}), 2, "-o");
    expectRefused(run({folder.path("model.json")}), 2, "one MODEL.json");
}

TEST_F(ToolExport, OutputMustBeAnIdfBoardFile) {
    save();
    EXPECT_EQ(run({}, "out.json").status, 2);
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST_F(ToolExport, UnwritableFolderIsAFailure) {
    save();
    const ToolResult result = run({}, "missing/out.emn");
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("out.emn"));
    EXPECT_EQ(folder.numEntries(), 1u);
}

// IDF board files may have any of these names; the model keeps its own.
TEST_F(ToolExport, NeverWritesOverTheModelThatItReads) {
    save();
    std::filesystem::rename(std::filesystem::u8path(folder.path("model.json")),
                            std::filesystem::u8path(folder.path("out.emn")));
    const std::string before = folder.read("out.emn");
    const ToolResult result = runTool({"export", folder.path("out.emn"), "-o", folder.path("out.emn")});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_EQ(folder.read("out.emn"), before);
}

TEST_F(ToolExport, ModelThatFitsHasNoWarnings) { EXPECT_EQ(saveAndRun().err, ""); }

TEST_F(ToolExport, ComponentInDetailGetsTheOutlineOfItsBox) {
    set(part, {{"Modelling Level", "Detailed"}, {"Width", "8 mm"}, {"Depth", "4 mm"}});
    EXPECT_EQ(saveAndRun().status, 0);
    EXPECT_THAT(folder.read("out.emp"), HasSubstr("0 -4 2 0\n0 -4 -2 0\n0 4 -2 0\n0 4 2 0\n"));
}

// The via is in the middle of a part from (20, 10) to (30, 14); turned about itself, it stays there.
TEST_F(ToolExport, ViaInsideAComponentIsWhereItsComponentPutsIt) {
    set(part, {{"Width", "10 mm"},
               {"Depth", "4 mm"},
               {"X Location", "20 mm"},
               {"Z Location", "10 mm"},
               {"Angle", "90"}});
    add(part, "Via", "Vias", {{"X Location", "5 mm"}, {"Z Location", "2 mm"}, {"Plating Thickness", "0 mm"}});
    EXPECT_EQ(saveAndRun().err, "");
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("0.3 25 -12 \"PTH\" \"U1\" \"VIA\" UNOWNED"));
}

// Each kind in one line, with its number.
class ToolExportLoss : public ToolExport {
protected:
    void expectWarning(const std::string &text) {
        const ToolResult result = saveAndRun();
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_THAT(result.err, HasSubstr(": " + text + "\n"));
        EXPECT_THAT(result.err, HasSubstr("model.json"));
    }
};

TEST_F(ToolExportLoss, Layers) {
    Entity *const layer = add(pcb, "Conductor Layer", "Conductor Layers");
    add(pcb, "Conductor Layer", "Conductor Layers");
    add(pcb, "Dielectric Layer", "Dielectric Layers");
    add(add(layer, "Net", "Nets"), "Trace", "Traces");
    add(layer, "PCB Conductor", "Conductors");
    save();
    const std::string warnings = run().err;
    for (const char *text : {"2 conductor layers are left out", "1 dielectric layer is left out",
                             "1 net is left out", "1 trace is left out", "1 piece of copper is left out"})
        EXPECT_THAT(warnings, HasSubstr(text));
}

TEST_F(ToolExportLoss, WhatComponentsConsistOf) {
    set(part, {{"Modelling Level", "Detailed"}});
    Entity *const group = add(part, "Subcomponent Group", "SubcomponentGroups");
    add(group, "Wirebond", "Wirebonds");
    Entity *const substrate = add(group, "Substrate", "Obstructions", {{"Reference Designator", "SUB"}});
    add(substrate, "Bump", "Bumps");
    add(part, "Heatsink", "HeatsinkLink");
    save();
    const std::string warnings = run({"--board", "CTRL"}).err;
    for (const char *text : {"1 solid inside a component is left out", "1 wirebond is left out",
                             "1 heatsink is left out", "1 board inside this one is left out"})
        EXPECT_THAT(warnings, HasSubstr(text));
    EXPECT_THAT(warnings, Not(HasSubstr("bump")));
    EXPECT_THAT(run({"--board", "SUB"}).err, HasSubstr("1 bump is left out"));
}

TEST_F(ToolExportLoss, DetailWithoutShape) {
    set(part, {{"Modelling Level", "Detailed"}, {"Width", "0 mm"}});
    expectWarning("1 component has no shape and gets no outline");
}

TEST_F(ToolExportLoss, FilteredMarks) {
    set(part, {{"Filtered", "Yes"}});
    expectWarning("1 component loses its mark as filtered");
}

TEST_F(ToolExportLoss, Materials) {
    Entity *const material = add(model.root(), "Material", "Materials");
    ASSERT_TRUE(EntityEditor::addEntity(part, MaterialLink_t, material));
    ASSERT_TRUE(EntityEditor::addEntity(pcb, Conductor_Material_t, material));
    expectWarning("1 material is left out, but for the conductivity of components");
}

TEST_F(ToolExportLoss, ValuesOfComponentsThatShareADefinition) {
    const Values same = {{"Model", "QFP"}, {"Part Number", "P1"}};
    add(pcb, "Component", "Components", same);
    set(add(pcb, "Component", "Components", same), {{"Thermal Design Power", "2 W"}});
    add(pcb, "Resistor", "Resistors", same);
    set(add(pcb, "Component", "Components", same), {{"Thermal Design Power", "2 W"}, {"Height", "7 mm"}});
    expectWarning("2 components take power, thermal values or type from others of the same name and shape");
}

TEST_F(ToolExportLoss, Vias) {
    add(pcb, "Via", "Vias",
        {{"Filled", "Yes"}, {"Height From", "Layers"}, {"Plating Thickness", "20 micron"}});
    add(part, "Via", "Vias", {{"Modelling Type", "Multiple Vias"}, {"Plated", "No"}});
    save();
    const std::string warnings = run().err;
    for (const char *text :
         {"1 via loses its filling", "1 via that ends inside the board goes through it now",
          "1 via loses its plating thickness", "1 group of vias in a component is displaced"})
        EXPECT_THAT(warnings, HasSubstr(text));
}

// The importer takes it again where the file says nothing.
TEST_F(ToolExportLoss, NoneOfAPlatingOfTheUsualThickness) {
    add(pcb, "Via", "Vias", {{"Plating Thickness", "35 micron"}});
    save();
    EXPECT_THAT(run().err, testing::Not(HasSubstr("plating")));
}

TEST_F(ToolExportLoss, RoutingKeepouts) {
    add(pcb, "Board Keepout", "Keepouts",
        {{"Keepout Type", "Routing"}, {"Shape", "Cylinder"}, {"Diameter", "2 mm"}});
    expectWarning("1 routing keepout is left out");
}

// Numbers of a picture's text, and the text around them.
std::pair<std::vector<double>, std::string> splitPicture(const std::string &svg) {
    std::vector<double> numbers;
    std::string rest;
    for (const char *at = svg.c_str(); *at != '\0';) {
        const bool isNumber = std::isdigit(static_cast<unsigned char>(*at)) || *at == '-' || *at == '.';
        char *end = nullptr;
        const double number = isNumber ? std::strtod(at, &end) : 0.0;
        if (isNumber && end != at) {
            numbers.push_back(number);
            rest += '#';
            at = end;
        } else {
            rest += *at++;
        }
    }
    return {numbers, rest};
}

TEST_F(ToolExport, RoundTripOfAnExampleGivesTheSamePicture) {
    const std::string board = std::string(EDA_EXAMPLES) + "/controller/controller.emn";
    ASSERT_EQ(runTool({"import", board, "-o", folder.path("model.json")}).status, 0);
    ASSERT_EQ(run().status, 0);
    ASSERT_EQ(runTool({"import", folder.path("out.emn"), "-o", folder.path("again.json")}).status, 0);
    for (const char *side : {"top", "bottom"}) {
        for (const char *name : {"model", "again"})
            ASSERT_EQ(runTool({"render", folder.path(std::string(name) + ".json"), "--side", side, "-o",
                               folder.path(std::string(name) + ".svg")})
                          .status,
                      0);
        const auto [numbers, text] = splitPicture(folder.read("model.svg"));
        const auto [numbersAgain, textAgain] = splitPicture(folder.read("again.svg"));
        EXPECT_EQ(textAgain, text);
        // In pixels: the six digits of the files are a thousandth of one.
        EXPECT_THAT(numbersAgain, testing::Pointwise(testing::DoubleNear(0.01), numbers));
        EXPECT_GT(numbers.size(), 500u);
    }
}

// An imported design goes out, in and out again as the same files but for the dates.
TEST_F(ToolExport, ExportOfAnImportSettles) {
    const std::string board = writeSmallDesign(folder);
    ASSERT_EQ(runTool({"import", board, "-o", folder.path("model.json")}).status, 0);
    ASSERT_EQ(run({}, "one.emn").status, 0);
    ASSERT_EQ(runTool({"import", folder.path("one.emn"), "-o", folder.path("model.json")}).status, 0);
    ASSERT_EQ(run({}, "two.emn").status, 0);
    ASSERT_EQ(runTool({"import", folder.path("two.emn"), "-o", folder.path("model.json")}).status, 0);
    ASSERT_EQ(run({}, "three.emn").status, 0);
    const auto withoutHeader = [this](const std::string &name) {
        const std::string text = folder.read(name);
        return text.substr(text.find(".END_HEADER"));
    };
    EXPECT_EQ(withoutHeader("two.emn"), withoutHeader("three.emn"));
    EXPECT_EQ(withoutHeader("two.emp"), withoutHeader("three.emp"));
}

} // namespace
