// Writes boards at a fixed moment and looks at the text.
#pragma once

#include "host/Tools/Clock.h"
#include "support/Outlines.h"
#include "support/TempFolder.h"
#include "writers/IDFWriter.h"

#include <gmock/gmock.h>

#include <string>

namespace IDFTest {

// 7 November 2026, 9:05:03.
class FixedClock {
public:
    FixedClock() {
        Tools::Clock::setSource([] { return Tools::DateTime{2026, 11, 7, 9, 5, 3}; });
    }
    ~FixedClock() { Tools::Clock::setSource(nullptr); }
    FixedClock(const FixedClock &) = delete;
    FixedClock &operator=(const FixedClock &) = delete;
};

class IDFWriterTest : public testing::Test {
protected:
    std::string boardText() const {
        EXPECT_TRUE(EDA::IDFWriter().writeFile(folder.path("out.emn"), "", board));
        return folder.read("out.emn");
    }
    std::string libraryText() const {
        EXPECT_TRUE(EDA::IDFWriter().writeFile("", folder.path("out.emp"), board));
        return folder.read("out.emp");
    }

    // The rows between the row that starts with `first` and the row `last`, without these two.
    static std::string section(const std::string &text, const std::string &first, const std::string &last) {
        const std::size_t start = text.find(first);
        const std::size_t begin = start == std::string::npos ? start : text.find('\n', start);
        const std::size_t end = begin == std::string::npos ? begin : text.find("\n" + last + "\n", begin);
        return end == std::string::npos ? "<missing>" : text.substr(begin + 1, end - begin);
    }
    std::string outlineRows() const { return section(boardText(), ".BOARD_OUTLINE", ".END_BOARD_OUTLINE"); }
    std::string holeRows() const { return section(boardText(), ".DRILLED_HOLES", ".END_DRILLED_HOLES"); }
    std::string placementRows() const { return section(boardText(), ".PLACEMENT", ".END_PLACEMENT"); }

    EDA::EDAComponent &addComponent(const std::string &name, const std::string &type = "ELECTRICAL") {
        EDA::EDAComponent component(type);
        component.setName(name);
        component.setPartNumber("P1");
        component.setUnits("MM");
        board.addComponent(component, false);
        return *(board.endComponents() - 1);
    }
    EDA::EDAComponentPlacement &addPlacement(const std::string &name) {
        EDA::EDAComponentPlacement placement;
        placement.setName(name);
        placement.setPartNumber("P1");
        placement.setReferenceDesignator("U1");
        placement.setBoardSide("TOP");
        placement.setStatus("PLACED");
        board.addComponentPlacement(placement);
        return *(board.endPlacements() - 1);
    }

    FixedClock clock;
    TestSupport::TempFolder folder;
    EDA::EDABoard board;
};

} // namespace IDFTest
