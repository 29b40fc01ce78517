// Heatsinks of placed components.
#include "ComponentSupport.h"

using namespace TestSupport;

namespace {

struct HeatsinkBench : ComponentBench {
    HeatsinkBench() {
        heatsink.setName("HS1");
        heatsink.setHeatSinkType("Pin Fin");
        heatsink.setPinShape("Square");
        heatsink.setHeatSinkMaterial("Aluminium");
        heatsink.setStaggered(true);
        heatsink.setHeatSinkLength(31);
        heatsink.setHeatSinkWidth(32);
        heatsink.setBaseThickness(3);
        heatsink.setLimbHeight(14);
        heatsink.setLimbLength(1.5);
        heatsink.setLimbWidth(1.25);
        heatsink.setPitchInWidth(4);
        heatsink.setPitchInLength(5);
    }
    Entity *importCarrier() {
        placement.setHeatsink(heatsink);
        carrier = importOne();
        return find(carrier);
    }
    Entity *find(Entity *parent) const {
        const auto found = children(parent, Heatsink_t);
        return found.size() == 1 ? found[0] : nullptr;
    }

    EDA::EDAHeatsink heatsink;
    Entity *carrier = nullptr;
};

using Lengths = std::vector<double>;

// The nine lengths of the part that carries it.
Lengths lengths(Entity *entity) {
    Lengths all;
    for (const char *label : {"Base Width", "Base Depth", "Base Thickness", "Fin Height", "Fin Width",
                              "Fin Depth", "Pn Width", "Pin Depth", "Pin Diameter "}) {
        all.push_back(mm(entity, label));
    }
    return all;
}

const Lengths given{32, 31, 3, 14, 1.25, 1.5, 1.25, 1.5, 1.25};

} // namespace

TEST(Heatsinks, ItHangsOnItsComponentWithItsTexts) {
    HeatsinkBench bench;
    Entity *const heatsink = bench.importCarrier();
    ASSERT_TRUE(heatsink);
    EXPECT_EQ(getLinkedEntity(bench.carrier, HeatsinkLink_t), heatsink);
    EXPECT_EQ(text(heatsink, Name_t), "HS1");
    EXPECT_EQ(text(heatsink, Type_t), "Pin Fin");
    EXPECT_EQ(text(heatsink, Pin_Shape_t), "Square");
    EXPECT_EQ(text(heatsink, Staggered_t), "Yes");
}

TEST(Heatsinks, TextsThatAreEmptyStayUnset) {
    HeatsinkBench bench;
    bench.heatsink = EDA::EDAHeatsink();
    Entity *const heatsink = bench.importCarrier();
    ASSERT_TRUE(heatsink);
    for (const TypeRef &attribute : {Name_t, Type_t, Pin_Shape_t})
        EXPECT_EQ(text(heatsink, attribute), "");
    EXPECT_EQ(text(heatsink, Staggered_t), "No");
}

TEST(Heatsinks, TheNineLengthsGoToThePartThatCarriesIt) {
    HeatsinkBench bench;
    Entity *const heatsink = bench.importCarrier();
    ASSERT_TRUE(heatsink);
    EXPECT_EQ(lengths(bench.carrier), given);
    EXPECT_EQ(lengths(heatsink), Lengths(9, -12345.0)); // It has no such attributes.
}

TEST(Heatsinks, LengthsAreInTheBoardsUnitsAndPitchesInTheirOwn) {
    HeatsinkBench bench;
    bench.board().setUnits("IN");
    bench.part.setUnits("MM");
    Entity *const heatsink = bench.importCarrier();
    ASSERT_TRUE(heatsink);
    EXPECT_NEAR(mm(bench.carrier, "Base Width"), 32 * 25.4, 1e-9);
    EXPECT_EQ(text(heatsink, Pin_Separation_Across_t), "4 mm");
    EXPECT_EQ(text(heatsink, Pin_Separation_Through_t), "5 mm");
}

TEST(Heatsinks, LengthsThatWereNotGivenStayUnsetButPitchesAreWritten) {
    HeatsinkBench bench;
    bench.heatsink = EDA::EDAHeatsink();
    Entity *const heatsink = bench.importCarrier();
    ASSERT_TRUE(heatsink);
    EXPECT_EQ(lengths(bench.carrier), Lengths(9, 0.0));
    EXPECT_EQ(mm(heatsink, Pin_Separation_Across_t), -1.0);
    EXPECT_EQ(mm(heatsink, Pin_Separation_Through_t), -1.0);
}

TEST(Heatsinks, AllThreeMaterialsAreTheOneOfTheHeatsink) {
    HeatsinkBench bench;
    Entity *const heatsink = bench.importCarrier();
    ASSERT_TRUE(heatsink);
    for (const TypeRef &link : {MaterialLink_t, Base_Material_t, Fin_Material_t}) {
        EXPECT_EQ(text(getLinkedEntity(heatsink, link), Name_t), "Aluminium");
    }
}

TEST(Heatsinks, WithoutMaterialItIsOfATypicalComponent) {
    HeatsinkBench bench;
    bench.heatsink.setHeatSinkMaterial("");
    Entity *const heatsink = bench.importCarrier();
    ASSERT_TRUE(heatsink);
    for (const TypeRef &link : {MaterialLink_t, Base_Material_t, Fin_Material_t}) {
        EXPECT_EQ(text(getLinkedEntity(heatsink, link), Name_t), "Typical Component");
    }
}

TEST(Heatsinks, ThatOfASolidHangsOnTheComponentAroundIt) {
    HeatsinkBench bench;
    bench.placement.setHeatsink(bench.heatsink);
    Entity *const solid = bench.importOneOnSubstrate();
    ASSERT_TRUE(solid);
    EXPECT_EQ(bench.find(solid), nullptr);
    Entity *const component = solid->getAncestor(Component_t);
    ASSERT_TRUE(component);
    EXPECT_TRUE(bench.find(component));
    EXPECT_EQ(lengths(component), given);
}

// A component carries one.
TEST(Heatsinks, OfSeveralSolidsTheLastHeatsinkStays) {
    HeatsinkBench bench;
    bench.placement.setHeatsink(bench.heatsink);
    bench.add();
    bench.heatsink.setName("HS2");
    bench.placement.setHeatsink(bench.heatsink);
    bench.add();
    const auto solids = bench.importOnSubstrate();
    ASSERT_EQ(solids.size(), 2U);
    Entity *const heatsink = bench.find(solids[0]->getAncestor(Component_t));
    ASSERT_TRUE(heatsink);
    EXPECT_EQ(text(heatsink, Name_t), "HS2");
}

TEST(Heatsinks, APartThatTakesNoneGetsNoLengths) {
    HeatsinkBench bench;
    bench.part.setImportToType("Chip Socket");
    EXPECT_EQ(bench.importCarrier(), nullptr);
    ASSERT_TRUE(bench.carrier);
    EXPECT_EQ(bench.carrier->getType(), Chip_Socket_t);
}

TEST(Heatsinks, EveryTypeWithAPlaceForOneTakesIt) {
    for (const char *type :
         {"Component", "Resistor", "Capacitor", "Inductor", "Cable Socket", "Daughter Board Socket"}) {
        HeatsinkBench bench;
        bench.part.setImportToType(type);
        EXPECT_TRUE(bench.importCarrier()) << type;
        EXPECT_EQ(lengths(bench.carrier), given) << type;
    }
}

TEST(Heatsinks, WithoutOneNothingHangsOnTheComponent) {
    HeatsinkBench bench;
    Entity *const component = bench.importOne();
    ASSERT_TRUE(component);
    EXPECT_EQ(bench.find(component), nullptr);
}
