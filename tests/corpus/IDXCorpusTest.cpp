// Real IDX documents against facts that another program counted in their text, and the format's own schema.
#include "readers/IDXReader.h"
#include "support/Patterns.h"
#include "support/TempFolder.h"
#include "writers/IDXWriter.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>

namespace {

using namespace EDA;
using rapidjson::Value;

const std::string corpus = EDA_CORPUS;

std::size_t sum(const Value &object) {
    std::size_t total = 0;
    for (auto member = object.MemberBegin(); member != object.MemberEnd(); ++member)
        total += member->value.GetUint();
    return total;
}

std::size_t linesOf(const std::string &text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

class IDXCorpus : public testing::Test {
protected:
    void SetUp() override {
        std::ifstream stream(std::filesystem::u8path(corpus + "/facts.json"), std::ios::binary);
        if (!stream) GTEST_SKIP() << "no folder of real designs here";
        const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        facts_.Parse(text.c_str(), text.size());
        ASSERT_FALSE(facts_.HasParseError());
    }
    void eachDocument(const std::function<void(const std::string &path, const Value &facts)> &use) const {
        int count = 0;
        for (auto member = facts_.MemberBegin(); member != facts_.MemberEnd(); ++member) {
            if (!member->value.HasMember("kind") || member->value["kind"] != "idx") continue;
            SCOPED_TRACE(member->name.GetString());
            use(corpus + "/" + member->name.GetString(), member->value);
            ++count;
        }
        EXPECT_EQ(count, 2);
    }
    rapidjson::Document facts_;
};

TEST_F(IDXCorpus, EachDocumentIsKnownAndRead) {
    eachDocument([](const std::string &path, const Value &) {
        EXPECT_TRUE(IDXReader::isDocument(path));
        IDXReader reader;
        EXPECT_TRUE(reader.readFile(path));
    });
}

// Both are of the newer style: their items tell a geometry type and have no shape that could be resolved.
TEST_F(IDXCorpus, EachInstanceIsReportedAndNoneIsPlaced) {
    eachDocument([](const std::string &path, const Value &facts) {
        IDXReader reader;
        ASSERT_TRUE(reader.readFile(path));
        const Value &elements = facts["elements"];
        const std::size_t instances =
            elements.HasMember("ItemInstance") ? elements["ItemInstance"].GetUint() : 0;
        EXPECT_EQ(linesOf(reader.getError()), instances);
        const EDABoard &board = reader.getBoard();
        EXPECT_EQ(board.numComponentPlacements() + board.numKeepouts() + board.numVias(1), 0u);
        EXPECT_EQ(board.numLayers(), 0u);
        EXPECT_EQ(reader.numTypedItems(), sum(facts["geometryType"]));
    });
}

// Whether a shell command ends well, without its output.
bool runs(const std::string &command) { return std::system((command + " >/dev/null 2>&1").c_str()) == 0; }

EDABoard boardOfAllKinds() {
    EDABoard board;
    board.setUnits("mm");
    EDAComponent part("ELECTRICAL");
    EDAComponentPlacement placement;
    EDAKeepout keepout("Route");
    EDAVia via;
    via.setDiameter(1.0);
    for (const auto &[x, y] : {std::pair{0.0, 0.0}, {4.0, 0.0}, {4.0, 2.0}}) {
        board.addPoint(0, x, y, 0.0);
        part.addPoint(0, x, y, 0.0);
        keepout.addPoint(0, x, y, 0.0);
    }
    board.addComponent(part, false);
    board.addComponentPlacement(placement);
    board.addKeepout(keepout);
    board.addVia(via, false);
    return board;
}

TEST(IDXSchema, AWrittenDocumentIsWellFormed) {
    if (!runs("xmllint --version")) GTEST_SKIP() << "no program that checks documents here";
    const TestSupport::TempFolder folder;
    EDABoard board;
    board.setName("a & b <c> \x01");
    EDAVia via;
    via.setName("\"V\"");
    board.addVia(via, false);
    ASSERT_TRUE(IDXWriter().writeFile(folder.path("out.idx"), board));
    EXPECT_TRUE(runs("xmllint --noout '" + folder.path("out.idx") + "'"));
    folder.write("bad.idx", "<a>");
    EXPECT_FALSE(runs("xmllint --noout '" + folder.path("bad.idx") + "'"));
}

// The public schema is of a later version. What the writer's documents differ in from it is known; all else
// of them is as it asks.
TEST(IDXSchema, AWrittenDocumentDiffersFromTheLaterSchemaInKnownPlacesAlone) {
    const std::string schema = corpus + "/idx/schema/computational.xsd";
    if (!std::filesystem::exists(std::filesystem::u8path(schema)) || !runs("xmllint --version"))
        GTEST_SKIP() << "no schema or no program that checks documents here";
    const TestSupport::TempFolder folder;
    ASSERT_TRUE(IDXWriter().writeFile(folder.path("out.idx"), boardOfAllKinds()));
    std::string text = EDA::test::replaced(folder.read("out.idx"), "edmd/2\\.0/", "edmd/4.0/");
    const auto elementsWithErrors = [&] {
        folder.write("later.idx", text);
        const std::string check = "xmllint --nonet --noout --schema '" + schema + "' '" +
                                  folder.path("later.idx") + "' 2>'" + folder.path("errors") + "'";
        EXPECT_NE(std::system(check.c_str()), 0);
        const std::string errors = folder.read("errors");
        const std::vector<std::string> names =
            EDA::test::allMatches(errors, ": element ([A-Za-z0-9]+): Schemas validity error");
        return std::set<std::string>(names.begin(), names.end());
    };
    // The process instruction comes last there, and the check looks no further.
    EXPECT_EQ(elementsWithErrors(), std::set<std::string>{"ProcessInstruction"});
    const auto instructions = EDA::test::allMatches(text, "<foundation:ProcessInstruction[^>]*/>");
    ASSERT_EQ(instructions.size(), 1U);
    const std::string moved = instructions.front();
    text.erase(text.find(moved), moved.size());
    text.insert(text.find("</foundation:EDMDDataSet>"), moved);
    EXPECT_EQ(elementsWithErrors(), (std::set<std::string>{"CreatorSystem", "ExternalSource", "UserProperty",
                                                           "InterStratumFeature", "Transformation"}));
}

} // namespace
