// The materials that come with this software.
#include "LibrarySupport.h"

#include "host/FileSystem/OSPaths.h"

#include <cstdlib>
#include <set>

using namespace TestSupport;
using LibraryManager::ShippedLibrary;
using testing::HasSubstr;
using testing::Not;

namespace {

using Manager = LibraryManager::LibraryManager;

// Sets an environment variable for one test.
class Variable {
public:
    Variable(const char *name, const std::string &value) : name_(name) {
#ifdef _WIN32
        _putenv_s(name, value.c_str());
#else
        setenv(name, value.c_str(), 1);
#endif
    }
    ~Variable() {
#ifdef _WIN32
        _putenv_s(name_, "");
#else
        unsetenv(name_);
#endif
    }

private:
    const char *name_;
};

struct Range {
    double low;
    double high;
};

// Of all solids that a board, a package or its cooling is made of.
constexpr Range conductivityRange{0.02, 450};
constexpr Range specificHeatRange{100, 2000};
constexpr Range densityRange{900, 20000};
constexpr Range electricalRange{1e6, 6.5e7};

struct Expected {
    const char *name;
    Range conductivity;
    Range specificHeat;
    Range density;
    bool conducts;
};

// What a thermal engineer accepts at room temperature, wide enough for other sources.
const Expected expectations[] = {
    {"Copper", {385, 405}, {380, 390}, {8900, 8970}, true},
    {"Cu", {385, 405}, {380, 390}, {8900, 8970}, true},
    {"Aluminium", {230, 240}, {890, 910}, {2690, 2710}, true},
    {"Aluminum", {230, 240}, {890, 910}, {2690, 2710}, true},
    {"Aluminium 6061", {155, 180}, {890, 910}, {2690, 2710}, true},
    {"Gold", {310, 320}, {128, 130}, {19200, 19350}, true},
    {"Silver", {419, 431}, {230, 240}, {10450, 10520}, true},
    {"Nickel", {88, 93}, {440, 450}, {8850, 8920}, true},
    {"Tin", {63, 68}, {220, 232}, {7260, 7320}, true},
    {"Lead", {34, 36}, {126, 132}, {11300, 11350}, true},
    {"Tungsten", {165, 180}, {130, 135}, {19200, 19350}, true},
    {"Molybdenum", {135, 142}, {245, 255}, {10180, 10290}, true},
    {"Titanium", {20, 23}, {515, 530}, {4500, 4550}, true},
    {"Indium", {80, 87}, {230, 240}, {7290, 7320}, true},
    {"Zinc", {110, 120}, {380, 392}, {7100, 7150}, true},
    {"Brass", {100, 160}, {370, 390}, {8400, 8600}, true},
    {"Phosphor Bronze", {50, 85}, {370, 390}, {8780, 8900}, true},
    {"Copper C194", {240, 280}, {380, 395}, {8850, 8950}, true},
    {"Alloy 42", {10, 15}, {480, 520}, {8050, 8200}, true},
    {"Fe-Ni-Co Alloy", {16, 18}, {430, 460}, {8300, 8400}, true},
    {"Steel", {45, 66}, {430, 490}, {7800, 7900}, true},
    {"Steel 304", {14, 17}, {470, 510}, {7900, 8050}, true},
    {"SAC305", {55, 64}, {215, 240}, {7350, 7450}, true},
    {"Solder", {55, 64}, {215, 240}, {7350, 7450}, true},
    {"Sn63Pb37", {49, 52}, {165, 200}, {8300, 8500}, true},
    {"Pb95Sn5", {32, 36}, {125, 140}, {10900, 11100}, true},
    {"Au80Sn20", {56, 59}, {145, 155}, {14400, 14600}, true},
    {"Silicon", {117, 155}, {700, 720}, {2325, 2335}, false},
    {"Gallium Arsenide", {44, 56}, {320, 335}, {5310, 5325}, false},
    {"Alumina 99.5%", {28, 36}, {750, 900}, {3850, 3990}, false},
    {"Alumina 96%", {20, 28}, {750, 900}, {3700, 3800}, false},
    {"Aluminium Nitride", {140, 200}, {720, 790}, {3240, 3330}, false},
    {"Beryllium Oxide", {200, 300}, {1000, 1060}, {2850, 3020}, false},
    {"Fused Silica", {1.3, 1.45}, {700, 760}, {2190, 2230}, false},
    {"Glass", {0.9, 1.4}, {740, 860}, {2450, 2550}, false},
    {"Borosilicate Glass", {1.0, 1.4}, {750, 840}, {2220, 2240}, false},
    {"FR4", {0.25, 0.4}, {880, 1300}, {1800, 1950}, false},
    {"FR-4", {0.25, 0.4}, {880, 1300}, {1800, 1950}, false},
    {"Polyimide", {0.1, 0.4}, {1050, 1150}, {1400, 1450}, false},
    {"BT Laminate", {0.2, 0.5}, {900, 1200}, {1700, 2000}, false},
    {"Solder Mask", {0.2, 0.3}, {1000, 1500}, {1150, 1500}, false},
    {"Epoxy Mold Compound", {0.6, 1.0}, {750, 1000}, {1750, 2050}, false},
    {"Die Attach Epoxy", {1, 4}, {300, 800}, {2000, 4000}, false},
    {"Underfill", {0.2, 0.8}, {800, 1200}, {1500, 1850}, false},
    {"Thermal Grease", {0.7, 1.0}, {700, 1000}, {2100, 2600}, false},
    {"ABS", {0.16, 0.27}, {1250, 1500}, {1020, 1080}, false},
    {"PTFE", {0.24, 0.36}, {960, 1050}, {2140, 2200}, false},
    {"Polycarbonate", {0.19, 0.22}, {1150, 1260}, {1190, 1210}, false},
    {"Nylon 66", {0.23, 0.28}, {1500, 1700}, {1120, 1150}, false},
};

bool isWithin(double value, const Range &range) { return value >= range.low && value <= range.high; }

double valueOf(const Entity *material, const TypeRef &quantity) {
    return getStandardDoubleValue(material, quantity / AttributePath(Value_t), -1.0);
}

struct ShippedMaterials : testing::Test {
    ShippedMaterials() {
        std::string error;
        root = ModelFile::loadTree(ShippedLibrary::getMaterialsFile(), error);
        EXPECT_EQ(error, "");
        if (root) getLinkedEntities(root.get(), Materials_t, materials);
        for (const Entity *material : materials)
            byName.emplace(nameOf(material), material);
    }

    std::unique_ptr<Entity> root;
    std::vector<Entity *> materials;
    std::map<std::string, const Entity *> byName;
};

} // namespace

TEST_F(ShippedMaterials, NamesAreUniqueAndNotEmpty) {
    EXPECT_GE(materials.size(), 30u);
    EXPECT_EQ(byName.size(), materials.size());
    EXPECT_EQ(byName.count(""), 0u);
}

TEST_F(ShippedMaterials, EveryMaterialNamesItsSource) {
    for (const auto &[name, material] : byName)
        EXPECT_THAT(getPreciceStringValue(material, Description_t, ""), HasSubstr("Source: ")) << name;
}

TEST_F(ShippedMaterials, EveryMaterialHasValuesThatASolidCanHave) {
    for (const auto &[name, material] : byName) {
        if (name == "Air") continue;
        EXPECT_TRUE(isWithin(valueOf(material, Conductivity_t), conductivityRange)) << name;
        EXPECT_TRUE(isWithin(valueOf(material, Specific_Heat_t), specificHeatRange)) << name;
        EXPECT_TRUE(isWithin(valueOf(material, Density_t), densityRange)) << name;
        const double electrical = valueOf(material, Electrical_Conductivity_t);
        EXPECT_TRUE(electrical == 0.0 || isWithin(electrical, electricalRange)) << name;
    }
}

TEST_F(ShippedMaterials, EachIsWhatHandbooksSay) {
    for (const Expected &expected : expectations) {
        const auto found = byName.find(expected.name);
        ASSERT_NE(found, byName.end()) << expected.name;
        EXPECT_TRUE(isWithin(valueOf(found->second, Conductivity_t), expected.conductivity)) << expected.name;
        EXPECT_TRUE(isWithin(valueOf(found->second, Specific_Heat_t), expected.specificHeat))
            << expected.name;
        EXPECT_TRUE(isWithin(valueOf(found->second, Density_t), expected.density)) << expected.name;
        EXPECT_EQ(valueOf(found->second, Electrical_Conductivity_t) > 0.0, expected.conducts)
            << expected.name;
    }
}

// Metals conduct heat about as well as their electrons carry charge: the ratio over the temperature is near
// 2.44e-8 W Ohm/K^2.
TEST_F(ShippedMaterials, MetalsConductHeatAsTheyConductCurrent) {
    for (const auto &[name, material] : byName) {
        const double electrical = valueOf(material, Electrical_Conductivity_t);
        if (electrical == 0.0) continue;
        EXPECT_TRUE(isWithin(valueOf(material, Conductivity_t) / (electrical * 298.0), {1.8e-8, 4.5e-8}))
            << name;
    }
}

TEST_F(ShippedMaterials, AnAliasHasTheValuesOfItsMaterial) {
    for (const auto &[name, material] : byName) {
        const std::string text = getPreciceStringValue(material, Description_t, "");
        if (text.rfind("The same as \"", 0) != 0) continue;
        const std::string other = text.substr(13, text.find('"', 13) - 13);
        ASSERT_EQ(byName.count(other), 1u) << name;
        for (const TypeRef &quantity :
             {Conductivity_t, Specific_Heat_t, Density_t, Electrical_Conductivity_t})
            EXPECT_EQ(valueOf(material, quantity), valueOf(byName[other], quantity)) << name;
    }
}

// The import has values of its own for these, which those of a library would replace.
TEST_F(ShippedMaterials, TheDefaultsOfTheImportAreNotAmongThem) {
    EXPECT_EQ(byName.count("Typical Component"), 0u);
    EXPECT_EQ(byName.count("ABS-Plastic"), 0u);
}

TEST_F(ShippedMaterials, TheyAreRegisteredUnderTheirPath) {
    std::string error;
    ASSERT_TRUE(ShippedLibrary::registerMaterials(error)) << error;
    LibraryManager::Library *const library =
        Manager::findLibraryByLibraryPath("Orvane Material Library", nullptr);
    ASSERT_TRUE(library);
    EXPECT_EQ(library->getSize(), materials.size());
    EXPECT_TRUE(Manager::findItemByNameAndType("FR4", Material_t, library, ""));
}

TEST(SharedFolder, IsFoundAboveTheProgram) {
    EXPECT_THAT(FileSystem::OSPaths::getSharedFolder(), testing::EndsWith("share/eda"));
}

TEST(SharedFolder, AVariableOfTheEnvironmentComesFirst) {
    const TempFolder folder;
    const Variable share("EDA_SHARE_DIR", folder.path());
    EXPECT_EQ(FileSystem::OSPaths::getSharedFolder(), folder.path());
    std::string error;
    EXPECT_FALSE(ShippedLibrary::registerMaterials(error));
    EXPECT_EQ(error, folder.path("materials.json") + ": file does not exist");
}
