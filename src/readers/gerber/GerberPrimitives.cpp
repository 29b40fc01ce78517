// The primitives of aperture macros.
#include "model/EDAOutline.h"
#include "readers/gerber/ApertureMacro.h"
#include "readers/gerber/GerberNumbers.h"
#include "readers/gerber/GerberShapes.h"

#include <algorithm>

namespace EDA {

namespace {

// The fields of a primitive as what they are read for. A number is what a field starts with: an expression
// that names no variable is not evaluated.
class Values {
public:
    explicit Values(const ApertureMacro::Fields &fields) : fields_(fields) {}

    double operator[](std::size_t index) const { return leadingDouble(fields_[index]); }
    int count(std::size_t index) const { return leadingInt(fields_[index]); }
    int whole(std::size_t index) const { return gerberInt(fields_[index]); } // 0 for a fraction
    double last() const { return leadingDouble(fields_.back()); }
    std::size_t size() const { return fields_.size(); }

private:
    const ApertureMacro::Fields &fields_;
};

using Builder = bool (*)(EDAOutline *, const Values &, const GerberLimits &);

bool buildCircle(EDAOutline *outline, const Values &values, const GerberLimits &) {
    GerberShapes::setupCircularOutline(outline, values[2], values[3], values[4]);
    return true;
}

bool buildVectorLine(EDAOutline *outline, const Values &values, const GerberLimits &) {
    GerberShapes::setupVectorLineOutline(outline, values[2], values[3], values[4], values[5], values[6]);
    return true;
}

bool buildRectangle(EDAOutline *outline, const Values &values, const GerberLimits &) {
    GerberShapes::setupRectangularOutline(outline, values[2], values[3], values[4], values[5]);
    return true;
}

bool buildLowerLeftRectangle(EDAOutline *outline, const Values &values, const GerberLimits &) {
    GerberShapes::setupLowerLeftRectangularOutline(outline, values[2], values[3], values[4], values[5]);
    return true;
}

// As many points as it says, or as there are: the last field is the rotation.
bool buildOutline(EDAOutline *outline, const Values &values, const GerberLimits &limits) {
    const int count = values.count(2);
    if (count > limits.vertices) return false;
    const int present = static_cast<int>((values.size() - 4) / 2);
    for (int i = 0; i < std::min(count, present); ++i) {
        const std::size_t x = 3 + 2 * static_cast<std::size_t>(i);
        outline->addPoint(0, values[x], values[x + 1], 0.0);
    }
    return true;
}

bool buildPolygon(EDAOutline *outline, const Values &values, const GerberLimits &limits) {
    if (values.count(2) > limits.vertices) return false;
    GerberShapes::setupPolygonOutline(outline, values[5], values.count(2), values[6], values[3], values[4]);
    return true;
}

// Intended here and for thermals: the centre's y is read as a whole number, and anything else is 0.
bool buildMoire(EDAOutline *outline, const Values &values, const GerberLimits &limits) {
    if (values.count(6) > limits.rings) return false;
    GerberShapes::setupMoireOutline(outline, values[1], values.whole(2), values[3], values[4], values[5],
                                    values.count(6), values[7], values[8]);
    return true;
}

bool buildThermal(EDAOutline *outline, const Values &values, const GerberLimits &) {
    GerberShapes::setupThermalOutline(outline, values[1], values.whole(2), values[3], values[4], values[5]);
    return true;
}

struct Primitive {
    const char *code;
    std::size_t minFields;
    std::size_t maxFields;
    bool hasExposure;
    bool isTurned; // about the macro's origin, by the last field
    Builder build;
};

constexpr std::size_t anyNumber = static_cast<std::size_t>(-1);

// Intended: the polygon is turned by its builder and once more after it.
const Primitive primitives[] = {
    {"1", 5, 5, true, false, buildCircle},
    {"2", 8, 8, true, true, buildVectorLine},
    {"20", 8, 8, true, true, buildVectorLine},
    {"21", 7, 7, true, true, buildRectangle},
    {"22", 7, 7, true, true, buildLowerLeftRectangle},
    {"4", 6, anyNumber, true, true, buildOutline},
    {"5", 7, 7, true, true, buildPolygon},
    {"6", 10, 10, false, true, buildMoire},
    {"7", 7, 7, false, true, buildThermal},
};

} // namespace

bool ApertureMacro::isTooLarge(const Fields &fields) const {
    const Values values(fields);
    const auto isLarge = [&](const char *code, std::size_t field, int limit) {
        return fields[0] == code && fields.size() > field && values.count(field) > limit;
    };
    return !fields.empty() && (isLarge("4", 2, limits_.vertices) || isLarge("5", 2, limits_.vertices) ||
                               isLarge("6", 6, limits_.rings));
}

// The rings of a moire are united as they are built. What else a primitive has can be counted afterwards.
std::size_t ApertureMacro::numRingSteps(const Fields &fields) const {
    constexpr int pointsOfRing = 66;
    if (fields.size() != 10 || fields[0] != "6") return 0;
    return static_cast<std::size_t>(pointsOfRing * std::clamp(Values(fields).count(6), 0, limits_.rings));
}

// Any other code, that of a comment among them, is nothing.
bool ApertureMacro::buildPrimitive(EDAOutline &outline, const Fields &fields) const {
    if (fields.empty()) return false;
    for (const Primitive &primitive : primitives) {
        if (fields[0] != primitive.code || fields.size() < primitive.minFields ||
            fields.size() > primitive.maxFields) {
            continue;
        }
        const Values values(fields);
        if (primitive.hasExposure) outline.setHole(fields[1] == "0");
        if (!primitive.build(&outline, values, limits_)) return false;
        if (primitive.isTurned) outline.rotate(values.last(), 0.0, 0.0);
        return true;
    }
    return false;
}

} // namespace EDA
