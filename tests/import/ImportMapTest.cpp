// The rows of a dialog that maps components to library items.
#include "import/EDAImporter.h"
#include "support/ScriptedLibrary.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using EntityModel::LibraryInterface;
using testing::ElementsAre;

namespace {

using Records = std::map<std::string, LibraryManager::LibraryItemMapRecord>;

struct Bench {
    void add(const std::string &name, const std::string &partNumber = "") {
        EDA::EDAComponent component("ELECTRICAL");
        component.setName(name);
        component.setPartNumber(partNumber);
        board.addComponent(component, false);
    }
    const LibraryManager::LibraryItemMapRecord &row(const std::string &key) {
        EDA::EDAImporter(&library, "", "").populateImportMap(board, records);
        return records.at(key);
    }

    ScriptedLibrary library;
    EDA::EDABoard board;
    Records records;
};

} // namespace

TEST(ImportMap, TheKeyIsTheNameAndThePartNumberIfThereIsOne) {
    Bench bench;
    bench.add("B", "7");
    bench.add("A");
    bench.add(" ", "x y");
    bench.row("A");
    EXPECT_THAT(bench.library.askedMappings, ElementsAre("B 7", "A", "  x y"));
    EXPECT_EQ(bench.records.size(), 3u);
    EXPECT_EQ(bench.records.count("B 7"), 1u);
    EXPECT_EQ(bench.records.count("  x y"), 1u);
}

TEST(ImportMap, ARowHoldsWhatTheLibraryMapsTheKeyTo) {
    for (const auto mapping : {LibraryInterface::Mapped, LibraryInterface::Approximated,
                               LibraryInterface::DoNotImport, LibraryInterface::NotMapped}) {
        Bench bench;
        bench.add("B", "7");
        bench.library.mappings["B 7"] = {"Ball", mapping};
        bench.library.paths["B 7"] = "folder/balls";
        const auto &row = bench.row("B 7");
        EXPECT_EQ(row.getName(), "Ball");
        EXPECT_EQ(row.getPath(), "folder/balls");
        EXPECT_EQ(row.getMappingType(), mapping);
    }
}

TEST(ImportMap, WithoutAnswerTheRowIsEmptyAndNotMapped) {
    Bench bench;
    bench.library.mappings["first"] = {"Ball", LibraryInterface::Mapped};
    bench.add("first");
    bench.add("second");
    const auto &row = bench.row("second");
    EXPECT_EQ(row.getName(), "");
    EXPECT_EQ(row.getPath(), "");
    EXPECT_EQ(row.getMappingType(), LibraryInterface::NotMapped);
}

TEST(ImportMap, ThePartNumberIsShownIfThereIsOne) {
    Bench bench;
    bench.add("A");
    bench.add("B", "7");
    const auto &without = bench.row("A").getAttributes();
    ASSERT_EQ(without.size(), 1u);
    EXPECT_EQ(without[0].name, "Part Number");
    EXPECT_EQ(without[0].value, "");
    EXPECT_FALSE(without[0].isShown);
    const auto &with = bench.records.at("B 7").getAttributes();
    ASSERT_EQ(with.size(), 1u);
    EXPECT_EQ(with[0].value, "7");
    EXPECT_TRUE(with[0].isShown);
}

TEST(ImportMap, AKeyThatIsThereStays) {
    Bench bench;
    bench.records.emplace("A", LibraryManager::LibraryItemMapRecord("own choice"));
    bench.library.mappings["A"] = {"Ball", LibraryInterface::Mapped};
    bench.add("A");
    EXPECT_EQ(bench.row("A").getName(), "own choice");
    EXPECT_TRUE(bench.records.at("A").getAttributes().empty());
}

TEST(ImportMap, OfTwoComponentsOfOneKeyTheFirstStands) {
    Bench bench;
    bench.add("A 1");
    bench.add("A", "1");
    EXPECT_FALSE(bench.row("A 1").getAttributes().at(0).isShown);
    EXPECT_EQ(bench.records.size(), 1u);
}

TEST(ImportMap, WithoutLibraryNothingIsAdded) {
    Bench bench;
    bench.add("A");
    bench.records.emplace("own", LibraryManager::LibraryItemMapRecord("own choice"));
    EDA::EDAImporter(nullptr, "", "").populateImportMap(bench.board, bench.records);
    EXPECT_EQ(bench.records.size(), 1u);
}
