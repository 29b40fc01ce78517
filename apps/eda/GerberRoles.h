// What each file of a Gerber set is: a copper layer, drills, or something else.
#pragma once

#include "GerberLosses.h"

#include <string>

namespace EDATool {

enum class GerberUse { Copper, Drill, Other };

struct GerberRole {
    GerberUse use = GerberUse::Other;
    std::string reason; // why, for people: "its FileFunction is Soldermask,Top"
    // Of copper: its place among the layers, 1 for the top one. Layers without a known place stand between
    // those with one.
    double place = 0.0;
    bool hasPlace = false;
    bool isTop = false;
    bool isNumberedByName = false; // "LAYER_1", which may count from the top or from below it
};

// Places of layers of which only the side is known, and of those of which nothing is.
constexpr double bottomPlace = 1e6;
constexpr double unknownPlace = 1e5;

// By what the file says, and where it says nothing, by its name. `isDrillFile` is what the reader says. What
// nothing says is copper, since a layer too much is seen and a missing one is not.
GerberRole roleOfGerber(const std::string &file, const GerberFacts &facts, bool isDrillFile);

} // namespace EDATool
