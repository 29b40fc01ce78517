// eda options: listing and storing import options.
#include "JsonText.h"
#include "SmallDesign.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class ToolOptions : public testing::Test {
protected:
    ToolResult run(const std::vector<std::string> &more, const std::string &format = "IDF") const {
        std::vector<std::string> arguments{"options", format};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTool(arguments, folder.path("config"));
    }

    rapidjson::Document list() const {
        const ToolResult result = run({"--json"});
        EXPECT_EQ(result.status, 0) << result;
        return parseJson(result.out);
    }

    std::string valueOf(const std::string &label) const { return member(label, "value"); }
    std::string member(const std::string &label, const char *name) const {
        const rapidjson::Document document = list();
        for (const rapidjson::Value &option : document["options"].GetArray()) {
            if (label == option["label"].GetString()) return option[name].GetString();
        }
        return "<missing>";
    }

    // A change that answers 2 with this message and stores nothing.
    void expectRefused(const std::vector<std::string> &more, const std::string &message) const {
        const std::string before = folder.read("config/preferences.json");
        const ToolResult result = run(more);
        EXPECT_EQ(result.status, 2) << result;
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, HasSubstr(message));
        EXPECT_EQ(folder.read("config/preferences.json"), before);
    }

    int keepoutsOfAnImport() const {
        const std::string board = writeSmallDesign(folder);
        const ToolResult result =
            runTool({"import", board, "-o", folder.path("m.json"), "--json"}, folder.path("config"));
        EXPECT_EQ(result.status, 0) << result;
        const rapidjson::Document report = parseJson(result.out);
        const rapidjson::Value &counts = report["entities"];
        return counts.HasMember("Board Keepout") ? counts["Board Keepout"].GetInt() : 0;
    }

    TempFolder folder;
};

TEST_F(ToolOptions, ListsLabelValueAndWhatEachTakes) {
    const ToolResult result = run({});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, testing::StartsWith("Import options of IDF:\n"));
    EXPECT_THAT(result.out, testing::ContainsRegex("Import Type +PCB +PCB, Component\n"));
    EXPECT_THAT(result.out, testing::ContainsRegex("Import Via Keepouts +Yes +Yes, No\n"));
    EXPECT_THAT(result.out, testing::ContainsRegex("Min Power +0 mW +a number with a unit, such as 2 mW\n"));
    EXPECT_THAT(result.out,
                testing::ContainsRegex("Min Height +0 mm +a number from 0 up with a unit, such as 2 mm\n"));
}

TEST_F(ToolOptions, ListingStoresNothing) {
    run({});
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(folder.path("config"))));
}

TEST_F(ToolOptions, TheFormatMayBeInAnyCase) {
    EXPECT_THAT(run({}, "idf").out, HasSubstr("Import options of IDF:"));
}

TEST_F(ToolOptions, JsonTellsKindsChoicesAndUnits) {
    const rapidjson::Document document = list();
    EXPECT_STREQ(document["format"].GetString(), "IDF");
    EXPECT_THAT(document["file"].GetString(), HasSubstr("preferences.json"));
    const auto &options = document["options"];
    EXPECT_EQ(options.Size(), 28u);
    const rapidjson::Value &type = options[0];
    EXPECT_STREQ(type["label"].GetString(), "Import Type");
    EXPECT_STREQ(type["kind"].GetString(), "choice");
    EXPECT_THAT(textsOf(type["choices"]), ElementsAre("PCB", "Component"));
    EXPECT_FALSE(type.HasMember("units"));
    const rapidjson::Value &height = options[3];
    EXPECT_STREQ(height["label"].GetString(), "Min Height");
    EXPECT_STREQ(height["kind"].GetString(), "length");
    EXPECT_FALSE(height["mayBeNegative"].GetBool());
    EXPECT_THAT(textsOf(height["units"]), testing::Contains("mil"));
    EXPECT_EQ(member("Min Power", "kind"), "power");
    EXPECT_EQ(member("Import Vias", "kind"), "yes-no");
}

TEST_F(ToolOptions, SetIsStoredForTheNextImport) {
    EXPECT_EQ(keepoutsOfAnImport(), 2);
    const ToolResult result = run({"--set", "Import Via Keepouts=No"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, testing::ContainsRegex("Import Via Keepouts +No +Yes, No \\(default: Yes\\)\n"));
    EXPECT_THAT(result.out, HasSubstr("Stored in "));
    EXPECT_EQ(keepoutsOfAnImport(), 1);
}

TEST_F(ToolOptions, SetRepeats) {
    run({"--set", "Import Via Keepouts=No", "--set", "min height=2 mm"});
    EXPECT_EQ(valueOf("Import Via Keepouts"), "No");
    EXPECT_EQ(valueOf("Min Height"), "2 mm");
    EXPECT_EQ(member("Min Height", "default"), "0 mm");
}

TEST_F(ToolOptions, ALaterSetKeepsTheEarlierOnes) {
    run({"--set", "Import Via Keepouts=No"});
    run({"--set", "Min Power=5 mW"});
    EXPECT_EQ(valueOf("Import Via Keepouts"), "No");
    EXPECT_EQ(valueOf("Min Power"), "5 mW");
}

TEST_F(ToolOptions, AllChangesAreStoredOrNone) {
    expectRefused({"--set", "Import Via Keepouts=No", "--set", "Min Height=tall"}, "'Min Height'");
    EXPECT_EQ(valueOf("Import Via Keepouts"), "Yes");
}

TEST_F(ToolOptions, UnknownLabelListsTheLabels) {
    expectRefused({"--set", "Import Keepers=No"},
                  "there is no import option 'Import Keepers'; the options are:");
    expectRefused({"--set", "Import Keepers=No"}, "\n  Import Via Keepouts\n");
    expectRefused({"--reset", "Import Keepers"}, "there is no import option 'Import Keepers'");
}

TEST_F(ToolOptions, WrongValueNamesTheAllowedOnes) {
    expectRefused({"--set", "Import Type=Brick"}, "does not take 'Brick'; it takes: PCB, Component");
    expectRefused({"--set", "Import Vias=perhaps"}, "does not take 'perhaps'; it takes: Yes, No");
    expectRefused({"--set", "Min Height=-1 mm"}, "a number from 0 up with a unit: ");
    expectRefused({"--set", "Min Height=1 parsec"}, "mil");
    expectRefused({"--set", "Min Power=1 mm"}, "W, mW, kW");
    expectRefused({"--set", "Min Height=nan mm"}, "'Min Height' does not take");
}

TEST_F(ToolOptions, SetWithoutEqualsSign) {
    expectRefused({"--set", "Import Vias"}, "--set 'Import Vias' has not the form \"Label=value\"");
}

TEST_F(ToolOptions, ResetGivesTheDefaultBack) {
    run({"--set", "Import Via Keepouts=No", "--set", "Min Height=2 mm"});
    EXPECT_EQ(run({"--reset", "Min Height"}).status, 0);
    EXPECT_EQ(valueOf("Min Height"), "0 mm");
    EXPECT_EQ(valueOf("Import Via Keepouts"), "No");
}

TEST_F(ToolOptions, ResetAllGivesAllDefaultsBackBeforeASet) {
    const std::string fresh = run({}).out;
    run({"--set", "Import Via Keepouts=No", "--set", "Min Height=2 in"});
    EXPECT_NE(run({}).out, fresh);
    run({"--set", "Import Vias=No", "--reset-all"});
    EXPECT_EQ(valueOf("Import Vias"), "No");
    EXPECT_EQ(valueOf("Min Height"), "0 mm");
    run({"--reset-all"});
    EXPECT_EQ(run({}).out, fresh);
}

TEST_F(ToolOptions, WhatTheFormatNeedsIsFixed) {
    EXPECT_THAT(run({}).out,
                testing::ContainsRegex("Board Layer Options +Yes +Yes, No \\(always Yes for IDF\\)\n"));
    expectRefused({"--set", "Board Layer Options=No"},
                  "the import option 'Board Layer Options' is always Yes for IDF");
    EXPECT_EQ(run({"--set", "Board Layer Options=Yes"}).status, 0);
}

class BrokenPreferences : public ToolOptions {
protected:
    void SetUp() override {
        std::filesystem::create_directory(std::filesystem::u8path(folder.path("config")));
        folder.write("config/preferences.json", "{\"broken\": ");
    }
};

TEST_F(BrokenPreferences, AreAWarningOfTheList) {
    const ToolResult result = run({});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err,
                HasSubstr("warning: the stored options cannot be read, so the defaults stand in"));
    EXPECT_THAT(result.err, HasSubstr("preferences.json"));
    EXPECT_THAT(result.out, HasSubstr("Import Via Keepouts"));
}

TEST_F(BrokenPreferences, AreAWarningOfAnImport) {
    const std::string board = writeSmallDesign(folder);
    const ToolResult result =
        runTool({"import", board, "-o", folder.path("m.json"), "--json"}, folder.path("config"));
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("warning: the stored options cannot be read"));
    EXPECT_THAT(parseJson(result.out)["messages"].GetString(),
                HasSubstr("the stored options cannot be read"));
}

TEST_F(BrokenPreferences, AreNotReplacedByASet) {
    const ToolResult result = run({"--set", "Import Vias=No"});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("nothing was stored, since that would replace a file"));
    EXPECT_EQ(folder.read("config/preferences.json"), "{\"broken\": ");
}

TEST_F(ToolOptions, AFolderThatCannotBeMadeIsNamed) {
    folder.write("file", "x");
    const ToolResult result =
        runTool({"options", "IDF", "--set", "Import Vias=No"}, folder.path("file/config"));
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("nothing was stored: "));
    EXPECT_THAT(result.err, HasSubstr("file/config"));
}

} // namespace
