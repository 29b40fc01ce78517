// generate_idf N PREFIX: writes a seeded IDF pair of N placements as PREFIX.emn and PREFIX.emp.
#include "IdfGenerator.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv) {
    const int placements = argc == 3 ? std::atoi(argv[1]) : 0;
    if (placements < 1) {
        std::fprintf(stderr, "usage: generate_idf PLACEMENTS PREFIX\n");
        return 2;
    }
    if (EDABench::writeIdf(EDABench::generateIdf(placements), argv[2])) return 0;
    std::fprintf(stderr, "%s: cannot write\n", argv[2]);
    return 1;
}
