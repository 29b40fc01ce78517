// The map from reference designators to component types, as it is changed and written.
#include "import/EDAImporter.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using testing::ElementsAre;
using testing::Pair;

namespace {

using Map = std::map<std::string, std::string>;

Map mapOf(const EDA::EDAImporter &importer) {
    Map map{{"old", "entry"}};
    importer.getTypeMap(map);
    return map;
}

} // namespace

TEST(TypeMapChange, AMapReplacesTheOneInUse) {
    EDA::EDAImporter importer(nullptr, "", "");
    importer.setTypeMap({{"R", "Resistor"}, {"U", "Chip Socket"}});
    importer.setTypeMap({{"C", "Capacitor"}});
    EXPECT_THAT(mapOf(importer), ElementsAre(Pair("C", "Capacitor")));
}

TEST(TypeMapChange, TheUsersFileIsRewrittenInTheOrderOfTheKeys) {
    const TempFolder folder;
    EDA::EDAImporter importer(nullptr, folder.write("user.csv", "X,Component\nY,Component\n"), "");
    importer.setTypeMap({{"U", "Chip Socket"}, {"C", "Capacitor"}, {"c", "Component"}});
    EXPECT_EQ(folder.read("user.csv"), "C,Capacitor\nU,Chip Socket\nc,Component\n");
}

TEST(TypeMapChange, TheDefaultFileIsNeverWritten) {
    const TempFolder folder;
    EDA::EDAImporter importer(nullptr, folder.path("user.csv"), folder.write("default.csv", "L,Inductor\n"));
    importer.setTypeMap({{"R", "Resistor"}});
    EXPECT_EQ(folder.read("user.csv"), "R,Resistor\n");
    EXPECT_EQ(folder.read("default.csv"), "L,Inductor\n");
}

TEST(TypeMapChange, WithoutAUsersFileNothingIsWritten) {
    const TempFolder folder;
    EDA::EDAImporter importer(nullptr, "", folder.write("default.csv", "L,Inductor\n"));
    importer.setTypeMap({{"R", "Resistor"}});
    EXPECT_EQ(folder.numEntries(), 1u);
    EXPECT_EQ(folder.read("default.csv"), "L,Inductor\n");
}

TEST(TypeMapChange, AnEmptyMapEmptiesTheFileAndTheNextImporterHasTheDefaults) {
    const TempFolder folder;
    const std::string user = folder.write("user.csv", "R,Resistor\n");
    const std::string defaults = folder.write("default.csv", "L,Inductor\n");
    EDA::EDAImporter importer(nullptr, user, defaults);
    importer.setTypeMap({});
    EXPECT_EQ(folder.read("user.csv"), "");
    EXPECT_TRUE(mapOf(importer).empty());
    EXPECT_THAT(mapOf(EDA::EDAImporter(nullptr, user, defaults)), ElementsAre(Pair("L", "Inductor")));
}

TEST(TypeMapChange, AFileThatCannotBeWrittenIsNotReported) {
    const TempFolder folder;
    EDA::EDAImporter importer(nullptr, folder.path("absent/user.csv"), "");
    importer.setTypeMap({{"R", "Resistor"}});
    EXPECT_THAT(mapOf(importer), ElementsAre(Pair("R", "Resistor")));
    EXPECT_EQ(importer.getErrorString(), "");
    EXPECT_EQ(folder.numEntries(), 0u);
}

TEST(TypeMapChange, TextsAreWrittenAsTheyStandAndReadBackTheSame) {
    const TempFolder folder;
    const Map map{{"", "Component"}, {" R ", "Chip Socket "}, {"\"Q\"", "\"x"}, {"\xc3\x84", "\xe6\x9d\xbf"}};
    EDA::EDAImporter importer(nullptr, folder.path("user.csv"), "");
    importer.setTypeMap(map);
    EXPECT_EQ(folder.read("user.csv"), ",Component\n R ,Chip Socket \n\"Q\",\"x\n\xc3\x84,\xe6\x9d\xbf\n");
    EXPECT_EQ(mapOf(EDA::EDAImporter(nullptr, folder.path("user.csv"), "")), map);
}

TEST(TypeMapChange, AFileNameMayHoldAnyCharacters) {
    const TempFolder folder;
    EDA::EDAImporter importer(nullptr, folder.path("Karte \xc3\xa4.csv"), "");
    importer.setTypeMap({{"R", "Resistor"}});
    EXPECT_EQ(folder.read("Karte \xc3\xa4.csv"), "R,Resistor\n");
}
