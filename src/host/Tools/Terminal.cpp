// What the process knows of its terminal.
#include "host/Tools/Terminal.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace Tools {

namespace {

constexpr int standardInput = 0;
constexpr int standardOutput = 1;
constexpr int standardError = 2;

bool isTerminal(int stream) {
#ifdef _WIN32
    return _isatty(stream) != 0;
#else
    return isatty(stream) != 0;
#endif
}

} // namespace

bool Terminal::isErrorOutput() { return isTerminal(standardError); }

bool Terminal::canAsk() { return isTerminal(standardInput) && isTerminal(standardOutput); }

} // namespace Tools
