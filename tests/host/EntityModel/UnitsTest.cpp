// Quantities, spellings and conversion.
#include "host/EntityModel/Units.h"
#include "host/EntityModel/Types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using namespace EntityModel;

namespace {

const Quantity &quantity(const char *label) {
    const Quantity *const found = Units::findQuantity(label);
    EXPECT_NE(found, nullptr) << label;
    return *found;
}

const Unit &unit(const char *quantityLabel, const char *spelling) {
    const Unit *const found = Units::find(quantity(quantityLabel), spelling);
    EXPECT_NE(found, nullptr) << quantityLabel << " " << spelling;
    return *found;
}

double toStandard(const char *quantityLabel, const char *spelling, double value) {
    return Units::convert(value, unit(quantityLabel, spelling), *quantity(quantityLabel).standard);
}

struct Spelling {
    const char *quantity;
    const char *text;
    double standard; // of the value 1
};

const Spelling spellings[] = {
    {"Length", "m", 1.0},
    {"Length", "meter", 1.0},
    {"Length", "metre", 1.0},
    {"Length", "METER", 1.0},
    {"Length", "mm", 1e-3},
    {"Length", "MM", 1e-3},
    {"Length", "Mm", 1e-3},
    {"Length", "millimeter", 1e-3},
    {"Length", "millimetre", 1e-3},
    {"Length", "cm", 1e-2},
    {"Length", "um", 1e-6},
    {"Length", "\xC2\xB5m", 1e-6},
    {"Length", "micron", 1e-6},
    {"Length", "microns", 1e-6},
    {"Length", "micrometer", 1e-6},
    {"Length", "nm", 1e-9},
    {"Length", "km", 1e3},
    {"Length", "in", 0.0254},
    {"Length", "IN", 0.0254},
    {"Length", "inch", 0.0254},
    {"Length", "INCH", 0.0254},
    {"Length", "inches", 0.0254},
    {"Length", "ft", 0.3048},
    {"Length", "mil", 2.54e-5},
    {"Length", "mils", 2.54e-5},
    {"Length", "MIL", 2.54e-5},
    {"Length", "thou", 2.54e-5},
    {"Length", "THOU", 2.54e-5},
    {"Length", "TNM", 1e-8},
    {"Length", "UNIT_MM", 1e-3},
    {"Length", "UNIT_INCH", 0.0254},
    {"Length", "UNIT_THOU", 2.54e-5},
    {"Length", " mm ", 1e-3},
    {"Power", "W", 1.0},
    {"Power", "mW", 1e-3},
    {"Power", "kW", 1e3},
    {"Power", "MW", 1e6},
    {"Power", "uW", 1e-6},
    {"Power", "KW", 1e3},
    {"Conductivity", "W/(m K)", 1.0},
    {"Conductivity", "W/(m.K)", 1.0},
    {"Conductivity", "W/mK", 1.0},
    {"Conductivity", "W/m K", 1.0},
    {"Conductivity", "w/mk", 1.0},
    {"Thermal Resistance", "C/W", 1.0},
    {"Thermal Resistance", "K/W", 1.0},
    {"Thermal Resistance", "degC/W", 1.0},
    {"Specific Heat", "J/(kg K)", 1.0},
    {"Specific Heat", "J/kgK", 1.0},
    {"Density", "kg/m^3", 1.0},
    {"Density", "kg/m3", 1.0},
    {"Density", "g/cm^3", 1000.0},
    {"Electrical Conductivity", "S/m", 1.0},
    {"Electrical Conductivity", "1/(Ohm m)", 1.0},
    {"Electrical Resistance", "Ohm", 1.0},
    {"Electrical Resistance", "ohm", 1.0},
    {"Electrical Resistance", "mOhm", 1e-3},
    {"Electrical Resistance", "kOhm", 1e3},
    {"Electrical Resistance", "MOhm", 1e6},
    {"Electrical Capacitance", "F", 1.0},
    {"Electrical Capacitance", "mF", 1e-3},
    {"Electrical Capacitance", "uF", 1e-6},
    {"Electrical Capacitance", "nF", 1e-9},
    {"Electrical Capacitance", "pF", 1e-12},
    {"Electrical Inductance", "H", 1.0},
    {"Electrical Inductance", "mH", 1e-3},
    {"Electrical Inductance", "uH", 1e-6},
    {"Electrical Inductance", "nH", 1e-9},
    {"Angle", "degrees", 1.0},
    {"Angle", "degree", 1.0},
    {"Angle", "deg", 1.0},
    {"Percent", "%", 1.0},
};

class UnitSpelling : public testing::TestWithParam<Spelling> {};

} // namespace

TEST_P(UnitSpelling, IsKnownWithItsSize) {
    const Spelling &row = GetParam();
    EXPECT_EQ(toStandard(row.quantity, row.text, 1.0), row.standard) << row.quantity << " " << row.text;
}

INSTANTIATE_TEST_SUITE_P(All, UnitSpelling, testing::ValuesIn(spellings));

TEST(Units, RadiansAreTurnedIntoDegrees) {
    EXPECT_EQ(toStandard("Angle", "rad", 3.14159265358979323846), 180.0);
    EXPECT_EQ(toStandard("Angle", "radians", 0.0), 0.0);
}

TEST(Units, UnknownAndEmptySpellingsAreNoUnit) {
    EXPECT_EQ(Units::find(quantity("Length"), "furlong"), nullptr);
    EXPECT_EQ(Units::find(quantity("Length"), ""), nullptr);
    EXPECT_EQ(Units::find(quantity("Length"), "  "), nullptr);
    EXPECT_EQ(Units::find(quantity("Length"), "W"), nullptr);
    EXPECT_EQ(Units::find(quantity("Length"), "m m"), nullptr);
}

TEST(Units, CaseDecidesWhereUnitsDifferByIt) {
    EXPECT_EQ(Units::find(quantity("Power"), "mw"), nullptr);
    EXPECT_EQ(Units::find(quantity("Electrical Resistance"), "mohm"), nullptr);
    EXPECT_EQ(Units::find(quantity("Electrical Resistance"), "KOHM"),
              Units::find(quantity("Electrical Resistance"), "kOhm"));
}

TEST(Units, DefaultDisplayUnits) {
    EXPECT_EQ(quantity("Length").display->label, "mm");
    EXPECT_EQ(quantity("Length").standard->label, "m");
    EXPECT_EQ(quantity("Power").display->label, "W");
    EXPECT_EQ(quantity("Angle").display, quantity("Angle").standard);
    EXPECT_EQ(quantity("Angle").display->label, "degrees");
    EXPECT_EQ(quantity("").display->label, "");
}

TEST(Units, UnknownQuantityIsNull) { EXPECT_EQ(Units::findQuantity("Smell"), nullptr); }

TEST(Units, SameUnitGivesTheSameBits) {
    const Unit &mm = unit("Length", "mm");
    EXPECT_EQ(Units::convert(0.1, mm, unit("Length", "MM")), 0.1);
    EXPECT_TRUE(std::signbit(Units::convert(-0.0, mm, mm)));
}

TEST(Units, ConversionsRoundOnce) {
    EXPECT_EQ(Units::convert(100.0, unit("Length", "thou"), unit("Length", "mm")), 2.54);
    EXPECT_EQ(Units::convert(1.0, unit("Length", "in"), unit("Length", "mm")), 25.4);
    EXPECT_EQ(Units::convert(35.0, unit("Length", "um"), unit("Length", "mm")), 0.035);
    EXPECT_EQ(Units::convert(1.6, unit("Length", "mm"), unit("Length", "m")), 0.0016);
}

TEST(Units, ConversionsAreTheNearestDoubleOfTheExactQuotient) {
    std::mt19937 random(20240611);
    std::uniform_real_distribution<double> values(-1000.0, 1000.0);
    const Unit &thou = unit("Length", "thou");
    const Unit &mm = unit("Length", "mm");
    for (int i = 0; i < 20000; ++i) {
        const double value = values(random);
        // 0.0254 mm a thou: 127 / 5000, in more digits than a double has.
        const auto exact = static_cast<double>(static_cast<long double>(value) * 127.0L / 5000.0L);
        if (std::numeric_limits<long double>::digits <= 53) break;
        ASSERT_EQ(Units::convert(value, thou, mm), exact) << "value " << value << ", seed 20240611";
    }
}

TEST(Units, HugeValuesStayFinite) {
    const double huge = std::numeric_limits<double>::max();
    EXPECT_EQ(Units::convert(huge, unit("Length", "km"), unit("Length", "nm")), huge);
    EXPECT_EQ(Units::convert(-huge, unit("Length", "in"), unit("Length", "mm")), -huge);
    EXPECT_EQ(Units::convert(1e308, unit("Length", "in"), unit("Length", "m")), 1e308 / 5e3 * 127);
}

TEST(Units, LengthSpellingsCanBeListed) {
    const std::vector<std::string> all = Units::lengthSpellings();
    EXPECT_NE(std::find(all.begin(), all.end(), "thou"), all.end());
    for (const std::string &spelling : all) {
        EXPECT_NE(Units::find(quantity("Length"), spelling), nullptr) << spelling;
    }
}

TEST(Units, SpellingsOfEachQuantityCanBeListed) {
    for (const char *label : {"Length", "Power", "Angle"}) {
        const std::vector<std::string> all = Units::spellings(quantity(label));
        EXPECT_FALSE(all.empty()) << label;
        for (const std::string &spelling : all)
            EXPECT_NE(Units::find(quantity(label), spelling), nullptr) << spelling;
    }
    EXPECT_EQ(Units::spellings(quantity("Length")), Units::lengthSpellings());
}

TEST(UnitConverter, ConvertsFromTheStandardUnit) {
    const UnitConverter &converter = UnitConverter::instance();
    EXPECT_EQ(converter.convertFromSI(Length_t, 0.0254, TypeRef("in")), 1.0);
    EXPECT_EQ(converter.convertFromSI(Length_t, 0.002, TypeRef("MM")), 2.0);
    EXPECT_EQ(converter.convertFromSI(Conductivity_t, 3.0, TypeRef("W/(m K)")), 3.0);
}

TEST(UnitConverter, UnknownUnitMeansTheDisplayUnit) {
    EXPECT_EQ(UnitConverter::instance().convertFromSI(Length_t, 0.002, TypeRef("furlong")), 2.0);
    EXPECT_EQ(UnitConverter::instance().convertFromSI(Length_t, 0.002, TypeRef("")), 2.0);
}

TEST(UnitConverter, UnknownQuantityGivesTheValueBack) {
    EXPECT_EQ(UnitConverter::instance().convertFromSI(TypeRef("Smell"), 7.0, TypeRef("mm")), 7.0);
}
