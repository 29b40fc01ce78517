// Draws a board.
#pragma once

#include "BoardView.h"
#include "Picture.h"
#include "PowerScale.h"

namespace EDATool {

namespace PictureLimits {
constexpr int leastWidth = 200;
constexpr int greatestWidth = 8192; // with the greatest height about 350 MiB as an image
constexpr int defaultWidth = 1600;
constexpr int greatestBare = 16384; // either side of a picture without a frame; as an image up to 1 GiB
} // namespace PictureLimits

// The picture of a view, `width` pixels wide; its height follows from the board's. Throws DesignFailure where
// there is nothing to draw.
Picture drawBoard(const BoardView &view, int width, Colouring colouring = Colouring::Kind);

} // namespace EDATool
