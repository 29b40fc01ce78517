// What every reader does unless it says otherwise.
#include "readers/EDAReader.h"

#include "support/BoardReader.h"

#include <gtest/gtest.h>

namespace {

class SmallestReader : public EDA::EDAReader {
public:
    bool readFile(const std::string &name) override {
        board_.setName(name);
        error_ = "error of " + name;
        return false;
    }
    EntityModel::Entity *getOptions() override { return nullptr; }
};

TEST(EDAReader, AnswersWithDefaultsWhereNothingIsOverridden) {
    SmallestReader reader;
    EXPECT_TRUE(reader.readLayerDetails());
    EXPECT_FALSE(reader.canBeComponent());
    EDA::EDAReader::GeometryConversionOptions options;
    options.boardMinPoints = 99;
    options.solidHoleTolerance = 7.0;
    reader.updateGeometryConversionOptions(options);
    EXPECT_EQ(options.boardMinPoints, 99);
    EXPECT_EQ(options.solidHoleTolerance, 7.0);
}

TEST(EDAReader, HasTheDefaultsOfTheGeometryConversion) {
    const EDA::EDAReader::GeometryConversionOptions options;
    EXPECT_EQ(options.boardMinPoints, 12);
    EXPECT_EQ(options.boardTolerance, 1e-4);
    EXPECT_EQ(options.componentMinPoints, 12);
    EXPECT_EQ(options.componentTolerance, 1e-4);
    EXPECT_EQ(options.keepoutMinPoints, 12);
    EXPECT_EQ(options.keepoutTolerance, 1e-4);
    EXPECT_EQ(options.conductorMinPoints, 8);
    EXPECT_EQ(options.conductorTolerance, 1e-5);
    EXPECT_EQ(options.holeMinPoints, 8);
    EXPECT_EQ(options.holeTolerance, 1e-4);
    EXPECT_EQ(options.substrateHoleTolerance, 1e-5);
    EXPECT_EQ(options.solidHoleMinPoints, 8);
    EXPECT_EQ(options.solidHoleTolerance, 1e-5);
}

TEST(EDAReader, StartsWithAnEmptyBoardAndNoError) {
    const SmallestReader reader;
    EXPECT_EQ(reader.getBoard().getName(), "");
    EXPECT_EQ(reader.getBoard().numComponents(), 0u);
    EXPECT_EQ(reader.getError(), "");
}

TEST(EDAReader, CopiesBoardAndError) {
    SmallestReader reader;
    reader.readFile("A");
    SmallestReader copy(reader);
    SmallestReader assigned;
    assigned = reader;
    reader.readFile("B");
    EXPECT_EQ(copy.getBoard().getName(), "A");
    EXPECT_EQ(copy.getError(), "error of A");
    EXPECT_EQ(assigned.getBoard().getName(), "A");
    EXPECT_EQ(assigned.getError(), "error of A");
}

} // namespace
