// The sections of an XFL file about what is mounted: parts, placements, kinds of vias.
#include "readers/XFLReader.h"

#include "text/Text.h"

#include <cstdlib>

namespace EDA {

namespace {

// A corner of a body: each coordinate is that of the first corner, of the middle or of the second corner.
struct BodyCorner {
    int x, y;
    double angle;
};
constexpr int first = 0, middle = 1, second = 2;

struct Body {
    std::string_view kind;
    int numCorners;
    BodyCorner corners[4];
};

// A rectangle, a circle of two halves, a diamond.
constexpr Body bodies[] = {
    {"R", 4, {{first, first, 0.0}, {second, first, 0.0}, {second, second, 0.0}, {first, second, 0.0}}},
    {"C", 3, {{first, middle, 0.0}, {second, middle, 180.0}, {first, middle, 180.0}}},
    {"D", 4, {{first, middle, 0.0}, {middle, first, 0.0}, {second, middle, 0.0}, {middle, second, 0.0}}},
};

} // namespace

// What stands in a part's block, its pins, is not read.
XFLReader::RowIterator XFLReader::readParts(RowIterator row, const RowIterator &end) {
    while (nextRowOfSection(row, end)) {
        if (row->size() < 7) continue;
        if (takeItem()) addPart(*row);
        skipBlock(row, end, 6);
    }
    return row;
}

// In a component the parts are the dies, which sit on top of the stack.
void XFLReader::addPart(const Row &row) {
    const std::string &name = row[0];
    const double height = lengthField(row, 6);
    if (componentMode_) {
        EDAOutline &die = newBody();
        die.setName(name);
        generateChipOutline(row, die);
        die.setZDimensions(totalThickness(), totalThickness() + height);
        return;
    }
    EDAComponent component("ELECTRICAL");
    component.setName(name);
    component.setPartNumber(name);
    generateChipOutline(row, component.getOutline());
    component.setHeight(height);
    board_.addComponent(component, true);
}

// An unknown kind of body has no points.
void XFLReader::generateChipOutline(const Row &row, EDAOutline &outline) {
    const double x1 = lengthField(row, 2), y1 = lengthField(row, 3);
    const double x2 = lengthField(row, 4), y2 = lengthField(row, 5);
    const double xs[] = {x1, (x1 + x2) / 2.0, x2};
    const double ys[] = {y1, (y1 + y2) / 2.0, y2};
    for (const Body &body : bodies) {
        if (row[1] != body.kind) continue;
        for (int i = 0; i < body.numCorners; ++i) {
            const BodyCorner &corner = body.corners[i];
            addPoint(outline, 0, xs[corner.x], ys[corner.y], corner.angle);
        }
    }
}

XFLReader::RowIterator XFLReader::readComponents(RowIterator row, const RowIterator &end) {
    while (nextRowOfSection(row, end))
        if (row->size() >= 6 && takeItem()) addPlacement(*row);
    return row;
}

// The upper half of the board's layers is its top side. Of an odd number the one in the middle is not: so
// everything on a board of one layer is on the bottom. This is intended.
void XFLReader::addPlacement(const Row &row) {
    const long long layer = std::llabs(static_cast<long long>(intField(row, 4))) - 1;
    const auto numLayers = static_cast<long long>(board_.numLayers());
    EDAComponentPlacement placement;
    placement.setReferenceDesignator(row[0]);
    placement.setName(row[1]);
    placement.setPartNumber(row[1]);
    placement.setLocation(lengthField(row, 2), lengthField(row, 3));
    placement.setBoardSide(layer < numLayers / 2 ? "TOP" : "BOTTOM");
    placement.setOffset(mountingOffset(layer, numLayers, placement.isOnBoardTop()));
    placement.setAngle(parseDouble(row[5], 0.0, 0.0));
    board_.addComponentPlacement(std::move(placement));
}

// 0 on the outer layer of a side, negative deeper in the stack; 0 as well where the layer isn't in the stack.
double XFLReader::mountingOffset(long long layer, long long numLayers, bool onTop) const {
    if (layer == (onTop ? 0 : numLayers - 1)) return 0.0;
    const long long face = onTop ? 2 * layer : 2 * layer + 1;
    if (!hasFace(face)) return 0.0;
    const double offset = layerOffsets_[static_cast<std::size_t>(face)];
    return onTop ? 0.0 - offset : offset - board_.getThickness();
}

XFLReader::RowIterator XFLReader::readVias(RowIterator row, const RowIterator &end) {
    while (nextRowOfSection(row, end)) {
        if (row->size() < 5 || !takeItem()) continue;
        ViaDefinition &definition = viaDefinitions_[(*row)[0]];
        definition.shapeId = intField(*row, 3);
        definition.storedValue = parseDouble((*row)[4], 0.0, 0.0);
        definition.platingThickness = parseDouble(field(*row, 5), 0.0, 0.0);
    }
    return row;
}

} // namespace EDA
