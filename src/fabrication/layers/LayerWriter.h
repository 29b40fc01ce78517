// Writing a layer in the one dialect that the reader of layers takes.
#pragma once

#include "fabrication/LayerGraphics.h"
#include "fabrication/TextSink.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace EDA::Fabrication {

// Where copper of a net lies.
struct NetPoint {
    Point at;
    std::uint32_t net = 0; // index into the names
};

struct NetPoints {
    std::vector<std::string> names;
    std::vector<NetPoint> points;
};

// Writes millimetres in format 4.6, absolute, leading zeros omitted, quadrants multiple. Each drawing
// statement has its interpolation code, both coordinates, for arcs both offsets with their sign, and its
// operation; apertures are selected again after each change of polarity. Apertures are discs, rectangles and
// obrounds along the axes, and macros that are one outline; whatever else, and strokes of what is no disc, is
// written as regions, holes by cut-ins. Arcs are cut so short that a chord for every ten degrees of each
// stays within chordTolerance of the arc. Aperture functions stand before the apertures that have them; nets
// and pins stand in comments ("G04 #@! TO.N,GND*").
class LayerWriter : public LayerSink {
public:
    // The function is written as the file's function ("Copper,L1,Top"); empty: none is. The nets may be null.
    LayerWriter(TextSink &sink, std::string const &fileFunction, NetPoints *nets);
    ~LayerWriter() override;

    void flash(Shape const &shape, Point const &at, bool dark) override;
    void stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) override;
    void region(Path const &contour, bool dark) override;
    void setNet(std::string_view net, std::string_view pin) override;
    // Once swept strokes cost more than those of any real layer, or the file has too many points.
    bool isFull() const override;

    // Ends the file. Nothing may be drawn after it.
    void finish();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace EDA::Fabrication
