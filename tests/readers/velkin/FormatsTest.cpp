// Formats, options and preferences of the reader.
#include "VelkinBench.h"

using namespace VelkinTest;
using EDA::EDAFormat;
using EDA::VelkinEDAReader;

namespace {

using VelkinFormats = VelkinBench;

std::string filterOf(EDAFormat format) { return VelkinEDAReader::getFileFormats(format).toStdString(); }

} // namespace

TEST_F(VelkinFormats, HaveFilterTextsForDialogs) {
    EXPECT_EQ(filterOf(EDAFormat::Brisko), "Brisko Files (*.brd *.mcm *.sip)");
    EXPECT_EQ(filterOf(EDAFormat::IPC2581), "IPC2581 Files (*.cvg *.xml)");
    EXPECT_EQ(filterOf(EDAFormat::ODB), "ODB++ Files (*.zip *.tgz *.gz *.z *.tar *.7z)");
    EXPECT_EQ(filterOf(EDAFormat::QVD), "QVD Files (*.qvd)");
}

TEST_F(VelkinFormats, HaveNumbersThatHostsStore) {
    EXPECT_EQ(filterOf(static_cast<EDAFormat>(0)), filterOf(EDAFormat::Brisko));
    EXPECT_EQ(filterOf(static_cast<EDAFormat>(1)), filterOf(EDAFormat::ODB));
    EXPECT_EQ(filterOf(static_cast<EDAFormat>(2)), filterOf(EDAFormat::IPC2581));
    EXPECT_EQ(filterOf(static_cast<EDAFormat>(3)), filterOf(EDAFormat::QVD));
}

TEST_F(VelkinFormats, AreNoneForAnotherNumber) {
    EXPECT_EQ(filterOf(static_cast<EDAFormat>(4)), "");
    EXPECT_EQ(filterOf(static_cast<EDAFormat>(-1)), "");
}

TEST_F(VelkinFormats, AddAllPatternsToASet) {
    std::set<std::string> patterns = {"*.emn"};
    VelkinEDAReader::getAllFileFormats(patterns);
    VelkinEDAReader::getAllFileFormats(patterns);
    EXPECT_THAT(patterns,
                testing::UnorderedElementsAre("*.emn", "*.brd", "*.mcm", "*.sip", "*.cvg", "*.xml", "*.zip",
                                              "*.tgz", "*.gz", "*.z", "*.tar", "*.7z", "*.qvd"));
}

TEST_F(VelkinFormats, OptionsAreTheStoredEntityOfTheReader) {
    makeReader();
    EntityModel::Entity *const options = reader->getOptions();
    ASSERT_NE(options, nullptr);
    std::string name;
    EXPECT_EQ(options->findAttribute(EntityModel::Name_t, false)->getString(name), "EDA");
    EXPECT_EQ(options->getType(), EntityModel::EDA_Import_Options_t);
    EXPECT_EQ(reader->getOptions(), options);
}

TEST_F(VelkinFormats, CirclesMayHaveSixPoints) {
    makeReader();
    EDA::EDAReader::GeometryConversionOptions options;
    const EDA::EDAReader::GeometryConversionOptions defaults;
    reader->updateGeometryConversionOptions(options);
    EXPECT_EQ(options.componentMinPoints, 6);
    EXPECT_EQ(options.conductorMinPoints, 6);
    EXPECT_EQ(options.holeMinPoints, 6);
    EXPECT_EQ(options.solidHoleMinPoints, 6);
    EXPECT_EQ(options.boardMinPoints, defaults.boardMinPoints);
    EXPECT_EQ(options.keepoutMinPoints, defaults.keepoutMinPoints);
    EXPECT_EQ(options.boardTolerance, defaults.boardTolerance);
    EXPECT_EQ(options.componentTolerance, defaults.componentTolerance);
    EXPECT_EQ(options.keepoutTolerance, defaults.keepoutTolerance);
    EXPECT_EQ(options.conductorTolerance, defaults.conductorTolerance);
    EXPECT_EQ(options.holeTolerance, defaults.holeTolerance);
    EXPECT_EQ(options.substrateHoleTolerance, defaults.substrateHoleTolerance);
    EXPECT_EQ(options.solidHoleTolerance, defaults.solidHoleTolerance);
}

TEST_F(VelkinFormats, SomeMayHoldAPackage) {
    makeReader();
    EXPECT_FALSE(reader->canBeComponent());
    for (const char *name : {"a.mcm", "a.sip", "a.cvg", "a.xml", "a.qvd", "a.MCM", "a.b.Xml"}) {
        EXPECT_TRUE(reader->readFile(design(name))) << name;
        EXPECT_TRUE(reader->canBeComponent()) << name;
    }
    for (const char *name : {"a.brd", "a", "a.qvdx", "qvd", ".qvd"}) {
        EXPECT_TRUE(reader->readFile(design(name))) << name;
        EXPECT_FALSE(reader->canBeComponent()) << name;
    }
}

TEST_F(VelkinFormats, WhetherItMayBeAPackageIsKnownAlsoAfterAFailure) {
    useSuite("");
    EXPECT_FALSE(readDesign("a.sip"));
    EXPECT_TRUE(reader->canBeComponent());
    EXPECT_FALSE(reader->readFile(design("a.brd")));
    EXPECT_FALSE(reader->canBeComponent());
}

TEST_F(VelkinFormats, AnyApplicationNameGivesTheSameReader) {
    const std::string suite = folder.path("suite") + "/";
    const auto suiteOf = [this](VelkinEDAReader &&velkin) {
        EXPECT_TRUE(velkin.readFile(design("a.brd")));
        return script().suitePath;
    };
    EXPECT_EQ(suiteOf(VelkinEDAReader(false, false)), suite);
    EXPECT_EQ(suiteOf(VelkinEDAReader("other", false, false)), suite);
    EXPECT_EQ(suiteOf(VelkinEDAReader(std::string("other"), false, false)), suite);
    EXPECT_EQ(suiteOf(VelkinEDAReader(static_cast<const char *>(nullptr), false, false)), suite);
}

TEST_F(VelkinFormats, ThereAreNoDetailsOfTheLastFile) {
    EXPECT_TRUE(readDesign("a.brd"));
    std::string details = "before";
    reader->getLastFileDetails(details);
    EXPECT_EQ(details, "");
}

TEST_F(VelkinFormats, LayersNeedNoCompletion) {
    makeReader();
    EXPECT_TRUE(reader->readLayerDetails());
}
