// What stands around the board in a picture: title, scale bar, legend; and where the board itself goes.
#pragma once

#include "BoardView.h"
#include "Picture.h"
#include "SceneStyles.h"

#include <vector>

namespace EDATool {

struct SceneFrame {
    int width = 0; // of the picture, pixels
    int height = 0;
    double unit = 1.0;   // grows with the picture: all sizes of lines and letters are multiples of it
    Box drawing;         // where the board goes, pixels
    Similarity toPixels; // from the view's lengths; mirrored for the bottom, which is seen from below
    double scale = 1.0;  // pixels per length
};

// The unit of a picture of this width.
double sceneUnit(int width);

// `shown` is the box of the view that the picture shows, in the view's lengths. With `hasPowerBar` there is
// room for the bar of drawFrame.
SceneFrame makeFrame(const Box &shown, Side side, int width, const std::vector<LegendEntry> &legend,
                     bool hasPowerBar);

// Draws title, scale bar and legend, and the bar of power where the styles show power.
void drawFrame(Picture &picture, const SceneFrame &frame, const BoardView &view,
               const std::vector<LegendEntry> &legend, const SceneStyles &styles);

} // namespace EDATool
