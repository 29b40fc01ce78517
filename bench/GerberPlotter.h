// A pen that writes the statements of a Gerber layer.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace EDABench {

// Writes strokes, flashes and regions in millimetres as text of format 4.6, absolute, leading zeros left out,
// multi-quadrant arcs. Statements that change nothing are left out. Beyond its number of objects it writes
// nothing.
class GerberPlotter {
public:
    // A step of a region's border: to (x, y), straight or on an arc about (centreX, centreY).
    struct Step {
        double x, y;
        bool isArc = false;
        double centreX = 0.0, centreY = 0.0;
        bool anticlockwise = false;
    };
    struct Arc {
        double x0, y0, x1, y1, centreX, centreY;
        bool anticlockwise;
    };

    // Objects are strokes, flashes and regions. With `attributes` each net is named. With `loneCodes` a G01,
    // G02 or G03 stands alone where it changes, otherwise in front of each stroke.
    GerberPlotter(int objects, bool attributes, bool loneCodes)
        : left_(objects), attributes_(attributes), loneCodes_(loneCodes) {}

    bool isFull() const { return left_ == 0; }
    void write(const std::string &text) { text_ += text; }
    std::string take() { return std::move(text_); }

    void startNet();
    void darken() { changePolarity("%LPD*%\n"); }
    void clear() { changePolarity("%LPC*%\n"); }
    void draw(int aperture, double x0, double y0, double x1, double y1);
    void drawArc(int aperture, const Arc &arc);
    void flash(int aperture, double x, double y);
    void fill(double x, double y, const std::vector<Step> &steps);

private:
    struct Place {
        long long x, y;
        bool operator==(const Place &other) const { return x == other.x && y == other.y; }
    };
    static Place placeOf(double x, double y);
    bool takeObject();
    void changePolarity(const char *statement);
    void select(int aperture);
    void interpolate(int mode);
    void startStroke();
    void moveTo(const Place &place);
    void addPlace(const Place &place, const char *operation);
    void addArc(const Place &from, const Place &to, const Place &centre);

    std::string text_;
    int left_;
    bool attributes_;
    bool loneCodes_;
    int net_ = 0;
    int aperture_ = -1;
    int mode_ = 1;
    bool isPlaceKnown_ = false;
    Place place_{0, 0};
};

} // namespace EDABench
