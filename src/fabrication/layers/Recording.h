// What blocks and repeats hold until they are drawn.
#pragma once

#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/LayerGraphics.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

namespace EDA::Fabrication {

struct Aperture;
struct PlacedShape;
struct Recording;

// Copies in columns and rows.
struct Repeats {
    int columns = 1;
    int rows = 1;
    double columnStep = 0.0; // millimetres
    double rowStep = 0.0;
};

// An aperture, as it is turned when it is drawn.
struct ApertureUse {
    std::shared_ptr<Aperture> aperture;
    ApertureTransform transform;
};

// A recording within another.
struct PlacedRecording {
    std::shared_ptr<Recording const> recording;
    ApertureTransform transform;
    Repeats repeats;
};

// Objects in the order in which they are drawn. Their points stand in a list of their own: few objects need
// as many as an arc does.
struct Recording {
    enum class Kind : std::uint8_t { Flash, Stroke, Region, Recording };
    struct Object {
        Kind kind = Kind::Flash;
        bool isDark = true;
        Motion motion = Motion::Line; // of a stroke
        std::uint32_t net = 0;
        std::uint32_t index = 0; // into the uses, regions or recordings
    };

    std::vector<Object> objects;
    std::vector<Point> points; // of a flash 1, of a line 2, of an arc 3: start, end, centre; of a recording 1
    std::vector<ApertureUse> uses;
    std::deque<Path> regions;
    std::deque<PlacedRecording> recordings;
    std::size_t depth = 1; // of recordings within each other

    // The shapes of the uses under the transform of the latest drawing, which most often is that of the next.
    mutable std::vector<PlacedShape const *> shapes;
    mutable ApertureTransform shapesTransform;
};

} // namespace EDA::Fabrication
