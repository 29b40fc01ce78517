// XFL files as layout programs write them.
#include "XflGenerator.h"

#include "BenchRandom.h"

#include <cstdio>

namespace EDABench {

namespace {

constexpr const char *head = ".version 1 0\n.unit mm\n.scale 1000\n.layer\n"
                             "L1 18 C Copper FR4\nD1 60 D Copper FR4\nL2 18 C Copper FR4\n"
                             "D2 400 D Copper FR4\nL3 18 C Copper FR4\nD3 60 D Copper FR4\n"
                             "L4 18 C Copper FR4\n.end\n";
constexpr const char *shapes = ".shape\n1 circle 100\n2 circle 318.2\n3 finger 90 320\n4 rectangle 400 200\n"
                               "5 polygon { 0 0 200 0 300 200 100 300 }\n.end\n"
                               ".board_geom\nrectangle 100000 100000\n"
                               ".via\nTHROUGH 1 4 1 0 0.012\nLASER 1 2 1 0\n.end\n.route\n";
constexpr int rowsOfNet = 20;

class Writer {
public:
    explicit Writer(unsigned seed) : random_(seed) {}

    std::string make(int rows) {
        text_ = head;
        text_ += shapes;
        for (int row = 0; row < rows; ++row) {
            if (row % rowsOfNet == 0) text_ += (row > 0 ? "}\nNET" : "NET") + std::to_string(row) + " {\n";
            addRow();
        }
        return text_ + "}\n.end\n";
    }

private:
    double place() { return random_.uniform(-50'000, 50'000); }
    int layer() { return 1 + random_.below(4); }

    template <typename... Values> void add(const char *format, Values... values) {
        char line[256];
        const int size = std::snprintf(line, sizeof line, format, values...);
        text_.append(line, static_cast<std::size_t>(size));
    }

    void addRow() {
        const double x = place(), y = place();
        switch (random_.below(8)) {
        case 0:
        case 1:
            return add("  shape %d %d %.1f %.1f %d N\n", layer(), 2 + random_.below(4), x, y,
                       90 * random_.below(4));
        case 2:
        case 3:
        case 4:
            return add("  path %d 90 %.1f %.1f %.1f %.1f %.1f %.1f\n", layer(), x, y, x + 500, y, x + 900,
                       y + 400);
        case 5:
            return add("  via 1 4 THROUGH %.1f %.1f\n", x, y);
        case 6:
            return add("  rectangle %d 800 600 %.1f %.1f\n", layer(), x, y);
        default:
            return add("  void_circle %d 150 %.1f %.1f\n", layer(), x, y);
        }
    }

    Random random_;
    std::string text_;
};

} // namespace

std::string generateXfl(int rows, unsigned seed) { return Writer(seed).make(rows); }

std::string generateXflVias(int sizes) {
    std::string kinds, nets, table;
    for (int i = 1; i <= sizes; ++i) {
        const std::string number = std::to_string(i);
        table += number + " circle " + number + "\n";
        kinds += "V" + number + " 1 4 " + number + " 0 0.012\n";
        nets += "via 1 4 V" + number + " " + number + " 0\n";
    }
    return head + (".shape\n" + table) + ".end\n.via\n" + kinds + ".end\n.route\nNET {\n" + nets +
           "}\n.end\n";
}

} // namespace EDABench
