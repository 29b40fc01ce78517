// Libraries of an import: components that replace those of the design, and materials.
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/ModelFile.h"
#include "JsonText.h"
#include "PartDesign.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class ToolLibrary : public testing::Test {
protected:
    void SetUp() override {
        makeFolder("library");
        PartDesign design;
        design.define("CHIP", "POWER_OPR 500").define("OTHER", "POWER_OPR 250");
        board_ = design.place("CHIP", "U1").place("OTHER", "U2").write(folder);
    }

    void makeFolder(const std::string &name) const {
        std::filesystem::create_directory(std::filesystem::u8path(folder.path(name)));
    }

    // The rows of the index, as JSON objects.
    void writeIndex(const std::string &rows) const {
        folder.write("library/index.json",
                     R"({"format": "eda-library", "version": 1, "rows": [)" + rows + "]}");
    }

    // An item file with one component of this name.
    void writeItem(const std::string &file, const std::string &name) const {
        using namespace EntityModel;
        Model model(Velkin_Solver_Project_t);
        Entity *const chassis = EntityEditor::createEntity(Chassis_t, model.root(), AttributePath(Chassis_t));
        Entity *const item = EntityEditor::createEntity(Component_t, chassis, AttributePath(Components_t));
        EntityEditor::setValue(item, AttributePath(Name_t), name);
        EntityEditor::setValue(item, AttributePath(Model_t), "from the library");
        EntityEditor::setValue(item, AttributePath(Width_t), "7 mm");
        std::string error;
        ASSERT_TRUE(ModelFile::save(model, folder.path("library/" + file), error)) << error;
    }

    ToolResult import(const std::vector<std::string> &more) const {
        std::vector<std::string> arguments{"import", board_, "-o", folder.path("m.json"), "--json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTool(arguments);
    }
    ToolResult importWithLibrary() const { return import({"--library", folder.path("library")}); }

    // A library that cannot be used ends the import before a model is written.
    void expectNoLibrary(const std::string &name, const std::string &message) const {
        const ToolResult result = import({"--library", folder.path(name)});
        EXPECT_EQ(result.status, 1) << result;
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, HasSubstr(name));
        EXPECT_THAT(result.err, HasSubstr(message));
        EXPECT_EQ(folder.read("m.json"), "<missing>");
    }

    TempFolder folder;

private:
    std::string board_;
};

TEST_F(ToolLibrary, MappedComponentsComeFromIt) {
    writeItem("chip.json", "my chip");
    writeIndex(R"({"key": "CHIP", "file": "chip.json", "mapping": "mapped"})");
    const ToolResult result = importWithLibrary();
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    const rapidjson::Document report = parseJson(result.out);
    const rapidjson::Value &parts = report["parts"];
    EXPECT_EQ(parts["fromLibrary"].GetInt(), 1);
    EXPECT_EQ(parts["approximated"].GetInt(), 0);
    EXPECT_EQ(importedAs(parts, "Component"), 2);
    EXPECT_THAT(folder.read("m.json"), HasSubstr("from the library"));
    EXPECT_DOUBLE_EQ(parts["powerInWatts"]["inModel"].GetDouble(), 0.75);
}

TEST_F(ToolLibrary, ApproximatedOnesAreCounted) {
    writeItem("chip.json", "my chip");
    writeIndex(R"({"key": "CHIP PN", "file": "chip.json", "mapping": "approximated"})");
    const ToolResult result = importWithLibrary();
    EXPECT_EQ(result.status, 0) << result;
    const rapidjson::Document report = parseJson(result.out);
    EXPECT_EQ(report["parts"]["fromLibrary"].GetInt(), 1);
    EXPECT_EQ(report["parts"]["approximated"].GetInt(), 1);
    EXPECT_THAT(folder.read("m.json"), HasSubstr("from the library - approximated"));
}

TEST_F(ToolLibrary, WhatItLeavesOutIsNamedWithItsPower) {
    for (const char *key : {"CHIP", "CHIP PN"}) {
        writeIndex(R"({"key": ")" + std::string(key) + R"(", "mapping": "do not import"})");
        const ToolResult result = importWithLibrary();
        EXPECT_EQ(result.status, 0) << result;
        const rapidjson::Document report = parseJson(result.out);
        const rapidjson::Value &parts = report["parts"];
        EXPECT_THAT(textsOf(parts["leftOutByLibrary"]["first"]), ElementsAre("U1"));
        EXPECT_EQ(importedAs(parts, "Component"), 1);
        EXPECT_DOUBLE_EQ(parts["powerInWatts"]["leftOut"].GetDouble(), 0.5);
    }
}

TEST_F(ToolLibrary, SummaryForPeopleTellsWhatItDid) {
    writeItem("chip.json", "my chip");
    writeIndex(R"({"key": "CHIP", "file": "chip.json", "mapping": "approximated"},
                  {"key": "OTHER", "mapping": "do not import"})");
    const ToolResult result = runTool({"import", folder.path("parts.emn"), "-o", folder.path("m.json"),
                                       "--library", folder.path("library")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, testing::ContainsRegex("From the library +1, of these 1 approximated\n"));
    EXPECT_THAT(result.out, testing::ContainsRegex("Left out by the library +1: 'U2'\n"));
}

TEST_F(ToolLibrary, BrokenItemIsAWarningAndThePartIsBuilt) {
    folder.write("library/chip.json", "{\"format\": \"eda-model\", ");
    writeIndex(R"({"key": "CHIP", "file": "chip.json", "mapping": "mapped"})");
    const ToolResult result = importWithLibrary();
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("chip.json"));
    const rapidjson::Document report = parseJson(result.out);
    EXPECT_THAT(report["importMessages"].GetString(), HasSubstr("chip.json"));
    EXPECT_EQ(report["parts"]["fromLibrary"].GetInt(), 0);
    EXPECT_EQ(importedAs(report["parts"], "Component"), 2);
}

TEST_F(ToolLibrary, BrokenRowIsAWarningAndTheOthersWork) {
    writeItem("chip.json", "my chip");
    writeIndex("{\"key\": \"OTHER\", \"mapping\": \"perhaps\"},\n"
               "{\"key\": \"OTHER\", \"file\": \"../../secret.json\", \"mapping\": \"mapped\"},\n"
               "{\"key\": \"CHIP\", \"file\": \"chip.json\", \"mapping\": \"mapped\"}");
    const ToolResult result = importWithLibrary();
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("unknown mapping \"perhaps\""));
    EXPECT_THAT(result.err, HasSubstr("index.json:2"));
    EXPECT_EQ(parseJson(result.out)["parts"]["fromLibrary"].GetInt(), 1);
}

TEST_F(ToolLibrary, WhatIsNoLibraryEndsTheImport) {
    expectNoLibrary("missing", "is no library");
    expectNoLibrary("library", "is no library");
    folder.write("library/index.json", std::string("\0\xff{", 3));
    expectNoLibrary("library", "index.json");
}

TEST_F(ToolLibrary, ItsMaterialsComeBeforeThoseOfTheTool) {
    folder.write("library/materials.json", R"json({"format":"eda-model","version":1,"root":
{"type":"Velkin Solver Project","id":1,"children":{"Materials":[{"type":"Material","id":2,
"values":{"Name":"Typical Component","Conductivity":{"Value":[42.5,"W/(m K)"]}}}]}}})json");
    const ToolResult result = importWithLibrary();
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(folder.read("m.json"), HasSubstr("42.5"));
    import({});
    EXPECT_THAT(folder.read("m.json"), Not(HasSubstr("42.5")));
}

TEST_F(ToolLibrary, MissingMaterialsOfTheToolAreAWarningUnlessNoneAreWanted) {
    folder.write("type-map.csv", "U,Component\n");
    std::vector<std::string> arguments{"import", folder.path("parts.emn"), "-o", folder.path("m.json")};
    const ToolResult result = runTool(arguments, "/nonexistent", "", folder.path());
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("warning: the materials that come with eda cannot be used: "));
    arguments.emplace_back("--no-library");
    EXPECT_EQ(runTool(arguments, "/nonexistent", "", folder.path()).err, "");
}

TEST_F(ToolLibrary, IsNeverReplacedByTheModel) {
    writeIndex("");
    const std::string before = folder.read("library/index.json");
    const ToolResult result =
        runTool({"import", folder.path("parts.emn"), "-o", folder.path("library/index.json"), "--library",
                 folder.path("library")});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_EQ(folder.read("library/index.json"), before);
}

} // namespace
