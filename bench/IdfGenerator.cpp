// Making of seeded IDF pairs.
#include "IdfGenerator.h"

#include "BenchRandom.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <fstream>
#include <utility>
#include <vector>

namespace EDABench {

namespace {

using Points = std::vector<std::pair<double, double>>;

constexpr double pi = 3.14159265358979323846;

void print(std::string &out, const char *format, ...) {
    char line[256];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    out += line;
}

void loop(std::string &out, int label, const Points &points, bool hasArcs = false) {
    for (size_t i = 0; i < points.size(); ++i) {
        const double angle = hasArcs && i > 0 && i % 2 == 0 ? 90.0 : 0.0;
        print(out, "%d %.5f %.5f %.5f\n", label, points[i].first, points[i].second, angle);
    }
}

Points roundedRectangle(double xLow, double yLow, double xHigh, double yHigh, double r) {
    return {{xLow + r, yLow},  {xHigh - r, yLow},  {xHigh, yLow + r}, {xHigh, yHigh - r}, {xHigh - r, yHigh},
            {xLow + r, yHigh}, {xLow, yHigh - r}, {xLow, yLow + r},  {xLow + r, yLow}};
}

Points ring(double width, double depth, int corners) {
    Points points;
    for (int k = 0; k <= corners; ++k) {
        const double angle = 2 * pi * (k % corners) / corners + 0.3;
        points.emplace_back(width / 2 * std::cos(angle), depth / 2 * std::sin(angle));
    }
    return points;
}

std::string makeLibrary(int definitions, Random &random) {
    static const int corners[] = {4, 4, 4, 8, 16};
    std::string out = ".HEADER\nLIBRARY_FILE 3.0 \"synthetic\" 2024/01/01.00:00:00 1\n.END_HEADER\n";
    for (int i = 0; i < definitions; ++i) {
        const double width = random.uniform(0.3, 12), depth = random.uniform(0.3, 12);
        print(out, ".ELECTRICAL\n\"PKG%03d\" \"PART%03d\" MM %.5f\n", i, i, random.uniform(0.2, 5));
        if (i % 10 == 0) {
            print(out, "0 0.0 0.0 0.0\n0 %.5f 0.0 360.0\n", width / 2);
        } else if (i % 3 == 0) {
            const double r = std::min(width, depth) / 6;
            loop(out, 0, roundedRectangle(-width / 2, -depth / 2, width / 2, depth / 2, r), true);
        } else {
            loop(out, 0, ring(width, depth, random.choice(corners)));
        }
        out += "PROP CAPACITANCE 100.0\nPROP TOLERANCE 5.0\n.END_ELECTRICAL\n";
    }
    return out;
}

void addOutline(std::string &out, double side) {
    out += ".BOARD_OUTLINE ECAD\n1.60000\n";
    loop(out, 0, roundedRectangle(0, 0, side, side, 5.0), true);
    for (int k = 0; k < 8; ++k) {
        const double x = 6 + (side - 12) * k / 8;
        print(out, "%d %.5f %.5f 0.0\n%d %.5f %.5f 360.0\n", k + 1, x, side / 2, k + 1, x + 1, side / 2);
    }
    out += ".END_BOARD_OUTLINE\n";
}

void addKeepouts(std::string &out, double side, Random &random) {
    for (int k = 0; k < 10; ++k) {
        const double x = random.uniform(10, side - 10), y = random.uniform(10, side - 10);
        out += ".PLACE_KEEPOUT ECAD\nBOTH 0.00000\n";
        loop(out, 0, {{x, y}, {x + 3, y}, {x + 3, y + 3}, {x, y + 3}, {x, y}});
        out += ".END_PLACE_KEEPOUT\n";
    }
}

void addHoles(std::string &out, int holes, double side, Random &random) {
    static const double diameters[] = {0.3, 0.4, 0.8, 1.0};
    static const char *const platings[] = {"PTH", "PTH", "NPTH"};
    out += ".DRILLED_HOLES\n";
    for (int k = 0; k < holes; ++k) {
        const double x = random.uniform(1, side - 1), y = random.uniform(1, side - 1);
        print(out, "%.5f %.5f %.5f %s BOARD VIA ECAD\n", random.choice(diameters), x, y, random.choice(platings));
    }
    out += ".END_DRILLED_HOLES\n";
}

void addPlacements(std::string &out, int placements, int definitions, double side, Random &random) {
    static const char *const sides[] = {"TOP", "BOTTOM"};
    static const char *const states[] = {"PLACED", "ECAD", "UNPLACED"};
    static const char prefixes[] = {'R', 'C', 'U', 'Q'};
    out += ".PLACEMENT\n";
    for (int i = 0; i < placements; ++i) {
        const int part = random.below(definitions);
        print(out, "\"PKG%03d\" \"PART%03d\" \"%c%d\"\n", part, part, random.choice(prefixes), i + 1);
        const double x = random.uniform(1, side - 1), y = random.uniform(1, side - 1);
        const double angle = i % 6 == 5 ? random.uniform(0, 360) : 45.0 * random.below(7);
        print(out, "%.5f %.5f 0.00000 %.5f %s %s\n", x, y, angle, random.choice(sides), random.choice(states));
    }
    out += ".END_PLACEMENT\n";
}

} // namespace

IdfPair generateIdf(int placements, int definitions, unsigned seed) {
    Random random(seed);
    const double side = std::max(50.0, std::sqrt(static_cast<double>(placements)) * 4);
    IdfPair pair;
    pair.library = makeLibrary(definitions, random);
    std::string &out = pair.board;
    out = ".HEADER\nBOARD_FILE 3.0 \"synthetic\" 2024/01/01.00:00:00 1\n\"board\" MM\n.END_HEADER\n";
    addOutline(out, side);
    addKeepouts(out, side, random);
    addHoles(out, placements / 5, side, random);
    out += ".NOTES\n1.0 1.0 2.0 20.0 \"synthetic board\"\n.END_NOTES\n";
    addPlacements(out, placements, definitions, side, random);
    return pair;
}

bool writeIdf(const IdfPair &pair, const std::string &prefix) {
    std::ofstream board(prefix + ".emn", std::ios::binary), library(prefix + ".emp", std::ios::binary);
    board << pair.board;
    library << pair.library;
    return board.flush() && library.flush();
}

} // namespace EDABench
