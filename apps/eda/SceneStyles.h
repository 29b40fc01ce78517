// How what is on a board is drawn, and the legend that says so.
#pragma once

#include "BoardView.h"
#include "Picture.h"
#include "PowerScale.h"

#include <string>
#include <vector>

namespace EDATool {

struct LegendEntry {
    std::string label;
    Style style;
    enum class Swatch { Box, Circle, Cross, Line } swatch = Swatch::Box;
};

class SceneStyles {
public:
    // `unit` is what all widths of lines are multiples of.
    SceneStyles(const BoardView &view, Colouring colouring, double unit);

    Colouring colouring() const { return colouring_; }
    bool showsPower() const { return colouring_ != Colouring::Kind; }
    bool showsKeepouts() const { return !showsPower(); } // their colours say something else
    const PowerScale &scale() const { return scale_; }

    static Colour paper();
    Style board() const;
    Style cutOut() const;
    Style copperOf(std::size_t layerNumber) const; // of a layer, counted from 1
    Style keepout(KeepoutKind kind) const;
    // Copper stands around a plated hole; how wide, no design says.
    Style hole(bool isPlated, double diameter) const;
    Style part(const PartView &part) const;
    Colour label(const PartView &part) const; // of letters on the part
    Style mark() const;                       // of a part without a shape
    Style bump() const;
    Style wire(double width) const;

    // Names what the view holds, each kind once.
    std::vector<LegendEntry> legend(const BoardView &view) const;

private:
    void addParts(const BoardView &view, std::vector<LegendEntry> &legend) const;
    void addKeepouts(const BoardView &view, std::vector<LegendEntry> &legend) const;
    bool isColoured(const PartView &part) const;

    Colouring colouring_;
    PowerScale scale_;
    double unit_;
    bool isLayer_; // parts are outlines, so that the copper below them is seen
};

} // namespace EDATool
