// The units of an export that names none.
#include "ExportScene.h"

#include "host/EntityModel/UserPreference.h"
#include "support/TempFolder.h"

#include <cstdlib>
#include <string>

using namespace TestSupport;

namespace {

class PreferredUnits : public ExportScene {
protected:
    void SetUp() override {
        if (const char *const old = std::getenv(variable)) before = old;
        setVariable(folder.path());
        UserPreference::instance().reload();
    }
    void TearDown() override {
        setVariable(before);
        UserPreference::instance().reload();
    }

    // An empty text takes the variable away.
    static void setVariable(const std::string &text) {
#if defined(_WIN32)
        _putenv_s(variable, text.c_str());
#else
        if (text.empty())
            unsetenv(variable);
        else
            setenv(variable, text.c_str(), 1);
#endif
    }

    static void prefer(const char *units) {
        set(UserPreference::instance().getPreferences(), {{"Global Units", units}});
    }

    static constexpr const char *variable = "EDA_CONFIG_DIR";
    std::string before;
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
