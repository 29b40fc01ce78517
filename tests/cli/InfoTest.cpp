// eda info: reading designs and models and telling what is in them.
#include "SmallDesign.h"
#include "support/RunTool.h"

#include <gmock/gmock.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::HasSubstr;

// A read that fails answers 1, names the file and gives the reason.
void expectFailure(const std::string &file, const std::string &message) {
    const ToolResult result = runTool({"info", file});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr(message));
    EXPECT_THAT(result.err, HasSubstr(std::filesystem::u8path(file).filename().u8string()));
}

std::vector<std::string> memberNames(const rapidjson::Value &object) {
    std::vector<std::string> names;
    for (auto member = object.MemberBegin(); member != object.MemberEnd(); ++member) {
        names.emplace_back(member->name.GetString());
    }
    return names;
}

rapidjson::Document infoJson(const std::vector<std::string> &files) {
    std::vector<std::string> arguments{"info", "--json"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    const ToolResult result = runTool(arguments);
    EXPECT_EQ(result.status, 0) << result;
    rapidjson::Document document;
    document.Parse(result.out.c_str());
    EXPECT_FALSE(document.HasParseError()) << result;
    return document;
}

TEST(ToolInfo, ShowsATableForPeople) {
    const TempFolder folder;
    const ToolResult result = runTool({"info", writeSmallDesign(folder)});
    EXPECT_EQ(result.status, 0) << result;
    for (const char *text : {"IDF", "small", "MM", "1.6", "small.emp"})
        EXPECT_THAT(result.out, HasSubstr(text));
    EXPECT_EQ(result.err, "");
}

TEST(ToolInfo, JsonHasItsMembersInOrder) {
    const TempFolder folder;
    const rapidjson::Document json = infoJson({writeSmallDesign(folder)});
    EXPECT_THAT(memberNames(json),
                ElementsAre("format", "name", "units", "thickness", "outline", "bound", "components",
                            "placements", "keepouts", "vias", "viaInstances", "bumps", "bumpInstances",
                            "wirebonds", "routeOutlines", "placementOutlines", "layers", "messages"));
    EXPECT_THAT(memberNames(json["outline"]), ElementsAre("points", "internal", "bound"));
}

TEST(ToolInfo, JsonTellsWhatTheDesignHolds) {
    const TempFolder folder;
    const rapidjson::Document json = infoJson({writeSmallDesign(folder)});
    EXPECT_STREQ(json["format"].GetString(), "IDF");
    EXPECT_STREQ(json["name"].GetString(), "small");
    EXPECT_STREQ(json["units"].GetString(), "MM");
    EXPECT_EQ(json["thickness"].GetDouble(), 1.6);
    EXPECT_EQ(json["outline"]["points"].GetInt(), 5);
    EXPECT_EQ(json["outline"]["internal"].GetInt(), 1);
    EXPECT_EQ(json["outline"]["bound"][2].GetDouble(), 40.0);
    EXPECT_EQ(json["bound"][3].GetDouble(), 20.0);
    EXPECT_EQ(json["components"].GetInt(), 2);
    EXPECT_EQ(json["placements"].GetInt(), 3);
    EXPECT_EQ(json["keepouts"].GetInt(), 2);
    EXPECT_EQ(json["vias"].GetInt(), 2);
    EXPECT_EQ(json["layers"].Size(), 0u);
    EXPECT_STREQ(json["messages"].GetString(), "");
}

TEST(ToolInfo, InstancesOfAViaAreCountedWithoutTheirDefinition) {
    const TempFolder folder;
    std::string board = smallBoard();
    const std::string row = "0.8 18 15 PTH BOARD VIA ECAD\n";
    board.insert(board.find(row), "0.8 1 1 PTH BOARD VIA ECAD\n0.8 2 1 PTH BOARD VIA ECAD\n");
    folder.write("small.emp", smallLibrary());
    const rapidjson::Document json = infoJson({folder.write("small.emn", board)});
    EXPECT_EQ(json["vias"].GetInt(), 2);
    EXPECT_EQ(json["viaInstances"].GetInt(), 2);
}

TEST(ToolInfo, FindsTheLibraryWithoutRegardToCase) {
    const TempFolder folder;
    folder.write("Small.EMP", smallLibrary());
    const std::string board = folder.write("Small.Emn", smallBoard());
    EXPECT_EQ(infoJson({board})["components"].GetInt(), 2);
}

TEST(ToolInfo, FindsTheLibraryOfEveryExtension) {
    for (const auto &[board, library] : std::vector<std::pair<std::string, std::string>>{
             {"a.emn", "a.emp"}, {"a.brd", "a.lib"}, {"a.bdf", "a.ldf"}, {"a.idf", "a.lib"}}) {
        const TempFolder folder;
        folder.write(library, smallLibrary());
        EXPECT_EQ(infoJson({folder.write(board, smallBoard())})["components"].GetInt(), 2) << board;
    }
}

TEST(ToolInfo, TakesBothFilesInEitherOrder) {
    const TempFolder folder;
    const std::string library = folder.write("parts.txt", smallLibrary());
    const std::string board = folder.write("board.txt", smallBoard());
    EXPECT_EQ(infoJson({board, library})["components"].GetInt(), 2);
    EXPECT_EQ(infoJson({library, board})["placements"].GetInt(), 3);
}

TEST(ToolInfo, MissingLibraryIsOneWarningThatNamesTheFile) {
    const TempFolder folder;
    const ToolResult result = runTool({"info", folder.write("small.emn", smallBoard())});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("warning"));
    EXPECT_THAT(result.err, HasSubstr("small.emp"));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
    EXPECT_THAT(infoJson({folder.path("small.emn")})["messages"].GetString(), HasSubstr("small.emp"));
}

TEST(ToolInfo, LibraryAloneIsRead) {
    const TempFolder folder;
    EXPECT_EQ(infoJson({folder.write("only.emp", smallLibrary())})["components"].GetInt(), 2);
}

TEST(ToolInfo, TwoBoardFilesAreNoDesign) {
    const TempFolder folder;
    const ToolResult result =
        runTool({"info", folder.write("a.emn", smallBoard()), folder.write("b.emn", smallBoard())});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("two board files"));
}

TEST(ToolInfo, MissingFile) { expectFailure("/nonexistent/board.emn", "there is no such file"); }

TEST(ToolInfo, FolderAsFile) {
    const TempFolder folder;
    std::filesystem::create_directory(std::filesystem::u8path(folder.path("dir.emn")));
    expectFailure(folder.path("dir.emn"), "is a folder");
}

TEST(ToolInfo, EmptyFile) {
    const TempFolder folder;
    expectFailure(folder.write("empty.emn", ""), "is empty");
}

TEST(ToolInfo, FileWithoutHeader) {
    const TempFolder folder;
    expectFailure(folder.write("board.emn", "nothing\n"), "Missing IDF file header!");
}

TEST(ToolInfo, FileOfCommentsAlone) {
    const TempFolder folder;
    expectFailure(folder.write("board.emn", "# nothing\n\n"), "holds no records");
}

TEST(ToolInfo, RecordOfTheWrongSizeIsTold) {
    const TempFolder folder;
    std::string board = smallBoard();
    board.replace(board.find("TOP 1.0"), 7, "TOP");
    expectFailure(folder.write("board.emn", board), "has incorrect number of entries: <TOP>");
}

TEST(ToolInfo, UnknownFormat) {
    const TempFolder folder;
    expectFailure(folder.write("board.xyz", "hello"), "no format that eda reads");
}

TEST(ToolInfo, Idf4IsRefusedByName) {
    const TempFolder folder;
    expectFailure(folder.write("new.emn", "IDF_Header (\n  Version (\"4.0\")\n)\n"), "IDF 4.0");
}

TEST(ToolInfo, NamesWithControlCharactersAreShownAsText) {
    const TempFolder folder;
    std::string board = smallBoard();
    board.replace(board.find("small MM"), 8, "\"\x1b[2Jsma\x07ll\" MM");
    folder.write("small.emp", smallLibrary());
    const ToolResult result = runTool({"info", folder.write("small.emn", board)});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("\\u{1B}[2Jsma\\u{07}ll"));
    EXPECT_EQ(result.out.find('\x1b'), std::string::npos);
}

TEST(ToolInfo, NumbersThatOverflowStayOutOfJson) {
    const TempFolder folder;
    std::string board = smallBoard();
    board.replace(board.find("0 40 15 0\n"), 10, "0 1e308 1e308 0\n0 -1e308 -1e308 17\n");
    const rapidjson::Document json = infoJson({folder.write("small.emn", board)});
    for (const auto &limit : json["outline"]["bound"].GetArray())
        EXPECT_TRUE(limit.IsNumber());
}

TEST(ToolInfo, BrokenModelFile) {
    const TempFolder folder;
    expectFailure(folder.write("model.json", "{\"format\": 1"), "model.json");
}

TEST(ToolInfo, FullDiskIsAFailure) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
    const TempFolder folder;
    const std::string command = std::string(EDA_TOOL) + " info '" + writeSmallDesign(folder) +
                                "' > /dev/full 2> '" + folder.path("err") + "'; test $? = 1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_THAT(folder.read("err"), HasSubstr("standard output cannot be written"));
}

} // namespace
