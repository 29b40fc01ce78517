// The units of an export that names none.
#include "ExportScene.h"

#include "host/EntityModel/UserPreference.h"
#include "support/TempFolder.h"

#include <cstdlib>

using namespace TestSupport;

namespace {

class PreferredUnits : public ExportScene {
protected:
    void SetUp() override {
#if defined(_WIN32)
        _putenv_s("EDA_CONFIG_DIR", folder.path().c_str());
#else
        setenv("EDA_CONFIG_DIR", folder.path().c_str(), 1);
#endif
        UserPreference::instance().reload();
    }
    void TearDown() override { UserPreference::instance().reload(); }

    static void prefer(const char *units) {
        set(UserPreference::instance().getPreferences(), {{"Global Units", units}});
    }

    TempFolder folder;
};

TEST_F(PreferredUnits, ImperialIsThou) {
    prefer("Imperial");
    set(pcb, {{"Thickness", "2.54 mm"}});
    const EDA::EDABoard board = exported("");
    EXPECT_EQ(board.getUnits(), "THOU");
    EXPECT_NEAR(board.getThickness(), 100.0, 1e-9);
}

TEST_F(PreferredUnits, MetricIsMillimetres) {
    prefer("Metric");
    EXPECT_EQ(exported("").getUnits(), "MM");
}

TEST_F(PreferredUnits, AreMetricUntilTheUserChooses) { EXPECT_EQ(exported("").getUnits(), "MM"); }

TEST_F(PreferredUnits, DoNotCountWhereUnitsAreNamed) {
    prefer("Imperial");
    EXPECT_EQ(exported("cm").getUnits(), "cm");
}

TEST_F(PreferredUnits, PrevailOverThoseOfTheCallBefore) {
    prefer("Imperial");
    EDA::EDAExporter exporter;
    EDA::EDABoard first, second;
    exporter.exportBoard(pcb, first, "mm");
    exporter.exportBoard(pcb, second, "");
    EXPECT_EQ(second.getUnits(), "THOU");
}

} // namespace
