// The apertures and macros that a layer file defines.
#pragma once

#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/LayerGraphics.h"
#include "fabrication/layers/ArcGeometry.h"
#include "fabrication/Notes.h"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace EDA::Fabrication {

struct Recording;

// A shape as it is drawn, and how far it reaches from its origin.
struct PlacedShape {
    Shape shape;
    Box box;
};

// What a code stands for. Its shapes are made when they are first drawn.
struct Aperture {
    std::string name; // of the template or macro
    std::vector<double> modifiers;
    std::shared_ptr<Macro const> macro;
    std::shared_ptr<Recording const> block; // what a block aperture draws; null: it is none
    std::string function;
    bool isUndefined = false; // stands in for one that the file does not define: draws nothing
    double millimetres = 1.0; // of one unit of the modifiers
    std::size_t line = 0;

    std::optional<PlacedShape> shape; // as it is defined
    // Mirrored, turned and sized, by the numbers of the transform.
    std::map<std::array<double, 5>, std::unique_ptr<PlacedShape>> transformed;
};

class FileApertures {
public:
    explicit FileApertures(Notes &notes) : notes_(notes) {}

    void define(Macro macro);
    void define(int code, std::shared_ptr<Aperture> aperture);

    // Null where there is none of this code.
    std::shared_ptr<Aperture> find(int code) const;

    // The shape stays where it is as long as the aperture lives. Of a block: one that draws nothing.
    PlacedShape const &shapeOf(Aperture &aperture, ApertureTransform const &transform);

    std::size_t size() const { return numDefined_; }

private:
    PlacedShape const &plainShapeOf(Aperture &aperture);
    Shape made(Aperture &aperture);
    PlacedShape finished(Shape shape, Aperture const &aperture);

    Notes &notes_;
    std::unordered_map<int, std::shared_ptr<Aperture>> apertures_;
    std::unordered_map<std::string, std::shared_ptr<Macro const>> macros_;
    std::size_t numDefined_ = 0;
    std::size_t nextId_ = 1;
    std::size_t numPoints_ = 0;
};

} // namespace EDA::Fabrication
