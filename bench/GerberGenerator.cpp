// Making of seeded copper layers.
#include "GerberGenerator.h"

#include "BenchRandom.h"
#include "GerberPlotter.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace EDABench {

namespace {

enum Aperture {
    Round200 = 10,
    Round150,
    Round100,
    Round400,
    Round350,
    Round450,
    SmallRectangle,
    SmallObround,
    SmallRounded,
    LargeRounded,
    Hexagon,
    Round700,
    LargeRectangle,
    LargeObround
};

const char header[] =
    "G04 synthetic layer*\n%TF.FileFunction,Copper,L1,Top*%\n%FSLAX46Y46*%\n%MOMM*%\n%LPD*%\n"
    "%AMRRECT*\n0 $1 radius, $2..$9 corner centres*\n4,1,4,$2,$3,$4,$5,$6,$7,$8,$9,$2,$3,0*\n"
    "1,1,$1+$1,$2,$3*\n1,1,$1+$1,$4,$5*\n1,1,$1+$1,$6,$7*\n1,1,$1+$1,$8,$9*\n"
    "20,1,$1+$1,$2,$3,$4,$5,0*\n20,1,$1+$1,$4,$5,$6,$7,0*\n20,1,$1+$1,$6,$7,$8,$9,0*\n"
    "20,1,$1+$1,$8,$9,$2,$3,0*%\n"
    "%ADD10C,0.2*%\n%ADD11C,0.15*%\n%ADD12C,0.1*%\n%ADD13C,0.4*%\n%ADD14C,0.35*%\n"
    "%ADD15C,0.45*%\n%ADD16R,0.3X0.22*%\n%ADD17O,0.3X0.22*%\n"
    "%ADD18RRECT,0.05X-0.1X0.06X-0.1X-0.06X0.1X-0.06X0.1X0.06*%\n"
    "%ADD19RRECT,0.1X-0.15X0.2X-0.15X-0.2X0.15X-0.2X0.15X0.2*%\n"
    "%ADD20P,0.6X6*%\n%ADD21C,0.7*%\n%ADD22R,0.5X0.6*%\n%ADD23O,0.5X0.6*%\nG75*\nG01*\n";

constexpr double tileStep = 10.5; // millimetres
constexpr double objectsOfTile = 230.0;

class Layer {
public:
    Layer(int objects, const LayerOptions &options)
        : random_(options.seed), pen_(objects, options.attributes, options.loneCodes),
          cleared_(options.cleared) {}

    std::string make(int side) {
        pen_.write(header);
        for (int tile = 0; !pen_.isFull(); ++tile) {
            x_ = tileStep * (tile % side);
            y_ = tileStep * (tile / side);
            drawRail(tile % side == 0);
            drawTile(random_.unit());
        }
        pen_.write("M02*\n");
        return pen_.take();
    }

private:
    struct Pad {
        Aperture aperture;
        double x, y;
    };
    // A part of a bus line: straight on, or half a millimetre on and to the side.
    struct Jog {
        enum Kind { Straight, Diagonal, Round } kind;
        double size; // length; 1 to go up, -1 to go down
    };

    void drawRail(bool isFirstOfRow) {
        pen_.draw(Round200, x_ - 0.25, y_ - 0.25, x_ + 10.25, y_ - 0.25);
        if (isFirstOfRow) pen_.draw(Round200, x_ - 0.25, y_ - 0.25, x_ - 0.25, y_ + 10.25);
    }

    void drawTile(double kind) {
        if (kind < 0.42) {
            drawBus(random_.unit() < 0.15);
        } else if (kind < 0.62) {
            drawParts();
        } else if (kind < 0.76) {
            drawBallGrid();
        } else if (kind < 0.90) {
            drawPour();
        } else {
            drawHatch();
        }
    }

    // All lines have the same jogs, so that they stay parallel.
    std::vector<Jog> makeJogs() {
        std::vector<Jog> jogs;
        double x = 0.9, y = 0.0;
        while (x < 8.2) {
            const double length = std::round(random_.uniform(0.3, 0.9) * 100.0) / 100.0;
            jogs.push_back({Jog::Straight, length});
            const double up = y < -0.1 ? 1.0 : y > 0.1 ? -1.0 : random_.below(2) == 0 ? -1.0 : 1.0;
            jogs.push_back({random_.unit() < 0.7 ? Jog::Diagonal : Jog::Round, up});
            x += length + 0.5;
            y += 0.5 * up;
        }
        return jogs;
    }

    void drawJog(Aperture aperture, const Jog &jog, double &x, double &y) {
        constexpr double r = 0.25;
        const double v = jog.size;
        if (jog.kind == Jog::Straight) {
            pen_.draw(aperture, x, y, x + v, y);
            x += v;
            return;
        }
        if (jog.kind == Jog::Diagonal) {
            pen_.draw(aperture, x, y, x + 0.5, y + 0.5 * v);
        } else {
            pen_.drawArc(aperture, {x, y, x + r, y + r * v, x, y + r * v, v > 0.0});
            pen_.drawArc(aperture,
                         {x + r, y + r * v, x + 2 * r, y + 2 * r * v, x + 2 * r, y + r * v, v < 0.0});
        }
        x += 0.5;
        y += 0.5 * v;
    }

    void drawBus(bool guarded) {
        static const Aperture widths[] = {Round200, Round150, Round150, Round100};
        static const Aperture starts[] = {SmallRounded, SmallRectangle, SmallObround};
        static const Aperture ends[] = {SmallRounded, Round350, SmallObround};
        const std::vector<Jog> jogs = makeJogs();
        const Aperture width = random_.choice(widths);
        std::vector<Pad> pads;
        for (int lane = 0; lane < 17; ++lane) {
            pen_.startNet();
            double x = x_ + 0.9, y = y_ + 1.0 + lane * 0.5;
            pads.push_back({random_.choice(starts), x, y});
            for (const Jog &jog : jogs) {
                drawJog(width, jog, x, y);
                if (jog.kind == Jog::Straight && random_.unit() < 0.06) pads.push_back({Round350, x, y});
            }
            pads.push_back({random_.choice(ends), x, y});
        }
        std::stable_sort(pads.begin(), pads.end(),
                         [](const Pad &a, const Pad &b) { return a.aperture < b.aperture; });
        for (const Pad &pad : pads)
            pen_.flash(pad.aperture, pad.x, pad.y);
        if (guarded) drawGuard();
    }

    void drawGuard() {
        pen_.startNet();
        constexpr double r = 0.4;
        const double x0 = x_ + 0.1, y0 = y_ + 0.1, x1 = x_ + 9.9, y1 = y_ + 9.9;
        pen_.draw(Round150, x0 + r, y0, x1 - r, y0);
        pen_.drawArc(Round150, {x1 - r, y0, x1, y0 + r, x1 - r, y0 + r, true});
        pen_.draw(Round150, x1, y0 + r, x1, y1 - r);
        pen_.drawArc(Round150, {x1, y1 - r, x1 - r, y1, x1 - r, y1 - r, true});
        pen_.draw(Round150, x1 - r, y1, x0 + r, y1);
        pen_.drawArc(Round150, {x0 + r, y1, x0, y1 - r, x0 + r, y1 - r, true});
        pen_.draw(Round150, x0, y1 - r, x0, y0 + r);
        pen_.drawArc(Round150, {x0, y0 + r, x0 + r, y0, x0 + r, y0 + r, true});
    }

    void drawParts() {
        static const Aperture pads[] = {LargeRounded, LargeRectangle, LargeObround, LargeRounded};
        for (int i = 0; i < 64; ++i) {
            const double x = x_ + 0.7 + 1.22 * (i % 8), y = y_ + 0.7 + 1.2 * (i / 8);
            const Aperture pad = random_.choice(pads);
            pen_.startNet();
            pen_.flash(pad, x - 0.32, y);
            if (random_.unit() < 0.7) {
                pen_.draw(Round150, x - 0.32, y, x - 0.32, y + 0.45);
                pen_.draw(Round150, x - 0.32, y + 0.45, x, y + 0.5);
                pen_.flash(Round350, x, y + 0.5);
            }
            pen_.startNet();
            pen_.flash(pad, x + 0.32, y);
            if (random_.unit() < 0.7) pen_.draw(Round150, x + 0.32, y, x + 0.32, y - 0.42);
        }
    }

    void drawBallGrid() {
        for (int i = 0; i < 144; ++i) {
            const double x = x_ + 0.5 + 0.8 * (i % 12), y = y_ + 0.5 + 0.8 * (i / 12);
            pen_.startNet();
            pen_.flash(Round450, x, y);
            if (i % 12 == 11 || i / 12 == 11 || random_.unit() >= 0.8) continue;
            pen_.draw(Round100, x, y, x + 0.4, y + 0.4);
            pen_.flash(Round350, x + 0.4, y + 0.4);
        }
    }

    // Goes along a row of clearances over their tops, and back under their bottoms.
    static void addClearances(std::vector<GerberPlotter::Step> &steps, double edge, double x, double y) {
        steps.push_back({edge, y});
        for (int i = 0; i < 5; ++i) {
            const double centre = x + 1.7 * i;
            steps.push_back({centre - clearance, y});
            steps.push_back({centre + clearance, y, true, centre, y, false});
        }
        for (int i = 4; i >= 0; --i) {
            const double centre = x + 1.7 * i;
            if (i < 4) steps.push_back({centre + clearance, y});
            steps.push_back({centre - clearance, y, true, centre, y, false});
        }
        steps.push_back({edge, y});
    }

    void fillPour() {
        constexpr double r = 0.5;
        const double a = x_ + 0.3, b = x_ + 9.7, c = y_ + 0.3, d = y_ + 9.7;
        std::vector<GerberPlotter::Step> steps{{b - r, c}, {b, c + r, true, b - r, c + r, true},
                                               {b, d - r}, {b - r, d, true, b - r, d - r, true},
                                               {a + r, d}, {a, d - r, true, a + r, d - r, true}};
        for (int row = 4; row >= 0 && !cleared_; --row)
            addClearances(steps, a, x_ + 1.6, y_ + 1.6 + 1.7 * row);
        steps.push_back({a, c + r});
        steps.push_back({a + r, c, true, a + r, c + r, true});
        pen_.fill(a + r, c, steps);
    }

    void drawPour() {
        static const Aperture pads[] = {Round700, LargeRounded, Hexagon};
        pen_.startNet();
        fillPour();
        const auto xOf = [this](int i) { return x_ + 1.6 + 1.7 * (i % 5); };
        const auto yOf = [this](int i) { return y_ + 1.6 + 1.7 * (i / 5); };
        if (cleared_) {
            pen_.clear();
            for (int i = 0; i < 25; ++i)
                pen_.flash(Round700, xOf(i), yOf(i));
            pen_.darken();
        }
        const double reach = (cleared_ ? 0.35 : clearance) + 0.08;
        for (int i = 0; i < 25; ++i) {
            if (random_.unit() < 0.6) {
                drawSpokes(xOf(i), yOf(i), reach);
            } else {
                pen_.startNet();
            }
            pen_.flash(cleared_ ? Round350 : random_.choice(pads), xOf(i), yOf(i));
        }
        drawStub();
    }

    void drawSpokes(double x, double y, double reach) {
        for (const auto &[dx, dy] : {std::pair{1, 0}, {0, 1}, {-1, 0}, {0, -1}})
            pen_.draw(Round200, x, y, x + reach * dx, y + reach * dy);
    }

    void drawHatch() {
        pen_.startNet();
        constexpr int lines = 36;
        constexpr double step = 9.4 / (lines - 1);
        for (int i = 0; i < lines; ++i)
            pen_.draw(Round100, x_ + 0.3, y_ + 0.3 + step * i, x_ + 9.7, y_ + 0.3 + step * i);
        for (int i = 0; i < lines; ++i)
            pen_.draw(Round100, x_ + 0.3 + step * i, y_ + 0.3, x_ + 0.3 + step * i, y_ + 9.7);
        drawStub();
    }

    // To the rail.
    void drawStub() { pen_.draw(Round200, x_ + 5.0, y_ - 0.25, x_ + 5.0, y_ + 0.35); }

    static constexpr double clearance = 0.6; // radius

    Random random_;
    GerberPlotter pen_;
    bool cleared_;
    double x_ = 0.0; // of the tile
    double y_ = 0.0;
};

} // namespace

std::string generateLayer(int objects, const LayerOptions &options) {
    const double tiles = std::ceil(std::max(objects, 1) / objectsOfTile);
    return Layer(objects, options).make(static_cast<int>(std::ceil(std::sqrt(tiles))));
}

} // namespace EDABench
