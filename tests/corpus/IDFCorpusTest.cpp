// Real IDF designs against facts that another program counted in their text.
#include "readers/BoardUnits.h"
#include "readers/IDFReader.h"
#include "text/Text.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

namespace {

using namespace EDA;
using rapidjson::Value;

// The folder holds this many files of the format.
constexpr int boardFiles = 14;
constexpr int libraryFiles = 11;
constexpr int refusedFiles = 2;

const std::string corpus = EDA_CORPUS;

int intOf(const Value &object, const char *key) { return object.HasMember(key) ? object[key].GetInt() : 0; }

std::string textOf(const Value &object, const char *key) {
    return object.HasMember(key) && object[key].IsString() ? object[key].GetString() : std::string();
}

// A member of a member, or null.
const Value *find(const Value &facts, const char *first, const char *second = nullptr) {
    if (!facts.HasMember(first)) return nullptr;
    const Value &inner = facts[first];
    if (second == nullptr) return &inner;
    return inner.HasMember(second) ? &inner[second] : nullptr;
}

std::map<std::string, int> countsOf(const Value *object) {
    std::map<std::string, int> counts;
    if (object == nullptr) return counts;
    for (auto member = object->MemberBegin(); member != object->MemberEnd(); ++member)
        if (member->value.GetInt() > 0) counts[member->name.GetString()] = member->value.GetInt();
    return counts;
}

class IDFCorpus : public testing::Test {
protected:
    void SetUp() override {
        std::ifstream stream(std::filesystem::u8path(corpus + "/facts.json"), std::ios::binary);
        if (!stream) GTEST_SKIP() << "no folder of real designs here";
        const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        facts_.Parse(text.c_str(), text.size());
        ASSERT_FALSE(facts_.HasParseError());
    }

    // Calls `use(file, facts)` for each IDF file of this type, without regard to case, and gives their
    // number.
    template <typename Use> int eachFile(const std::set<std::string> &types, Use use) const {
        int count = 0;
        for (auto member = facts_.MemberBegin(); member != facts_.MemberEnd(); ++member) {
            const Value &facts = member->value;
            if (textOf(facts, "kind") != "idf" || types.count(upperCase(textOf(facts, "file_type"))) == 0)
                continue;
            SCOPED_TRACE(member->name.GetString());
            use(corpus + "/" + member->name.GetString(), facts);
            ++count;
        }
        return count;
    }

    rapidjson::Document facts_;
};

const std::set<std::string> boardTypes = {"BOARD_FILE", "PANEL_FILE"};

void readWell(IDFReader &reader, const std::string &file) {
    EXPECT_EQ(IDFReader::describeUnsupported(file), "");
    EXPECT_TRUE(reader.readFile(file));
    EXPECT_EQ(reader.getError(), "");
}

TEST_F(IDFCorpus, HeadersGiveTypeVersionNameUnitsAndThickness) {
    const int count = eachFile(boardTypes, [](const std::string &file, const Value &facts) {
        IDFReader reader;
        readWell(reader, file);
        std::string type;
        int version = 0;
        reader.getLastFileDetails(type, version);
        EXPECT_TRUE(equalsIgnoreCase(type, textOf(facts, "file_type")));
        EXPECT_EQ(version, parseInt(textOf(facts, "version"), -1, -1));
        // A panel is no board: its name, units and outline stand in records of its own.
        const bool isBoard = equalsIgnoreCase(type, "BOARD_FILE");
        EXPECT_EQ(reader.getBoard().getName(), isBoard ? textOf(facts, "name") : "");
        EXPECT_EQ(reader.getBoard().getUnits(), isBoard ? textOf(facts, "units") : "");
        EXPECT_EQ(reader.getBoard().getThickness(), isBoard ? facts["thickness"].GetDouble() : 0.0);
        EXPECT_EQ(describeUnknownUnits(reader.getBoard()).empty(), isBoard);
    });
    EXPECT_EQ(count, boardFiles);
}

TEST_F(IDFCorpus, PlacementsKeepSideAndStatus) {
    int placed = 0;
    const int count = eachFile(boardTypes, [&placed](const std::string &file, const Value &facts) {
        IDFReader reader;
        readWell(reader, file);
        const EDABoard &board = reader.getBoard();
        EXPECT_EQ(board.numComponentPlacements(),
                  static_cast<std::size_t>(intOf(facts["placements"], "records")));
        std::map<std::string, int> sides, states;
        std::set<std::string> packages;
        for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement) {
            ++sides[placement->getBoardSide()];
            ++states[placement->getStatus()];
            packages.insert(placement->getName());
        }
        EXPECT_EQ(sides, countsOf(find(facts, "placements", "side")));
        EXPECT_EQ(states, countsOf(find(facts, "placements", "status")));
        placed += static_cast<int>(board.numComponentPlacements());
    });
    EXPECT_EQ(count, boardFiles);
    EXPECT_GT(placed, 2000);
}

TEST_F(IDFCorpus, DrilledHolesAreDefinitionsAndInstances) {
    int holes = 0;
    eachFile(boardTypes, [&holes](const std::string &file, const Value &facts) {
        IDFReader reader;
        readWell(reader, file);
        const EDABoard &board = reader.getBoard();
        const int rows = facts.HasMember("drilled_holes") ? intOf(facts["drilled_holes"], "rows") : 0;
        EXPECT_EQ(board.numVias(1), static_cast<std::size_t>(rows));
        std::map<std::string, int> kinds;
        int ofParts = 0;
        for (auto via = board.beginVias(); via != board.endVias(); ++via) {
            const int number = 1 + static_cast<int>(via->numInstances());
            const bool hasType = facts["version"] != "2.0";
            kinds[via->getPlatingStyle() + (hasType ? " " + via->getHoleType() : "")] += number;
            ofParts += via->getAssociatedPart() == "BOARD" ? 0 : number;
        }
        EXPECT_EQ(kinds, countsOf(find(facts, "drilled_holes", "kinds_plating_type")));
        std::map<std::string, int> owners = countsOf(find(facts, "drilled_holes", "associated_with"));
        EXPECT_EQ(ofParts, rows - owners["BOARD"]);
        holes += rows;
    });
    EXPECT_GT(holes, 1900);
}

// Sections whose outlines the reader knows, with the operation that counts them.
TEST_F(IDFCorpus, KeepoutsAndOutlinesAreCounted) {
    int seen = 0;
    eachFile(boardTypes, [&seen](const std::string &file, const Value &facts) {
        IDFReader reader;
        readWell(reader, file);
        const EDABoard &board = reader.getBoard();
        const std::map<std::string, int> sections = countsOf(find(facts, "sections"));
        const auto number = [&sections](const char *name) {
            const auto found = sections.find(name);
            return static_cast<std::size_t>(found == sections.end() ? 0 : found->second);
        };
        EXPECT_EQ(board.numKeepouts(), number("PLACE_KEEPOUT") + number("VIA_KEEPOUT"));
        EXPECT_EQ(board.numRouteOutlines(), number("ROUTE_OUTLINE"));
        EXPECT_EQ(board.numPlacementOutlines(), number("PLACE_OUTLINE"));
        seen +=
            static_cast<int>(board.numKeepouts() + board.numRouteOutlines() + board.numPlacementOutlines());
    });
    EXPECT_GT(seen, 10);
}

void expectOutline(const EDAOutline &outline, const Value &facts) {
    EXPECT_EQ(outline.numInternalOutlines(), intOf(facts, "loops") - 1);
    double bound[4] = {1e300, 1e300, -1e300, -1e300};
    int arcs = 0;
    const auto visit = [&bound, &arcs](const EDAOutline &loop) {
        for (auto point = loop.beginPoints(); point != loop.endPoints(); ++point) {
            bound[0] = std::min(bound[0], point->x);
            bound[1] = std::min(bound[1], point->y);
            bound[2] = std::max(bound[2], point->x);
            bound[3] = std::max(bound[3], point->y);
            arcs += point->isArc() ? 1 : 0;
        }
    };
    visit(outline);
    std::for_each(outline.beginInternalOutlines(), outline.endInternalOutlines(), visit);
    // The clean-up takes out only closing and collinear points, so that neither bound nor arcs change.
    for (rapidjson::SizeType i = 0; i < 4; ++i)
        EXPECT_EQ(bound[i], facts["bbox"][i].GetDouble()) << i;
    EXPECT_EQ(arcs, intOf(facts, "arc_points") + intOf(facts, "full_circles"));
}

TEST_F(IDFCorpus, BoardOutlinesHaveTheirLoopsBoundAndArcs) {
    const int count = eachFile({"BOARD_FILE"}, [](const std::string &file, const Value &facts) {
        IDFReader reader;
        readWell(reader, file);
        expectOutline(reader.getBoard().getOutline(), facts["outline"]);
    });
    EXPECT_EQ(count, boardFiles - 2);
}

TEST_F(IDFCorpus, LibrariesHaveTheirComponents) {
    int components = 0;
    const int count = eachFile({"LIBRARY_FILE"}, [&components](const std::string &file, const Value &facts) {
        IDFReader reader;
        readWell(reader, file);
        const EDABoard &board = reader.getBoard();
        std::map<std::string, int> types, units;
        int zeroHeights = 0, properties = 0;
        for (auto component = board.beginComponents(); component != board.endComponents(); ++component) {
            ++types[component->getType()];
            ++units[component->getUnits()];
            zeroHeights += component->getHeight() == 0.0 ? 1 : 0;
            properties +=
                static_cast<int>(std::distance(component->beginProperties(), component->endProperties()));
            EXPECT_FALSE(component->getOutline().empty());
        }
        const Value none(rapidjson::kObjectType);
        const Value &expected = facts.HasMember("components") ? facts["components"] : none;
        EXPECT_EQ(types["ELECTRICAL"], intOf(expected, "ELECTRICAL"));
        EXPECT_EQ(types["MECHANICAL"], intOf(expected, "MECHANICAL"));
        EXPECT_EQ(units, countsOf(find(facts, "components", "units")));
        EXPECT_EQ(zeroHeights, intOf(expected, "zero_height"));
        EXPECT_EQ(properties, intOf(expected, "prop_rows"));
        EXPECT_EQ(describeUnknownUnits(board), "");
        components += static_cast<int>(board.numComponents());
    });
    EXPECT_EQ(count, libraryFiles);
    EXPECT_GT(components, 400);
}

TEST_F(IDFCorpus, PairsFindTheirLibraryAndMostOfTheirParts) {
    int pairs = 0;
    eachFile({"BOARD_FILE"}, [&pairs](const std::string &file, const Value &facts) {
        IDFReader reader;
        const std::string library = reader.getMatchingLibraryFilename(file);
        if (!std::filesystem::exists(std::filesystem::u8path(library))) return;
        readWell(reader, library);
        readWell(reader, file);
        EXPECT_EQ(describeUnknownUnits(reader.getBoard()), "");
        std::string boardSource, librarySource;
        reader.getBoard().getSourceFilename(boardSource, librarySource);
        EXPECT_EQ(boardSource, file);
        EXPECT_EQ(librarySource, library);
        std::size_t found = 0;
        for (auto placement = reader.getBoard().beginPlacements();
             placement != reader.getBoard().endPlacements(); ++placement)
            found += reader.getBoard().findComponent(*placement) != nullptr ? 1 : 0;
        EXPECT_EQ(found, static_cast<std::size_t>(intOf(facts["placements"], "records")));
        ++pairs;
    });
    EXPECT_EQ(pairs, 10);
}

TEST_F(IDFCorpus, Idf4IsRefusedByName) {
    const int count = eachFile({"IDF4"}, [](const std::string &file, const Value &) {
        EXPECT_EQ(IDFReader::describeUnsupported(file),
                  file + ": IDF 4.0 can't be read, only IDF 2.0 and 3.0");
        IDFReader reader;
        EXPECT_FALSE(reader.readFile(file));
        EXPECT_EQ(reader.getError(), "Missing IDF file header!");
    });
    EXPECT_EQ(count, refusedFiles);
}

} // namespace
