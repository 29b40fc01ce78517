// What the tests of the component filters share.
#pragma once

#include "support/ImportBench.h"

#include <utility>

namespace TestSupport {

// A 3 by 4 part of this height; its diagonal is 5.
inline EDA::EDAComponent squarePart(double height, const char *units = "MM") {
    EDA::EDAComponent part("ELECTRICAL");
    part.setUnits(units);
    part.setHeight(height);
    for (const auto &[x, y] : {std::pair{0.0, 0.0}, {3.0, 0.0}, {3.0, 4.0}, {0.0, 4.0}})
        part.addPoint(0, x, y, 0.0);
    return part;
}

// Hands the options over; then whether the board's first component is filtered.
inline bool isFiltered(ImportBench &bench) {
    bench.importer.setImportOptions(bench.options(), bench.board());
    return bench.board().beginComponents()->isFiltered();
}

} // namespace TestSupport
