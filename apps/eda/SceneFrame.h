// What stands around the board in a picture: title, scale bar, legend; and where the board itself goes.
#pragma once

#include "BoardView.h"
#include "Picture.h"

#include <string>
#include <vector>

namespace EDATool {

struct LegendEntry {
    std::string label;
    Style style;
    enum class Swatch { Box, Circle, Cross } swatch = Swatch::Box;
};

struct SceneFrame {
    int width = 0; // of the picture, pixels
    int height = 0;
    double unit = 1.0;   // grows with the picture: all sizes of lines and letters are multiples of it
    Box drawing;         // where the board goes, pixels
    Similarity toPixels; // from the view's lengths; mirrored for the bottom, which is seen from below
    double scale = 1.0;  // pixels per length
};

// `shown` is the box of the view that the picture shows, in the view's lengths.
SceneFrame makeFrame(const Box &shown, Side side, int width, const std::vector<LegendEntry> &legend);

void drawFrame(Picture &picture, const SceneFrame &frame, const BoardView &view,
               const std::vector<LegendEntry> &legend);

} // namespace EDATool
