// Keepouts: kinds and sides from free text.
#include "model/EDAKeepout.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace EDA {
namespace {

EDAKeepout onSide(std::string const &side) {
    EDAKeepout keepout("Route");
    keepout.setBoardSide(side);
    return keepout;
}

TEST(EDAKeepout, StartsEmptyButForItsType) {
    EDAKeepout const keepout("OTHER_OUTLINE");
    EXPECT_EQ(keepout.getName(), "");
    EXPECT_EQ(keepout.getType(), "OTHER_OUTLINE");
    EXPECT_EQ(keepout.getBoardSide(), "");
    EXPECT_EQ(keepout.getHeight(), 0.0);
    EXPECT_TRUE(keepout.getOutline().empty());
    EXPECT_FALSE(keepout.getOutline().isHole());
    EXPECT_TRUE(std::has_virtual_destructor_v<EDAKeepout>);
}

TEST(EDAKeepout, KeepsWhatItIsGivenAndCopiesIt) {
    EDAKeepout keepout("Route");
    keepout.setName("K");
    keepout.setBoardSide("TOP");
    keepout.setHeight(1.5);
    keepout.addPoint(0, 1.0, 2.0, 45.0);
    EDAKeepout copy("Via");
    copy = keepout;
    EXPECT_EQ(copy.getType(), "Route");
    EXPECT_EQ(copy.getName(), "K");
    EXPECT_EQ(copy.getBoardSide(), "TOP");
    EXPECT_EQ(copy.getHeight(), 1.5);
    EXPECT_EQ(copy.getOutline().beginPoints()->angle, 45.0);
    copy.getOutline().clear();
    EXPECT_EQ(keepout.getOutline().numPoints(), 1u);
}

TEST(EDAKeepout, ViaOnAllSidesIsAViaKeepoutOnBothSides) {
    EDAKeepout keepout("Via");
    keepout.setBoardSide("ALL");
    EXPECT_TRUE(keepout.isViaKeepout());
    EXPECT_TRUE(keepout.isOnBoardBothSides());
    EXPECT_FALSE(keepout.isOnBoardTop());
    EXPECT_FALSE(keepout.isOnBoardBottom());
    EXPECT_FALSE(keepout.isComponentKeepout());
    EXPECT_FALSE(keepout.isRoutingKeepout());
}

TEST(EDAKeepout, SidesAreReadWithoutRegardToCase) {
    EXPECT_TRUE(onSide("top").isOnBoardTop());
    EXPECT_TRUE(onSide("Bottom").isOnBoardBottom());
    EXPECT_TRUE(onSide("both").isOnBoardBothSides());
    EXPECT_TRUE(onSide("All").isOnBoardBothSides());
    EXPECT_FALSE(onSide("BOTH").isOnBoardTop());
    EXPECT_FALSE(onSide("BOTH").isOnBoardBottom());
}

TEST(EDAKeepout, AnEmptySideIsNoSide) {
    EXPECT_FALSE(onSide("").isOnBoardTop());
    EXPECT_FALSE(onSide("").isOnBoardBottom());
    EXPECT_FALSE(onSide("").isOnBoardBothSides());
}

TEST(EDAKeepout, KindsAreReadWithoutRegardToCase) {
    for (auto const *type : {"PLACE_KEEPOUT", "place_keepout", "ComponentPlacement", "COMPONENTPLACEMENT"})
        EXPECT_TRUE(EDAKeepout(type).isComponentKeepout()) << type;
    for (auto const *type : {"VIA_KEEPOUT", "via_keepout", "Via", "VIA"})
        EXPECT_TRUE(EDAKeepout(type).isViaKeepout()) << type;
    for (auto const *type : {"Route", "ROUTE"})
        EXPECT_TRUE(EDAKeepout(type).isRoutingKeepout()) << type;
}

TEST(EDAKeepout, OtherWordsAreNoKind) {
    for (auto const *type : {"", "ROUTE_KEEPOUT", "PLACE", "Component"}) {
        EXPECT_FALSE(EDAKeepout(type).isComponentKeepout()) << type;
        EXPECT_FALSE(EDAKeepout(type).isViaKeepout()) << type;
        EXPECT_FALSE(EDAKeepout(type).isRoutingKeepout()) << type;
    }
}

} // namespace
} // namespace EDA
