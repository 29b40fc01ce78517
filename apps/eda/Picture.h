// A picture as a list of things to draw, apart from how a file format spells it.
#pragma once

#include "Path2D.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace EDATool {

// Red, green, blue and opacity (0 is see-through), each 0 to 255.
struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;
};

// How a path is drawn: filled by the even-odd rule, hatched, stroked, in that order. Lengths are in pixels.
// An alpha of 0 leaves a part out.
struct Style {
    Colour fill{0, 0, 0, 0};
    Colour stroke{0, 0, 0, 0};
    double strokeWidth = 0.0;
    bool dashed = false;
    Colour hatch{0, 0, 0, 0};
    double hatchSpacing = 0.0;
    double hatchAngle = 45.0; // of the lines, degrees clockwise on the screen
};

struct TextStyle {
    enum class Anchor { Start, Middle, End };
    Colour colour;
    double size = 12.0; // pixels
    bool bold = false;
    Anchor anchor = Anchor::Start;
    bool upward = false; // reads from the bottom to the top
};

// One thing to draw: a path, or a text where `text` is not empty.
struct PictureItem {
    Path path;
    Style style;
    std::string text; // printable UTF-8
    TextStyle textStyle;
    Point at; // of a text: on its base line, at the anchor
};

// Pixels, x to the right and y down, from the top left corner.
class Picture {
public:
    Picture(int width, int height, Colour background)
        : width_(width), height_(height), background_(background) {}

    void add(Path path, const Style &style) { items_.push_back({std::move(path), style, {}, {}, {}}); }
    void addText(std::string text, const Point &at, const TextStyle &style) {
        items_.push_back({{}, {}, std::move(text), style, at});
    }

    // Cuts all that was added so far to a box.
    void clipUntilHere(const Box &box) {
        clip_ = box;
        numClipped_ = items_.size();
    }
    const Box &clip() const { return clip_; }
    std::size_t numClipped() const { return numClipped_; } // of items(), from the first on

    int width() const { return width_; }
    int height() const { return height_; }
    const Colour &background() const { return background_; }
    const std::vector<PictureItem> &items() const { return items_; }

    std::string title;    // for formats that carry one
    bool isSharp = false; // pixels are wholly of one colour

private:
    int width_;
    int height_;
    Colour background_;
    std::vector<PictureItem> items_;
    Box clip_;
    std::size_t numClipped_ = 0;
};

// About how wide a text comes out, in pixels.
double estimatedTextWidth(const std::string &text, double size, bool bold = false);

// The bytes of an SVG file, in which arcs are arcs.
std::string toSvg(const Picture &picture);

// The bytes of a PNG file, anti-aliased unless the picture is sharp. Empty with `error` told when the image
// cannot be made.
std::string toPng(const Picture &picture, std::string &error);

} // namespace EDATool
