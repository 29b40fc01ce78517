// A layout wrapper that does what a test tells it.
//
// The test program defines QvDbWrap::DbWrapper itself, as a host with the suite's own wrapper does: this one
// takes the place of the library's, whose object file the linker then never needs.
#pragma once

#include "host/QvDbWrap/DbWrapper.h"

#include <functional>
#include <string>
#include <vector>

namespace VelkinTest {

// What the next wrappers give and do, and what was asked of them.
struct Script {
    QvDbWrap::Layout layout;
    std::string configuration; // the name that GenerateCFGFile gives

    // Called by each constructor: throws, or leaves files behind.
    std::function<void(const std::string &file, int mode)> onOpen;

    // "open FILE MODE", "step NAME", "configure", "close", in order; files by their last token.
    std::vector<std::string> calls;
    std::vector<std::string> files;          // in full, as given to the constructors
    std::vector<std::string> workingFolders; // at each construction
    std::string suitePath;                   // QVPATH at the last construction
    std::string placementBounds;             // USE_DFA_BOUND likewise
};

// The script of this program.
Script &script();

} // namespace VelkinTest
