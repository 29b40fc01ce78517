// Apertures, whose shapes are made once for every transform that they are drawn with.
#include "fabrication/layers/FileApertures.h"

#include "fabrication/Limits.h"

namespace EDA::Fabrication {

namespace {

// Shapes are kept for as long as the file is read, so their share of the points is small.
constexpr std::size_t maxShapePoints = Limits::points / 10;
constexpr double leastScale = 1e-9;
constexpr double mostScale = 1e9;

bool isStandard(std::string const &name) { return name == "C" || name == "R" || name == "O" || name == "P"; }

std::size_t numPointsOf(Shape const &shape) {
    std::size_t count = 0;
    for (Piece const &piece : shape.pieces) {
        count += piece.outer.size();
        for (Ring const &hole : piece.holes)
            count += hole.size();
    }
    return count;
}

Box boxOf(Shape const &shape) {
    Box box;
    if (shape.kind == Shape::Kind::Pieces) {
        for (Piece const &piece : shape.pieces)
            for (Point const &point : piece.outer)
                box.unite(point.x, point.y);
        return box;
    }
    const double height = shape.kind == Shape::Kind::Circle ? shape.width : shape.height;
    box.unite(-shape.width / 2.0, -height / 2.0);
    box.unite(shape.width / 2.0, height / 2.0);
    return box;
}

bool isInMeasure(ApertureTransform const &transform) {
    const auto isGood = [](double scale) { return scale >= leastScale && scale <= mostScale; };
    return isGood(transform.scaleX) && isGood(transform.scaleY);
}

} // namespace

void FileApertures::define(Macro macro) {
    std::string name = macro.name;
    macros_[std::move(name)] = std::make_shared<Macro const>(std::move(macro));
}

// A code that is defined again stands for the new aperture from then on.
void FileApertures::define(int code, std::shared_ptr<Aperture> aperture) {
    ++numDefined_;
    const auto macro = macros_.find(aperture->name);
    if (macro != macros_.end()) aperture->macro = macro->second;
    apertures_[code] = std::move(aperture);
}

std::shared_ptr<Aperture> FileApertures::find(int code) const {
    const auto found = apertures_.find(code);
    return found == apertures_.end() ? nullptr : found->second;
}

PlacedShape const &FileApertures::shapeOf(Aperture &aperture, ApertureTransform const &transform) {
    PlacedShape const &plain = plainShapeOf(aperture);
    if (transform.isPlain() || plain.shape.isNothing()) return plain;
    const std::array<double, 5> key{transform.mirrorX ? -1.0 : 1.0, transform.mirrorY ? -1.0 : 1.0,
                                    transform.scaleX, transform.scaleY, transform.rotation};
    std::unique_ptr<PlacedShape> &kept = aperture.transformed[key];
    if (kept) return *kept;
    Shape shape;
    if (isInMeasure(transform))
        shape = transformed(plain.shape, transform);
    else
        notes_.add(NoteKind::LeftOut, "apertures scaled beyond all measure", aperture.line);
    kept = std::make_unique<PlacedShape>(finished(std::move(shape), aperture));
    return *kept;
}

PlacedShape const &FileApertures::plainShapeOf(Aperture &aperture) {
    if (!aperture.shape) aperture.shape = finished(made(aperture), aperture);
    return *aperture.shape;
}

// Some files define their macros after the apertures that are made of them.
Shape FileApertures::made(Aperture &aperture) {
    if (aperture.block || aperture.isUndefined) return {};
    ApertureMaker maker(aperture.millimetres, notes_);
    if (!aperture.macro && !isStandard(aperture.name)) {
        const auto late = macros_.find(aperture.name);
        if (late != macros_.end()) aperture.macro = late->second;
    }
    if (aperture.macro) return maker.fromMacro(*aperture.macro, aperture.modifiers, aperture.line);
    return maker.standard(aperture.name, aperture.modifiers, aperture.line);
}

PlacedShape FileApertures::finished(Shape shape, Aperture const &aperture) {
    numPoints_ += numPointsOf(shape);
    if (numPoints_ > maxShapePoints) {
        notes_.add(NoteKind::LeftOut, "apertures beyond the limit of points", aperture.line);
        numPoints_ -= numPointsOf(shape);
        shape = {};
    }
    shape.function = aperture.function;
    if (aperture.macro) shape.name = aperture.name;
    shape.id = nextId_++;
    const Box box = boxOf(shape);
    return {std::move(shape), box};
}

} // namespace EDA::Fabrication
