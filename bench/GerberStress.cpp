// Making of seeded layers that are hard to unite, and of drill files.
#include "BenchRandom.h"
#include "GerberGenerator.h"
#include "GerberPlotter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace EDABench {

namespace {

constexpr double fullTurn = 6.283185307179586;
constexpr int square = 20; // the aperture of pads; 10 to 13 are round

class StressLayer {
public:
    StressLayer(int objects, unsigned seed)
        : random_(seed), pen_(objects, false, false), side_(std::max(8.0, std::sqrt(objects) * 0.28)) {}

    std::string make(Stress kind) {
        pen_.write("%FSLAX46Y46*%\n%MOMM*%\n%ADD10C,0.1*%\n%ADD11C,0.15*%\n%ADD12C,0.2*%\n%ADD13C,0.3*%\n"
                   "%ADD20R,0.4X0.4*%\nG75*\nG01*\n");
        while (!pen_.isFull()) {
            x_ = random_.uniform(0.0, side_);
            y_ = random_.uniform(0.0, side_);
            aperture_ = 10 + random_.below(4);
            angle_ = random_.uniform(0.0, fullTurn);
            draw(kind);
        }
        pen_.write("M02*\n");
        return pen_.take();
    }

private:
    void draw(Stress kind) {
        switch (kind) {
        case Stress::Random:
            return drawAlong(aperture_, x_, y_, angle_, random_.uniform(0.2, 1.5));
        case Stress::Duplicates:
            return drawDuplicates();
        case Stress::Near:
            return drawNear();
        case Stress::Fill:
            return drawFill();
        }
    }

    void drawAlong(int aperture, double x, double y, double angle, double length) {
        pen_.draw(aperture, x, y, x + length * std::cos(angle), y + length * std::sin(angle));
    }

    void drawDuplicates() {
        const double x = std::round(x_ * 4.0) / 4.0, y = std::round(y_ * 4.0) / 4.0;
        switch (random_.below(4)) {
        case 0:
            pen_.draw(aperture_, x, y, x + 1.0, y);
            return pen_.draw(aperture_, x, y, x + 1.0, y);
        case 1:
            pen_.draw(aperture_, x, y, x + 1.0, y);
            pen_.draw(aperture_, x + 0.5, y, x + 1.5, y);
            return pen_.draw(aperture_, x + 1.5, y, x, y);
        case 2:
            pen_.flash(square, x, y);
            return pen_.flash(square, x + 0.4, y);
        default:
            pen_.draw(aperture_, x, y, x + 0.5, y + 0.5);
            return pen_.draw(aperture_, x + 0.5, y + 0.5, x, y);
        }
    }

    void drawNear() {
        for (int i = 0; i < 4; ++i) {
            const double dx = (random_.below(7) - 3) * 1e-6, dy = (random_.below(7) - 3) * 1e-6;
            drawAlong(aperture_, x_ + dx, y_ + dy, angle_, 1.0);
        }
        for (int i = 0; i < 5; ++i)
            drawAlong(10, x_, y_, angle_ + i * 1e-5, 0.8);
    }

    // The strokes overlap by a tenth of their width.
    void drawFill() {
        for (int i = 0; i < 40; ++i) {
            const double offset = i * 0.09;
            drawAlong(10, x_ - std::sin(angle_) * offset, y_ + std::cos(angle_) * offset, angle_, 3.0);
        }
    }

    Random random_;
    GerberPlotter pen_;
    double side_;
    double x_ = 0.0, y_ = 0.0, angle_ = 0.0;
    int aperture_ = 10;
};

const double drills[] = {0.2, 0.25, 0.3, 0.4, 0.6, 0.8, 1.0, 1.2, 1.6, 3.2};

std::string place(double x, double y, bool plain) {
    char text[64];
    if (plain) {
        std::snprintf(text, sizeof text, "X%lldY%lld", std::llround(x * 1e4), std::llround(y * 1e4));
    } else {
        std::snprintf(text, sizeof text, "X%.3fY%.3f", x, y);
    }
    return text;
}

std::string drillHeader() {
    std::string text = "M48\nFMAT,2\nMETRIC,TZ\n";
    int number = 0;
    for (const double diameter : drills) {
        char line[32];
        std::snprintf(line, sizeof line, "T%02dC%.3f\n", ++number, diameter);
        text += line;
    }
    return text + "%\nG90\nG05\n";
}

} // namespace

std::string generateStress(int objects, Stress kind, unsigned seed) {
    return StressLayer(objects, seed).make(kind);
}

std::string generateDrill(int operations, bool plain, unsigned seed) {
    Random random(seed);
    const double side = std::max(20.0, std::sqrt(operations) * 1.2);
    std::string text = drillHeader();
    for (int tool = 1; tool <= 10; ++tool) {
        text += (tool < 10 ? "T0" : "T") + std::to_string(tool) + "\n";
        const int count = tool < 10 ? operations / 10 : operations - 9 * (operations / 10);
        for (int i = 0; i < count; ++i) {
            const double x = random.uniform(0.0, side), y = random.uniform(0.0, side), kind = random.unit();
            text += place(x, y, plain);
            if (plain || kind < 0.95) {
                text += "\n";
            } else if (kind < 0.99) {
                text += "G85" + place(x + 1.5, y, false) + "\n";
            } else {
                text.insert(text.rfind('X'), "G00");
                text += "\nM15\nG01" + place(x, y + 2.0, false) + "\nM16\nG05\n";
            }
        }
    }
    return text + "T0\nM30\n";
}

} // namespace EDABench
