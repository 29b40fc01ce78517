// generate_gerber KIND N: writes a seeded Gerber layer or drill file of N objects to standard output.
#include "GerberGenerator.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

std::string generate(const std::string &kind, int objects) {
    using namespace EDABench;
    if (kind == "layer") return generateLayer(objects);
    if (kind == "attributes") return generateLayer(objects, {true});
    if (kind == "cleared") return generateLayer(objects, {false, true});
    if (kind == "lone") return generateLayer(objects, {false, false, true});
    if (kind == "random") return generateStress(objects, Stress::Random);
    if (kind == "duplicates") return generateStress(objects, Stress::Duplicates);
    if (kind == "near") return generateStress(objects, Stress::Near);
    if (kind == "fill") return generateStress(objects, Stress::Fill);
    if (kind == "drill") return generateDrill(objects);
    if (kind == "holes") return generateDrill(objects, true);
    return "";
}

} // namespace

int main(int argc, char **argv) {
    const int objects = argc == 3 ? std::atoi(argv[2]) : 0;
    const std::string text = objects > 0 ? generate(argv[1], objects) : "";
    if (text.empty()) {
        std::fprintf(
            stderr,
            "usage: generate_gerber layer|attributes|cleared|lone|random|duplicates|near|fill|drill|holes"
            " OBJECTS > FILE\n");
        return 2;
    }
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0 ? 0
                                                                                                       : 1;
}
