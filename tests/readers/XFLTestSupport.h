// XFL texts in short words, and a fixture that reads them in both modes.
#pragma once

#include "readers/XFLReader.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace XFLTest {

// A stack of 4: two conductors of 1 with a dielectric of 2 between them.
inline const std::string stack = ".layer\n"
                                 "TOP 1 C CU FR\n"
                                 "CORE 2 D CU2 FR4\n"
                                 "BOTTOM 1 C CU3 FR\n"
                                 ".end\n";

// `count` conductors of 1 with dielectrics of 1 between them.
inline std::string stackOf(int count) {
    std::string rows = ".layer\n";
    for (int i = 1; i <= count; ++i) {
        const std::string number = std::to_string(i);
        rows += "L" + number + " 1 C CU" + number + " E" + number + "\n";
        if (i < count) rows += "D" + number + " 1 D X" + number + " FR" + number + "\n";
    }
    return rows + ".end\n";
}

inline std::string section(const std::string &keyword, const std::string &rows) {
    return "." + keyword + "\n" + rows + ".end\n";
}

// One net of these rows.
inline std::string net(const std::string &rows) { return section("route", "NET {\n" + rows + "}\n"); }

inline std::string number(double value) {
    std::ostringstream stream;
    stream.precision(9);
    stream << value + 0.0;
    return stream.str();
}

// The stored points: "x,y", "x,y@angle" behind an arc, "x,y>cx,cy" behind a clockwise and "x,y<cx,cy" behind
// an anticlockwise one about a centre.
inline std::string drawn(const EDA::EDAOutline &outline) {
    std::string text;
    for (auto at = outline.beginPoints(); at != outline.endPoints(); ++at) {
        if (!text.empty()) text += ' ';
        text += number(at->x) + ',' + number(at->y);
        if (at->centered)
            text += (at->clockwise ? '>' : '<') + number(at->centreX) + ',' + number(at->centreY);
        else if (at->angle != 0.0)
            text += '@' + number(at->angle);
    }
    return text;
}

// The lowest and the highest Z.
inline std::string heights(const EDA::EDAOutline &outline) {
    double low = 0.0, high = 0.0;
    outline.getZDimensions(low, high);
    return number(low) + ' ' + number(high);
}

class XFLReaderTest : public testing::Test {
protected:
    // Read a text with a new reader, without any message.
    const EDA::EDABoard &readBoard(const std::string &text) { return readWell(false, text); }
    // The bodies of the component.
    std::vector<EDA::EDAOutline> readBodies(const std::string &text) {
        const EDA::EDABoard &board = readWell(true, text);
        if (board.numComponents() != 1) throw std::logic_error("not one component");
        const EDA::EDAOutline &outline = board.beginComponents()->getOutline();
        return {outline.beginInternalOutlines(), outline.endInternalOutlines()};
    }

    const EDA::EDABoard &readWell(bool componentMode, const std::string &text) {
        reader = std::make_unique<EDA::XFLReader>(componentMode);
        EXPECT_TRUE(reader->readFile(folder.write("design.xfl", text)));
        EXPECT_EQ(reader->getError(), "");
        return reader->getBoard();
    }

    // The traces of a layer, counted from 1.
    static std::vector<EDA::EDATrace> traces(const EDA::EDABoard &board, int layer) {
        const EDA::EDABoardLayer &found = board.getNthLayer(layer - 1);
        return {found.beginTraces(), found.endTraces()};
    }

    TestSupport::TempFolder folder;
    std::unique_ptr<EDA::XFLReader> reader;
};

} // namespace XFLTest
