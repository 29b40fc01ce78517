// The map from designators to types: the one that comes with the tool, and the user's.
#include "host/FileSystem/CSVParser.h"
#include "import/EDAImporter.h"
#include "JsonText.h"
#include "PartDesign.h"

#include <gmock/gmock.h>

#include <random>

namespace {

using namespace TestSupport;
using testing::HasSubstr;
using testing::Not;

class ToolTypeMap : public testing::Test {
protected:
    // One part of a kind for each designator.
    void write(const std::vector<std::string> &designators) {
        PartDesign design;
        for (const std::string &designator : designators) {
            const std::string package = "P" + std::to_string(++numParts_);
            design.define(package).place(package, designator, "PLACED", "TOP", 10.0 * numParts_);
        }
        board_ = design.write(folder);
    }

    ToolResult import(const std::vector<std::string> &more, bool asJson = true) const {
        std::vector<std::string> arguments{"import", board_, "-o", folder.path("m.json")};
        if (asJson) arguments.emplace_back("--json");
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTool(arguments);
    }

    // How many of a type an import makes.
    int imported(const std::string &type, const std::vector<std::string> &more = {}) const {
        const ToolResult result = import(more);
        EXPECT_EQ(result.status, 0) << result;
        const rapidjson::Document report = parseJson(result.out);
        return importedAs(report["parts"], type.c_str());
    }

    std::string map(const std::string &bytes) const { return folder.write("map.csv", bytes); }

    // The warnings of an import with this map, which must succeed.
    std::string warnings(const std::string &bytes) const {
        const ToolResult result = import({"--type-map", map(bytes)});
        EXPECT_EQ(result.status, 0) << result;
        return result.err;
    }

    TempFolder folder;

private:
    std::string board_;
    int numParts_ = 0;
};

TEST_F(ToolTypeMap, ShippedMapTellsTypesByDesignators) {
    write({"R1", "RN2", "C3", "CP4", "L5", "FB6", "J7", "P8", "XU9", "U10", "Q11", "D12", "Y13", "HS14"});
    for (const auto &[type, count] : {std::pair<const char *, int>{"Resistor", 2},
                                      {"Capacitor", 2},
                                      {"Inductor", 2},
                                      {"Cable Socket", 2},
                                      {"Chip Socket", 1},
                                      {"Component", 5}}) {
        EXPECT_EQ(imported(type), count) << type;
    }
}

TEST_F(ToolTypeMap, ShippedMapNamesOnlyTypesThatExistAndEachPrefixOnce) {
    FileSystem::CSVParser parser(',', false, false, '\n', true);
    ASSERT_TRUE(parser.parseFile(EDA_TEST_DATA "/../../share/eda/type-map.csv", false, true, false));
    std::set<std::string> types;
    EDA::EDAImporter::getComponentTypes(types);
    std::set<std::string> prefixes;
    for (auto row = parser.beginRows(); row != parser.endRows(); ++row) {
        ASSERT_EQ(row->size(), 2u);
        EXPECT_EQ(types.count((*row)[1]), 1u) << (*row)[1];
        EXPECT_TRUE(prefixes.insert((*row)[0]).second) << (*row)[0];
    }
    EXPECT_GT(prefixes.size(), 40u);
}

TEST_F(ToolTypeMap, MissingShippedMapIsAWarning) {
    write({"R1"});
    const ToolResult result = runTool({"import", folder.path("parts.emn"), "-o", folder.path("m.json")},
                                      "/nonexistent", "", folder.path("nothing"));
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("the type map that comes with eda is missing"));
}

TEST_F(ToolTypeMap, UsersMapTakesThePlaceOfTheShippedOne) {
    write({"R1", "Z2"});
    const std::string file = map("Z,Inductor\n");
    EXPECT_EQ(imported("Inductor", {"--type-map", file}), 1);
    EXPECT_EQ(imported("Resistor", {"--type-map", file}), 0);
    EXPECT_EQ(import({"--type-map", file}).err, "");
}

TEST_F(ToolTypeMap, IsNeverWritten) {
    write({"Z2"});
    const std::string bytes = "Z,Inductor\r\n\r\n  \r\nA,B";
    import({"--type-map", map(bytes)});
    EXPECT_EQ(folder.read("map.csv"), bytes);
}

TEST_F(ToolTypeMap, FileThatCannotBeReadEndsTheImport) {
    write({"R1"});
    for (const auto &[file, reason] :
         {std::pair<std::string, const char *>{folder.path("none.csv"), "none.csv': there is no such file"},
          {folder.path(), "is a folder"},
          {folder.write("empty.csv", ""), "empty.csv': is empty"}}) {
        const ToolResult result = import({"--type-map", file});
        EXPECT_EQ(result.status, 1) << result;
        EXPECT_THAT(result.err, HasSubstr(reason));
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(folder.read("m.json"), "<missing>");
    }
}

TEST_F(ToolTypeMap, UnknownTypeIsAWarningWithFileLineAndTypes) {
    write({"R1"});
    const std::string text = warnings("R,Resistor\n\nW,Widget\n");
    EXPECT_THAT(text,
                HasSubstr("map.csv', line 3: there is no type 'Widget', so its parts become Component; the "
                          "types are: Cable Socket, Capacitor, Chip Socket, Component, "));
    EXPECT_THAT(text, HasSubstr("Resistor\n"));
}

TEST_F(ToolTypeMap, BlanksBelongToTheType) {
    write({"R1"});
    EXPECT_THAT(warnings("R, Resistor\n"), HasSubstr("line 1: there is no type ' Resistor'"));
}

TEST_F(ToolTypeMap, UnknownTypeMakesAComponent) {
    write({"R1"});
    EXPECT_EQ(imported("Component", {"--type-map", map("R,Widget\n")}), 1);
}

TEST_F(ToolTypeMap, RowWithoutACommaIsSkippedWithAWarning) {
    write({"R1", "C2"});
    EXPECT_THAT(warnings("R\nC,Capacitor\n"), HasSubstr("map.csv', line 1: has no comma, so it is left out"));
    EXPECT_EQ(imported("Capacitor", {"--type-map", folder.path("map.csv")}), 1);
    EXPECT_EQ(imported("Resistor", {"--type-map", folder.path("map.csv")}), 0);
}

TEST_F(ToolTypeMap, PrefixThatStandsTwiceIsAWarningAndTheLastCounts) {
    write({"R1"});
    EXPECT_THAT(warnings("R,Resistor\nR,Inductor\n"),
                HasSubstr("line 2: the prefix 'R' stands in an earlier line"));
    EXPECT_EQ(imported("Inductor", {"--type-map", folder.path("map.csv")}), 1);
}

TEST_F(ToolTypeMap, FileWithoutRowsLeavesTheShippedMap) {
    write({"R1"});
    EXPECT_THAT(warnings("\n\nnothing\n"),
                HasSubstr("map.csv': has no row, so the type map that comes with eda is used"));
    EXPECT_EQ(imported("Resistor", {"--type-map", folder.path("map.csv")}), 1);
}

TEST_F(ToolTypeMap, ManyBadRowsGiveAFewWarningsAndACount) {
    write({"R1"});
    std::string bytes;
    for (int row = 0; row < 1000; ++row)
        bytes += "bad\n";
    const std::string text = warnings(bytes + "R,Resistor\n");
    EXPECT_THAT(text, HasSubstr("... and 990 more warnings about this type map"));
    EXPECT_LT(text.size(), 4000u);
}

TEST_F(ToolTypeMap, AnyBytesAreReadWithoutHarm) {
    write({"R1"});
    std::mt19937 random(7);
    std::string noise(100000, '\0');
    for (char &byte : noise)
        byte = static_cast<char>(random());
    const std::string nuls = std::string("R,Resistor\0\0\n\0,\0\n", 17);
    const std::string wide("\xff\xfeR\0,\0R\0e\0s\0i\0s\0t\0o\0r\0\n\0", 24);
    for (const std::string &bytes : {noise, nuls, wide, std::string(3000000, 'x') + ",y\n",
                                     std::string("\x1b[31m,\x1b[0m\n"), std::string(100000, ',')}) {
        const ToolResult result = import({"--type-map", map(bytes)});
        EXPECT_EQ(result.status, 0) << bytes.substr(0, 20);
        EXPECT_LT(result.err.size(), 40000u);
        EXPECT_EQ(result.err.find('\x1b'), std::string::npos);
    }
    EXPECT_EQ(imported("Resistor", {"--type-map", map(wide)}), 1);
}

TEST_F(ToolTypeMap, FileTooLargeForAnyMapIsRefused) {
    write({"R1"});
    const ToolResult result = import({"--type-map", map(std::string(17u << 20, 'x'))});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("larger than 16 MiB"));
}

TEST_F(ToolTypeMap, IsNeverReplacedByTheModel) {
    write({"R1"});
    const std::string file = map("R,Resistor\n");
    const ToolResult result = runTool({"import", folder.path("parts.emn"), "-o", file, "--type-map", file});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("is read, so --output cannot write over it"));
    EXPECT_EQ(folder.read("map.csv"), "R,Resistor\n");
}

} // namespace
