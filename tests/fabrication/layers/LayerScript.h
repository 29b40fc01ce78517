// Reads small layer files and writes down what they draw, one object a line.
#pragma once

#include "fabrication/layers/LayerFile.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace LayerTests {

using namespace EDA::Fabrication;

// "flash C0.5 at 1,2", "line C0.1 0,0 1,0", "cw C0.1 0,0 1,0 around 0.5,0", "region 0,0 1,0 ccw 0,1 around
// 0,0";
// "-" before clear ones, "net GND U1,3" where the net changes.
class Script : public LayerSink {
public:
    std::vector<std::string> lines;
    std::vector<std::size_t> ids; // of the shapes of flashes and lines
    std::size_t most = static_cast<std::size_t>(-1);

    void flash(Shape const &shape, Point const &at, bool dark) override {
        ids.push_back(shape.id);
        lines.push_back(sign(dark) + "flash " + told(shape) + " at " + told(at));
    }
    void stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) override {
        ids.push_back(shape.id);
        lines.push_back(sign(dark) + told(segment.motion) + ' ' + told(shape) + ' ' + told(from) + ' ' +
                        told(segment.end) + centre(segment));
    }
    void region(Path const &contour, bool dark) override {
        std::string line = sign(dark) + "region " + told(contour.start);
        for (Segment const &segment : contour.segments) {
            if (segment.motion != Motion::Line) line += ' ' + told(segment.motion);
            line += ' ' + told(segment.end) + centre(segment);
        }
        lines.push_back(line);
    }
    void setNet(std::string_view net, std::string_view pin) override {
        lines.push_back("net " + std::string(net) + ' ' + std::string(pin));
    }
    bool isFull() const override { return lines.size() >= most; }

    static std::string told(double value) {
        std::ostringstream text;
        text << (std::abs(value) < 1e-9 ? 0.0 : value);
        return text.str();
    }
    static std::string told(Point const &point) { return told(point.x) + ',' + told(point.y); }

private:
    static std::string sign(bool dark) { return dark ? "" : "-"; }
    static std::string told(Motion motion) {
        return motion == Motion::Line ? "line" : motion == Motion::Clockwise ? "cw" : "ccw";
    }
    static std::string centre(Segment const &segment) {
        return segment.motion == Motion::Line ? "" : " around " + told(segment.centre);
    }
    static std::string told(Shape const &shape) {
        switch (shape.kind) {
        case Shape::Kind::Nothing:
            return "nothing";
        case Shape::Kind::Circle:
            return "C" + told(shape.width);
        case Shape::Kind::Rectangle:
            return "R" + told(shape.width) + 'x' + told(shape.height);
        case Shape::Kind::Obround:
            return "O" + told(shape.width) + 'x' + told(shape.height);
        case Shape::Kind::Pieces:
            return "pieces" + extent(shape);
        }
        return {};
    }
    static std::string extent(Shape const &shape) {
        double low[] = {1e9, 1e9}, high[] = {-1e9, -1e9};
        for (Piece const &piece : shape.pieces) {
            for (Point const &point : piece.outer) {
                low[0] = std::min(low[0], point.x);
                low[1] = std::min(low[1], point.y);
                high[0] = std::max(high[0], point.x);
                high[1] = std::max(high[1], point.y);
            }
        }
        return '(' + told(low[0]) + ',' + told(low[1]) + ".." + told(high[0]) + ',' + told(high[1]) + ')';
    }
};

struct Reading {
    Script script;
    LayerFacts facts;
    Notes notes;
    std::vector<std::string> const &lines() const { return script.lines; }

    // The number of a note, 0 if there is none of this kind that starts with these words.
    std::size_t count(NoteKind kind, std::string_view words) const {
        for (Note const &note : notes.list())
            if (note.kind == kind && note.what.compare(0, words.size(), words) == 0) return note.count;
        return 0;
    }
};

inline Reading readAsItIs(std::string_view text, LayerRules const &rules = {}) {
    Reading reading;
    reading.facts = readLayerFile(text, rules, reading.script, reading.notes);
    return reading;
}

// Millimetres in format 2.3, a disc of 0.1 that is selected, and an end.
inline Reading readBody(std::string const &body) {
    return readAsItIs("%FSLAX23Y23*%\n%MOMM*%\n%ADD10C,0.1*%\nG75*\nD10*\n" + body + "\nM02*\n");
}

using Lines = std::vector<std::string>;

} // namespace LayerTests
