// Gerber and drill files written for one test, and looks at what was read.
#pragma once

#include "readers/gerber/GerberReader.h"
#include "support/Outlines.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace TestSupport {

// Reads single files without merging, so that each object is a trace of its own.
class GerberBench {
public:
    explicit GerberBench(const EDA::GerberLimits &limits = EDA::GerberLimits()) : reader(limits) {
        reader.setMergeConductors(false);
    }

    bool read(const std::string &text, const std::string &name = "top.gbr") {
        return reader.readFile(folder.write(name, text));
    }

    // Format 2.4 with leading zeros left out, millimetres, and a circle of 1 mm as aperture 10.
    bool readLayer(const std::string &statements) {
        return read("%FSLAX24Y24*%\n%MOMM*%\n%ADD10C,1*%\n%ADD11R,2X1*%\n" + statements + "M02*\n");
    }
    bool readDrills(const std::string &statements) { return read("M48\nMETRIC,TZ\n" + statements + "M30\n", "a.drl"); }

    const EDA::EDABoard &board() { return reader.getBoard(); }
    std::vector<EDA::EDATrace> traces(std::size_t layer = 0) {
        auto it = board().beginLayers();
        std::advance(it, static_cast<std::ptrdiff_t>(layer));
        return {it->beginTraces(), it->endTraces()};
    }
    std::vector<EDA::EDAVia> vias() { return {board().beginVias(), board().endVias()}; }

    TempFolder folder;
    EDA::GerberReader reader;
};

struct Box {
    double xLow, yLow, xHigh, yHigh;
};

inline Box boxOf(const EDA::EDAOutline &outline) {
    const Geometry::Bound2D &bound = outline.getBound();
    return {bound.getXLow(), bound.getYLow(), bound.getXHigh(), bound.getYHigh()};
}

inline void expectBox(const EDA::EDAOutline &outline, double xLow, double yLow, double xHigh, double yHigh,
                      double tolerance = 1e-9) {
    const Box box = boxOf(outline);
    EXPECT_NEAR(box.xLow, xLow, tolerance);
    EXPECT_NEAR(box.yLow, yLow, tolerance);
    EXPECT_NEAR(box.xHigh, xHigh, tolerance);
    EXPECT_NEAR(box.yHigh, yHigh, tolerance);
}

} // namespace TestSupport
