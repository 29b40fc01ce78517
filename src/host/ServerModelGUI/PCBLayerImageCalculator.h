// How much of a layer's picture is conductor, and where.
#pragma once

#include <vector>

class QImage;

namespace EntityModel {
class CompositeAttribute;
class Entity;
} // namespace EntityModel

namespace ServerConstructor {

// Reads a picture of a layer by the colour that a layer entity names:
//
// - A pixel has the colour when its red, green and blue, of 8 bits each, are exactly those of "MaterialRed",
//   "MaterialGreen" and "MaterialBlue". A component outside 0 to 255 is no pixel's.
// - A wholly transparent pixel is background, whatever its colour. It is never conductor. With
//   "BackgroundIsIgnored" it does not count at all; otherwise it counts as a pixel without conductor.
// - With "MaterialIsConductor" the pixels of the colour are conductor. Without it the colour marks what is
//   not, and all other pixels but the background are conductor.
class PCBLayerImageCalculator {
public:
    // The map has at most this many cells each way: enough for the grid of a thermal solve, and little beside
    // the other data of a layer, however large its picture is.
    static constexpr int maxMapSide = 256;

    // Takes the settings of a layer entity, or of the composite where one is given. What they lack, and all
    // of it when both are null, is 0 and "No".
    void initialise(EntityModel::Entity *entity, EntityModel::CompositeAttribute *composite);

    // The share, in percent, of the conductor among the pixels that count; 0 when there are none, as in a
    // null image.
    //
    // Fills the map with a flag for each cell of a grid, 1 for conductor and 0 for none, row by row from the
    // top, each row from the left. The grid has min(width, maxMapSide) columns and min(height, maxMapSide)
    // rows, so that the size of the picture tells how to read it. Column c spans the pixels from
    // c * width / columns, rounded down, up to the next column, and rows likewise. So a small picture is
    // mapped pixel by pixel. A cell is conductor when at least half of its pixels that count are, and one
    // does. A null image gives an empty map.
    double calculatePercentageConductor(const QImage &image, std::vector<int> &materialMap) const;

private:
    struct Counts;
    void count(const QImage &strip, std::vector<Counts> &cells) const;

    int colour_ = 0; // 0xRRGGBB; -1: no pixel's
    bool isConductor_ = false;
    bool backgroundIsIgnored_ = false;
};

} // namespace ServerConstructor
